#include "plugin/host/adapters/vlErageAppDelegate.h"

#include "platform/services/Services.h"
#include "plugin/host/adapters/hostNames.h"

vlErageAppDelegate::vlErageAppDelegate(rt::Object *delegate)
    : vlDelegateBase(key_vlErageAppDelegate, delegate) {}

void vlErageAppDelegate::newCalendarMeeting(const rt::Value &sender) const {
    getOLItemID(olItem_newCalendarMeeting, sender);
}

void vlErageAppDelegate::autoAddVelaToAppointment(const rt::Value &argument) const {
    openNewMeeting(keyFlagAutoAddToVlMeeting, argument);
}

void vlErageAppDelegate::autoAddPACToAppointment(const rt::Value &argument) const {
    openNewMeeting(keyFlagAutoAddToPACMeeting, argument);
}

void vlErageAppDelegate::openNewMeeting(const QString &flag, const rt::Value &argument) const {
    platform::Services &services = platform::services();
    services.mainThreadDictionary.insert(flag, flag);
    if (argument.typeId() == QMetaType::QVariantMap)
        services.mainThreadDictionary.insert(keyFlagVlMeetingArgument, argument);
    services.workspace->activateThisApplication();
    // This adapter may be gone by then: the call holds a reference of its own.
    services.runLoop->callAfter(0, [application = *this] { application.newCalendarMeeting(rt::Value()); });
}
