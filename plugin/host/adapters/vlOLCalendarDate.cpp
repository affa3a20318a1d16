#include "plugin/host/adapters/vlOLCalendarDate.h"

#include "plugin/link/calendarDateRecord.h"
#include "plugin/util/TimeUtils.h"

namespace {
const QString calendarFormat = u"%Y-%m-%d %H:%M:%S"_s;
} // namespace

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

double vlOLCalendarDate::timeIntervalSinceDate(rt::Object *date) const {
    if (!date)
        return 0;
    return rt::doubleValue(getOLItemID(olItem_timeIntervalSinceDate, rt::fromObject(date)));
}
