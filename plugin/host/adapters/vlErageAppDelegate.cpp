#include "plugin/host/adapters/vlErageAppDelegate.h"

#include "platform/services/Services.h"

void vlErageAppDelegate::openNewMeeting(const QString &flag, const rt::Value &argument) const {
    platform::Services &services = platform::services();
    services.mainThreadDictionary.insert(flag, flag);
    if (argument.typeId() == QMetaType::QVariantMap)
        services.mainThreadDictionary.insert(keyFlagVlMeetingArgument, argument);
    services.workspace->activateThisApplication();
    // This adapter may be destroyed by then, so the call captures a copy.
    services.runLoop->callAfter(0, [application = *this] { application.newCalendarMeeting(rt::Value()); });
}
