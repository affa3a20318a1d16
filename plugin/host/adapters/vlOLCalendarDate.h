// A date of the host: an instant with its own time zone.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

#include <QDateTime>
#include <QVariantMap>

class vlOLCalendarDate : public vlDelegateBase {
public:
    explicit vlOLCalendarDate(rt::Object *date)
        : vlDelegateBase(key_vlOLCalendarDate, date) {}

    // The instant as "2026-11-24 07:00:00" in UTC and in the date's own zone; null without a valid date.
    [[nodiscard]] QString UTCTime() const;
    [[nodiscard]] QString LocalTime() const;

    // The date record: "UTCTime", "localTime" and "timezone" (a QTimeZone), in this order. It ends before the
    // first missing value.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
    [[nodiscard]] static QVariantMap GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                                            const rt::Value &timeZone);

    // Invalid without a valid date.
    [[nodiscard]] QDateTime dateUTC() const { return getOLItemID(olItem_dateUTC).toDateTime(); }
    [[nodiscard]] rt::Value timeZone() const { return getOLItemID(olItem_timeZone); } // a QTimeZone
    [[nodiscard]] int minuteOfHour() const { return number(olItem_minuteOfHour); }
    [[nodiscard]] int hourOfDay() const { return number(olItem_hourOfDay); }
    [[nodiscard]] int weekday() const { return number(olItem_weekday); }
    [[nodiscard]] int dayOfMonth() const { return number(olItem_dayOfMonth); }
    [[nodiscard]] int monthOfYear() const { return number(olItem_monthOfYear); }
    [[nodiscard]] int yearOfCommonEra() const { return number(olItem_yearOfCommonEra); }

    // New dates, owned by the host: use them only within the call that made them. nullptr on failure.
    [[nodiscard]] rt::Object *dateByAddingTimeInterval(double seconds) const {
        return rt::objectValue(getOLItemID(olItem_dateByAddingTimeInterval, seconds));
    }
    [[nodiscard]] rt::Object *addTimeInterval(double seconds) const {
        return rt::objectValue(getOLItemID(olItem_addTimeInterval, seconds));
    }
    [[nodiscard]] rt::Object *dateInDifferentTimeZone(const rt::Value &timeZone) const {
        return rt::objectValue(getOLItemID(olItem_dateInDifferentTimeZone, timeZone));
    }
    // Seconds from `date` (a host date) to this date, negative if `date` is later; 0 if either is missing.
    [[nodiscard]] double timeIntervalSinceDate(rt::Object *date) const;
};
