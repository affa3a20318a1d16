// A date with its own time zone in the host's object model.
#pragma once

#include "platform/runtime/Object.h"
#include "standin/mailhost/store/Appointment.h"

#include <QDateTime>
#include <QTimeZone>

namespace mailhost {

class CalendarDate : public rt::Object {
public:
    CalendarDate(const QDateTime &instant, const QTimeZone &zone);
    explicit CalendarDate(const CalendarTime &time);

    [[nodiscard]] QDateTime dateUTC() const { return m_utc; }
    [[nodiscard]] QTimeZone timeZone() const { return m_zone; }
    [[nodiscard]] int minuteOfHour() const { return local().time().minute(); }
    [[nodiscard]] int hourOfDay() const { return local().time().hour(); }
    [[nodiscard]] int weekday() const { return local().date().dayOfWeek() % 7 + 1; } // Sunday is 1
    [[nodiscard]] int dayOfMonth() const { return local().date().day(); }
    [[nodiscard]] int monthOfYear() const { return local().date().month(); }
    [[nodiscard]] int yearOfCommonEra() const { return local().date().year(); }
    // A new date with the same zone; see rt::temporary() for its lifetime.
    [[nodiscard]] rt::Object *dateByAddingTimeInterval(double seconds);
    [[nodiscard]] double timeIntervalSinceDate(rt::Object *other) const; // seconds; 0 without another date
    [[nodiscard]] rt::Object *dateInDifferentTimeZone(const rt::Value &zone);
    // %Y %m %d %H %M %S %y %B %b %A %a %Z %%; other text stays unchanged.
    [[nodiscard]] QString description(const QString &format, const rt::Value &zone,
                                      const rt::Value &locale) const;

    [[nodiscard]] QDateTime local() const { return m_utc.toTimeZone(m_zone); }

private:
    QDateTime m_utc;
    QTimeZone m_zone;
};

// The zone of the time: its own, or the system's for floating times and whole days.
[[nodiscard]] QTimeZone zoneOf(const CalendarTime &time);
// A date object that lives until the next turn of the event loop.
[[nodiscard]] rt::Value dateValue(const CalendarTime &time);

void defineDateClass();

} // namespace mailhost
