#include "plugin/host/adapters/vlOLCalendarDate.h"

#include "plugin/host/adapters/hostNames.h"
#include "plugin/link/calendarDateRecord.h"
#include "plugin/util/TimeUtils.h"

namespace {
const QString calendarFormat = u"%Y-%m-%d %H:%M:%S"_s;
} // namespace

vlOLCalendarDate::vlOLCalendarDate(rt::Object *date)
    : vlDelegateBase(key_vlOLCalendarDate, date) {}

QString vlOLCalendarDate::UTCTime() const {
    return TimeUtils::dateToUTCString(dateUTC());
}

QString vlOLCalendarDate::LocalTime() const {
    const rt::Value arguments[] = {calendarFormat, timeZone(), rt::Value()};
    return rt::textValue(callMember(olItem_descriptionWithCalendarFormat, rt::Args(arguments, 3)));
}

QVariantMap vlOLCalendarDate::getVlMeetingData() const {
    return GenerateVlCalendarDate(UTCTime(), LocalTime(), timeZone());
}

QVariantMap vlOLCalendarDate::GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                                     const rt::Value &timeZone) {
    return ::GenerateVlCalendarDate(utcTime, localTime, timeZone);
}

QDateTime vlOLCalendarDate::dateUTC() const {
    return getOLItemID(olItem_dateUTC).toDateTime();
}

rt::Value vlOLCalendarDate::timeZone() const {
    return getOLItemID(olItem_timeZone);
}

int vlOLCalendarDate::minuteOfHour() const {
    return int(rt::integerValue(getOLItemID(olItem_minuteOfHour)));
}

int vlOLCalendarDate::hourOfDay() const {
    return int(rt::integerValue(getOLItemID(olItem_hourOfDay)));
}

int vlOLCalendarDate::weekday() const {
    return int(rt::integerValue(getOLItemID(olItem_weekday)));
}

int vlOLCalendarDate::dayOfMonth() const {
    return int(rt::integerValue(getOLItemID(olItem_dayOfMonth)));
}

int vlOLCalendarDate::monthOfYear() const {
    return int(rt::integerValue(getOLItemID(olItem_monthOfYear)));
}

int vlOLCalendarDate::yearOfCommonEra() const {
    return int(rt::integerValue(getOLItemID(olItem_yearOfCommonEra)));
}

rt::Object *vlOLCalendarDate::dateByAddingTimeInterval(double seconds) const {
    return rt::objectValue(getOLItemID(olItem_dateByAddingTimeInterval, seconds));
}

rt::Object *vlOLCalendarDate::addTimeInterval(double seconds) const {
    return rt::objectValue(getOLItemID(olItem_addTimeInterval, seconds));
}

rt::Object *vlOLCalendarDate::dateInDifferentTimeZone(const rt::Value &timeZone) const {
    return rt::objectValue(getOLItemID(olItem_dateInDifferentTimeZone, timeZone));
}

double vlOLCalendarDate::timeIntervalSinceDate(rt::Object *date) const {
    if (!date)
        return 0;
    return rt::doubleValue(getOLItemID(olItem_timeIntervalSinceDate, rt::fromObject(date)));
}
