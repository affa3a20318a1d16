#include "standin/mailhost/model/CalendarDate.h"

#include "standin/mailhost/model/Bind.h"

#include <QLocale>

namespace mailhost {

QTimeZone zoneOf(const CalendarTime &time) {
    if (time.kind == CalendarTime::Kind::Utc)
        return QTimeZone::utc();
    return time.kind == CalendarTime::Kind::Zoned && time.value.timeZone().isValid()
               ? time.value.timeZone()
               : QTimeZone::systemTimeZone();
}

CalendarDate::CalendarDate(const QDateTime &instant, const QTimeZone &zone)
    : rt::Object(rt::classNamed(u"OLCalendarDate"_s))
    , m_utc(instant.toUTC())
    , m_zone(zone) {}

CalendarDate::CalendarDate(const CalendarTime &time)
    : CalendarDate(time.value, zoneOf(time)) {}

rt::Object *CalendarDate::dateByAddingTimeInterval(double seconds) {
    return rt::temporary(std::make_unique<CalendarDate>(m_utc.addMSecs(qint64(seconds * 1000)), m_zone));
}

double CalendarDate::timeIntervalSinceDate(rt::Object *other) const {
    const auto *date = dynamic_cast<CalendarDate *>(other);
    return date ? double(date->m_utc.msecsTo(m_utc)) / 1000.0 : 0.0;
}

rt::Object *CalendarDate::dateInDifferentTimeZone(const rt::Value &zone) {
    const auto wanted = zone.value<QTimeZone>();
    return rt::temporary(std::make_unique<CalendarDate>(m_utc, wanted.isValid() ? wanted : m_zone));
}

QString CalendarDate::description(const QString &format, const rt::Value &zone, const rt::Value &) const {
    const auto wanted = zone.value<QTimeZone>();
    const QDateTime time = m_utc.toTimeZone(wanted.isValid() ? wanted : m_zone);
    static const QHash<QChar, QString> fields{{u'Y', u"yyyy"_s}, {u'm', u"MM"_s},   {u'd', u"dd"_s},
                                              {u'H', u"HH"_s},   {u'M', u"mm"_s},   {u'S', u"ss"_s},
                                              {u'y', u"yy"_s},   {u'B', u"MMMM"_s}, {u'b', u"MMM"_s},
                                              {u'A', u"dddd"_s}, {u'a', u"ddd"_s},  {u'Z', u"t"_s}};
    QString text;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != u'%' || i + 1 == format.size()) {
            text += format[i];
            continue;
        }
        const QChar field = format[++i];
        if (fields.contains(field))
            text += QLocale::c().toString(time, fields.value(field));
        else
            text += field == u'%' ? u"%"_s : u"%"_s + field;
    }
    return text;
}

rt::Value dateValue(const CalendarTime &time) {
    return time.value.isValid() ? rt::fromObject(rt::temporary(std::make_unique<CalendarDate>(time)))
                                : rt::Value();
}

void defineDateClass() {
    addMethods(
        rt::defineClass(u"OLCalendarDate"_s),
        {{"dateUTC", bind<&CalendarDate::dateUTC>, "@@:"},
         {"timeZone", bind<&CalendarDate::timeZone>, "@@:"},
         {"minuteOfHour", bind<&CalendarDate::minuteOfHour>, "i@:"},
         {"hourOfDay", bind<&CalendarDate::hourOfDay>, "i@:"},
         {"weekday", bind<&CalendarDate::weekday>, "i@:"},
         {"dayOfMonth", bind<&CalendarDate::dayOfMonth>, "i@:"},
         {"monthOfYear", bind<&CalendarDate::monthOfYear>, "i@:"},
         {"yearOfCommonEra", bind<&CalendarDate::yearOfCommonEra>, "i@:"},
         {"dateByAddingTimeInterval:", bind<&CalendarDate::dateByAddingTimeInterval>, "@@:d"},
         {"addTimeInterval:", bind<&CalendarDate::dateByAddingTimeInterval>, "@@:d"},
         {"timeIntervalSinceDate:", bind<&CalendarDate::timeIntervalSinceDate>, "d@:@"},
         {"dateInDifferentTimeZone:", bind<&CalendarDate::dateInDifferentTimeZone>, "@@:@"},
         {"descriptionWithCalendarFormat:timeZone:locale:", bind<&CalendarDate::description>, "@@:@@@"}});
}

} // namespace mailhost
