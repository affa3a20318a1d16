#include "plugin/host/adapters/vlECCalendarEvent.h"

#include "plugin/host/adapters/vlECCalendarEventAttendee.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlOLUtils.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double secondsInMinute = 60.0;

// Skips a missing value, but keeps the null marker, which means that the user has cleared the field.
void insertValue(QVariantMap &record, const QString &key, const rt::Value &value) {
    if (rt::isPresent(value) || rt::isNullMarker(value))
        record.insert(key, value);
}

qint32 wholeMinutes(double seconds) {
    const double minutes = seconds / secondsInMinute;
    return qint32(std::clamp(minutes, double(std::numeric_limits<qint32>::min()),
                             double(std::numeric_limits<qint32>::max())));
}

} // namespace

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

QVariantMap vlECCalendarEvent::getVlMeetingData() const {
    QVariantMap record;
    insertValue(record, vl_ApptInfo_Subject, getOneMergedItem(olItem_summary));
    insertValue(record, vl_ApptInfo_Location, getOneMergedItem(olItem_location));
    record.insert(vl_ApptInfo_Duration, getVlDuration());
    insertValue(record, vl_ApptInfo_Body, getOneMergedItem(olItem_body));
    insertValue(record, vl_ApptInfo_VlOIProperty, getOLItemID(olItem_olmUCCapabilities));
    record.insert(vl_ApptInfo_StartTime, dateRecord(olItem_startTime));
    record.insert(vl_ApptInfo_EndTime, dateRecord(olItem_endTime));
    record.insert(vl_ApptInfo_Recurrence, vlOLUtils::isValidInstance(getOneMergedItem(olItem_recurrence)));
    const QVariantList attendees = getVlAttendeesData();
    if (!attendees.isEmpty())
        record.insert(vl_ApptInfo_Attendees, attendees);
    return record;
}

QVariantMap vlECCalendarEvent::dateRecord(const QString &key) const {
    return vlOLCalendarDate(rt::objectValue(getOneMergedItem(key))).getVlMeetingData();
}

QString vlECCalendarEvent::getVlDuration() const {
    const vlOLCalendarDate start(rt::objectValue(getOneMergedItem(olItem_startTime)));
    const vlOLCalendarDate end(rt::objectValue(getOneMergedItem(olItem_endTime)));
    // Only a date may be passed to the host, which does not check its argument.
    return QString::number(wholeMinutes(end.timeIntervalSinceDate(start.delegate())));
}

QVariantList vlECCalendarEvent::getVlAttendeesData() const {
    QVariantList records;
    vlECCalendarEventAttendee attendee(nullptr);
    for (const rt::Value &element : rt::listValue(getOneMergedItem(olItem_attendeeList))) {
        attendee.setDelegate(rt::objectValue(element));
        records.append(attendee.getVlMeetingData());
    }
    return records;
}
