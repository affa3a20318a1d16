#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"

#include "platform/toolkit/Windows.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlPluginBuildMgr.h"

#include <QWidget>

namespace {

QString pendingKey(const QString &member) {
    return key_vlPendingPrefix + member;
}

// A cleared value is a change; an entry without a value is not.
bool isChanged(const QVariantMap &pending, const QString &member) {
    const rt::Value change = pending.value(pendingKey(member));
    return rt::isPresent(change) || rt::isNullMarker(change);
}

QVariantMap pendingChangesOf(const vlDelegateBase &editor) {
    return rt::mapValue(editor.getOLItemID(olItem_uncommittedChanges));
}

} // namespace

vlERCalendarEventEditorViewController::vlERCalendarEventEditorViewController(rt::Object *editor)
    : vlDelegateBase(key_vlERCalendarEventEditorViewController, editor) {
    resetECCalendarEventInstance();
}

void vlERCalendarEventEditorViewController::resetECCalendarEventInstance() const {
    rt::Object *event = content();
    m_pECCalendarEvent = rt::Weak<>(event);
    // The provider gets a copy of the base, because this adapter may be moved or destroyed before the event
    // adapter.
    const vlDelegateBase editor = *this;
    m_ECCalendarEvent =
        std::make_unique<vlECCalendarEvent>(event, [editor] { return pendingChangesOf(editor); });
}

vlECCalendarEvent *vlERCalendarEventEditorViewController::ecCalendarEvent() const {
    // The weak reference is nullptr once its event is deleted, so a new event at the same address is noticed.
    if (content() != m_pECCalendarEvent.get())
        resetECCalendarEventInstance();
    return m_ECCalendarEvent.get();
}

QVariantMap vlERCalendarEventEditorViewController::getVlMeetingData() const {
    QVariantMap snapshot = ecCalendarEvent()->getVlMeetingData();
    const QString onbehalf = onbehalfEmailAddress();
    if (!onbehalf.isEmpty())
        snapshot.insert(vl_ApptInfo_OnbehalfEmailAddress, onbehalf);
    return snapshot;
}

bool vlERCalendarEventEditorViewController::isOnBehalf() const {
    return vlPluginBuildMgr::supportScheduleFor() && isDelegating();
}

QString vlERCalendarEventEditorViewController::onbehalfEmailAddress() const {
    return isOnBehalf() ? currentEmailAddress() : QString();
}

QString vlERCalendarEventEditorViewController::currentEmailAddress() const {
    rt::Object *account = currentEmailAccount();
    return account ? vlECEmailAccount(account).emailAddress() : u""_s;
}

void vlERCalendarEventEditorViewController::setIsDirty(bool dirty) {
    m_bVlSettingOpened = true;
    getOLItemID(olItem_setIsDirty, dirty);
}

bool vlERCalendarEventEditorViewController::isVlMeetingItemsChanged() const {
    const QVariantMap pending = uncommittedChanges();
    for (const QString &member :
         {olItem_attendeeList, olItem_recurrence, olItem_summary, olItem_endTime, olItem_startTime})
        if (isChanged(pending, member))
            return true;
    const QString body = rt::textValue(pending.value(pendingKey(olItem_body)));
    if (!body.isEmpty() && body != m_initBodyContent)
        return true;
    return m_bVlSettingOpened;
}

void vlERCalendarEventEditorViewController::setInitBodyContent() {
    const QString body = rt::textValue(uncommittedChanges().value(pendingKey(olItem_body)));
    if (!body.isEmpty() && !isBodyContentEmpty(body))
        setInitBodyContent(body);
}

void vlERCalendarEventEditorViewController::setInitBodyContent(const QString &html) {
    if (!html.isNull())
        m_initBodyContent = html;
}

void vlERCalendarEventEditorViewController::updateLocationFieldFromUI(const QString &text) const {
    if (QWidget *field = rt::widgetValue(getOLItemID(olItem_locationTextField)))
        platform::setTextFieldValue(field, text);
}

QString vlERCalendarEventEditorViewController::getLocationFromUI() const {
    const QWidget *field = rt::widgetValue(getOLItemID(olItem_locationTextField));
    return field ? platform::textFieldValue(field) : QString();
}

QVariantMap vlERCalendarEventEditorViewController::uncommittedChanges() const {
    return pendingChangesOf(*this);
}
