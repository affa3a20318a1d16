#include "plugin/workflow/vlOnbehalfData.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/workflow/vlMeetingWindows.h"

namespace {

// Members of each entry in the profile's list of people for whom the user may schedule.
const QString bossEmail = u"email"_s;
const QString bossDisplayName = u"displayName"_s;

// An adapter without an object if there is no strip.
vlERCalendarEventEditorViewController editorOf(const QString &apptWindowID) {
    return vlERCalendarEventEditorViewController(
        vlMeetingWindows::editorOf(vlMeetingWindows::stripOfWindowID(apptWindowID)));
}

} // namespace

bool vlOnbehalfData::isOnbehalf(const QString &apptWindowID) const {
    return editorOf(apptWindowID).isOnBehalf();
}

QString vlOnbehalfData::onbehalfEmail(const QString &apptWindowID) const {
    return rt::orEmpty(editorOf(apptWindowID).onbehalfEmailAddress());
}

QString vlOnbehalfData::getDisplayNameWithOnbehalfEmail(const QString &email) const {
    if (email.isNull())
        return u""_s;
    for (const QVariant &entry : rt::listValue(vlUserProfileHelper::sharedInstance().bossesInfo())) {
        const QVariantMap boss = rt::mapValue(entry);
        const QString address = rt::textValue(boss.value(bossEmail));
        if (!address.isNull() && address.compare(email, Qt::CaseInsensitive) == 0)
            return rt::orEmpty(rt::textValue(boss.value(bossDisplayName)));
    }
    return u""_s;
}

bool vlOnbehalfData::hasSchedulePermission(const QString &email) const {
    return !getDisplayNameWithOnbehalfEmail(email).isEmpty();
}

bool vlOnbehalfData::isCurrentScheduleVelaForOther(const QString &apptWindowID) const {
    if (!isOnbehalf(apptWindowID))
        return false;
    const QString email = onbehalfEmail(apptWindowID);
    return !email.isEmpty() && hasSchedulePermission(email);
}
