// A date of the host: an instant with a time zone of its own.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

#include <QDateTime>
#include <QVariantMap>

class vlOLCalendarDate : public vlDelegateBase {
public:
    explicit vlOLCalendarDate(rt::Object *date);

    // The instant as "2026-11-24 07:00:00" in UTC and in the date's own zone; null for no valid date.
    [[nodiscard]] QString UTCTime() const;
    [[nodiscard]] QString LocalTime() const;

    // The date record: "UTCTime", "localTime" and "timezone" (a QTimeZone), in this order, ending before the
    // first that is missing.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
    [[nodiscard]] static QVariantMap GenerateVlCalendarDate(const QString &utcTime, const QString &localTime,
                                                            const rt::Value &timeZone);

    [[nodiscard]] QDateTime dateUTC() const;  // invalid for no valid date
    [[nodiscard]] rt::Value timeZone() const; // a QTimeZone
    [[nodiscard]] int minuteOfHour() const;
    [[nodiscard]] int hourOfDay() const;
    [[nodiscard]] int weekday() const;
    [[nodiscard]] int dayOfMonth() const;
    [[nodiscard]] int monthOfYear() const;
    [[nodiscard]] int yearOfCommonEra() const;

    // New dates of the host, which owns them: use them within the call that made them. nullptr when there is
    // none.
    [[nodiscard]] rt::Object *dateByAddingTimeInterval(double seconds) const;
    [[nodiscard]] rt::Object *addTimeInterval(double seconds) const;
    [[nodiscard]] rt::Object *dateInDifferentTimeZone(const rt::Value &timeZone) const;
    // Seconds from `date` (a host date) to this one, negative when it is later; 0 when either is missing.
    [[nodiscard]] double timeIntervalSinceDate(rt::Object *date) const;
};
