#include "plugin/link/calendarDateRecord.h"

#include "plugin/link/meetingKeys.h"

#include <QTimeZone>

namespace {

bool isUsableZone(const rt::Value &timeZone) {
    if (timeZone.metaType() == QMetaType::fromType<QTimeZone>())
        return timeZone.value<QTimeZone>().isValid();
    return rt::isPresent(timeZone);
}

} // namespace

QVariantMap GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                   const rt::Value &timeZone) {
    QVariantMap record;
    if (utcTime.isNull())
        return record;
    record.insert(vl_ApptInfo_CalDate_UTCTime, utcTime);
    if (localTime.isNull())
        return record;
    record.insert(vl_ApptInfo_CalDate_LocalTime, localTime);
    if (isUsableZone(timeZone))
        record.insert(vl_ApptInfo_Timezone, timeZone);
    return record;
}
