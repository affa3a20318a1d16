#include "plugin/host/adapters/vlECCalendarEvent.h"

#include "plugin/host/adapters/hostNames.h"

vlECCalendarEvent::vlECCalendarEvent(rt::Object *event, const QVariantMap &unCommitedChange)
    : vlECCalendarEvent(event, [unCommitedChange] { return unCommitedChange; }) {}

vlECCalendarEvent::vlECCalendarEvent(rt::Object *event, PendingChanges unCommitedChange)
    : vlDelegateBase(key_vlECCalendarEvent, event)
    , m_unCommitedChange(std::move(unCommitedChange)) {
    if (rt::Object *owner = account())
        m_ecEmailAccount.emplace(owner);
}

rt::Value vlECCalendarEvent::getOneMergedItem(const QString &key) const {
    const QVariantMap pending = m_unCommitedChange ? m_unCommitedChange() : QVariantMap();
    const rt::Value change = pending.value(key_vlPendingPrefix + key);
    if (rt::isNullMarker(change))
        return key == olItem_summary ? rt::Value(u""_s) : change;
    return rt::isPresent(change) ? change : getOneItem(key);
}

rt::Value vlECCalendarEvent::getOneItem(const QString &key) const {
    return getOLItemID(key);
}

QString vlECCalendarEvent::getEmailBody() const {
    return rt::textValue(getOneMergedItem(olItem_body));
}

QString vlECCalendarEvent::location() const {
    return rt::textValue(getOneMergedItem(olItem_location));
}

bool vlECCalendarEvent::isSupportedOwner() const {
    return isOwner();
}

bool vlECCalendarEvent::isValidHostAppointment() const {
    return isOwner() && account();
}

bool vlECCalendarEvent::isSupportVela() const {
    return isSupportedOwner() && !isOccurrence() && !isModifiedException();
}

QString vlECCalendarEvent::emailAddress() const {
    return m_ecEmailAccount ? m_ecEmailAccount->emailAddress() : QString();
}

QString vlECCalendarEvent::curFromAddress() const {
    return m_ecEmailAccount ? m_ecEmailAccount->curFromAddress() : QString();
}

QString vlECCalendarEvent::summary() const {
    return rt::textValue(getOLItemID(olItem_summary));
}

QString vlECCalendarEvent::body() const {
    return rt::textValue(getOLItemID(olItem_body));
}

QString vlECCalendarEvent::olmUCCapabilities() const {
    return rt::textValue(getOLItemID(olItem_olmUCCapabilities));
}

rt::Object *vlECCalendarEvent::startTime() const {
    return rt::objectValue(getOLItemID(olItem_startTime));
}

rt::Object *vlECCalendarEvent::endTime() const {
    return rt::objectValue(getOLItemID(olItem_endTime));
}

rt::Value vlECCalendarEvent::recurrence() const {
    return getOLItemID(olItem_recurrence);
}

QVariantList vlECCalendarEvent::attendeeList() const {
    return rt::listValue(getOLItemID(olItem_attendeeList));
}

rt::Object *vlECCalendarEvent::account() const {
    return rt::objectValue(getOLItemID(olItem_account));
}

bool vlECCalendarEvent::isOccurrence() const {
    return rt::boolValue(getOLItemID(olItem_isOccurrence));
}

bool vlECCalendarEvent::isModifiedException() const {
    return rt::boolValue(getOLItemID(olItem_isModifiedException));
}

bool vlECCalendarEvent::isOwner() const {
    return rt::boolValue(getOLItemID(olItem_isOwner));
}

void vlECCalendarEvent::setSummary(const QString &summary) const {
    getOLItemID(olItem_setSummary, summary);
}

void vlECCalendarEvent::setLocation(const QString &location) const {
    getOLItemID(olItem_setLocation, location);
}

void vlECCalendarEvent::setOlmUCCapabilities(const QString &text) const {
    getOLItemID(olItem_setOlmUCCapabilities, text);
}

rt::Value vlECCalendarEvent::UUID() const {
    return getOLItemID(olItem_UUID);
}

rt::Value vlECCalendarEvent::isRecurring() const {
    return getOLItemID(olItem_isRecurring);
}

rt::Value vlECCalendarEvent::duration() const {
    return getOLItemID(olItem_duration);
}

rt::Value vlECCalendarEvent::recurrenceType() const {
    return getOLItemID(olItem_recurrenceType);
}

rt::Value vlECCalendarEvent::timeZone() const {
    return getOLItemID(olItem_timeZone);
}

rt::Value vlECCalendarEvent::isOrganizer() const {
    return getOLItemID(olItem_isOrganizer);
}

rt::Value vlECCalendarEvent::isMeeting() const {
    return getOLItemID(olItem_isMeeting);
}

rt::Value vlECCalendarEvent::organizer() const {
    return getOLItemID(olItem_organizer);
}

rt::Value vlECCalendarEvent::seriesMasterRecord() const {
    return getOLItemID(olItem_seriesMasterRecord);
}

rt::Value vlECCalendarEvent::exchangeID() const {
    return getOLItemID(olItem_exchangeID);
}

rt::Value vlECCalendarEvent::exportAsICS() const {
    return getOLItemID(olItem_exportAsICS);
}

rt::Value vlECCalendarEvent::displayReadyBody() const {
    return getOLItemID(olItem_displayReadyBody);
}

rt::Value vlECCalendarEvent::olmOnlineMeetingInternalLink() const {
    return getOLItemID(olItem_olmOnlineMeetingInternalLink);
}
