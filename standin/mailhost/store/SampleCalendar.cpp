#include "standin/mailhost/store/SampleCalendar.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/TextValue.h"
#include "standin/mailhost/store/Times.h"
#include "standin/mailhost/store/Zones.h"

namespace mailhost {

namespace {

struct SampleAttendee {
    const char *name;
    const char *address;
    const char *parameters;
};

constexpr SampleAttendee grace = {"Grace Sample", "grace@parlo.example",
                                  "ROLE=REQ-PARTICIPANT;PARTSTAT=ACCEPTED"};
constexpr SampleAttendee tomas = {"Tomás Muster", "tomas@parlo.example",
                                  "ROLE=REQ-PARTICIPANT;PARTSTAT=TENTATIVE"};
constexpr SampleAttendee mei = {"Mei Vorbild", "mei@partner.example",
                                "ROLE=OPT-PARTICIPANT;PARTSTAT=NEEDS-ACTION"};
constexpr SampleAttendee atrium = {"Room Atrium", "room.atrium@parlo.example",
                                   "CUTYPE=ROOM;ROLE=NON-PARTICIPANT;PARTSTAT=ACCEPTED"};
constexpr SampleAttendee garden = {"Room Garden", "room.garden@parlo.example",
                                   "CUTYPE=ROOM;ROLE=NON-PARTICIPANT;PARTSTAT=ACCEPTED"};
constexpr SampleAttendee ada = {"Ada Example", "ada@parlo.example", "ROLE=REQ-PARTICIPANT;PARTSTAT=ACCEPTED"};

// Writes the appointments of one week. Days count from its Monday.
class SampleWriter {
public:
    explicit SampleWriter(const QDate &monday)
        : m_monday(monday)
        , m_zone(localZoneName()) {
        m_out = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Parlo//Sample week//EN\r\nCALSCALE:GREGORIAN\r\n"
                "X-WR-CALNAME:Ada Example\r\n";
        addZone(m_zone);
        addZone(u"America/New_York"_s);
    }
    QByteArray finish() { return m_out + "END:VCALENDAR\r\n"; }

    SampleWriter &begin(const QByteArray &uid, const QString &summary) {
        m_out += "BEGIN:VEVENT\r\nUID:" + uid + "@sample.parlo.example\r\n";
        m_out += "DTSTAMP:" + m_monday.addDays(-7).toString(u"yyyyMMdd"_s).toLatin1() + "T080000Z\r\n";
        return text("SUMMARY", summary);
    }
    SampleWriter &end() {
        m_out += "END:VEVENT\r\n";
        return *this;
    }
    SampleWriter &text(const QByteArray &name, const QString &value) {
        ContentLine line = ContentLine::make(name, {}, "\r\n");
        writeText(line, value);
        m_out += line.source();
        return *this;
    }
    SampleWriter &raw(const QByteArray &line) {
        m_out += ContentLine(line + "\r\n").refolded("\r\n").source();
        return *this;
    }
    SampleWriter &line(const ContentLine &line) {
        m_out += line.refolded("\r\n").source();
        return *this;
    }
    SampleWriter &at(int day, const char *from, const char *to, const QString &zone = QString()) {
        return timed("DTSTART", day, from, zone).timed("DTEND", day, to, zone);
    }
    SampleWriter &timed(const QByteArray &name, int day, const char *clock, const QString &zone = QString()) {
        const QString id = zone.isEmpty() ? m_zone : zone;
        return raw(name + ";TZID=" + id.toLatin1() + ':' + date(day) + 'T' + clock + "00");
    }
    SampleWriter &allDay(int day, int days) {
        return raw("DTSTART;VALUE=DATE:" + date(day)).raw("DTEND;VALUE=DATE:" + date(day + days));
    }
    SampleWriter &organizer(const SampleAttendee &who) {
        return raw("ORGANIZER;CN=" + QByteArray(who.name) + ":mailto:" + who.address);
    }
    SampleWriter &invites(const QList<SampleAttendee> &people) {
        for (const SampleAttendee &who : people)
            raw(QByteArray("ATTENDEE;") + who.parameters + ";CN=" + who.name + ":mailto:" + who.address);
        return *this;
    }

private:
    static QString localZoneName() {
        const QByteArray id = QTimeZone::systemTimeZoneId();
        const bool named = makeTimezoneComponent(QString::fromLatin1(id), "\r\n") != nullptr;
        return named ? QString::fromLatin1(id) : u"Europe/London"_s;
    }
    void addZone(const QString &name) {
        const auto component = makeTimezoneComponent(name, "\r\n");
        if (component && !m_written.contains(name)) {
            component->appendText(m_out);
            m_written.append(name);
        }
    }
    [[nodiscard]] QByteArray date(int day) const {
        return m_monday.addDays(day).toString(u"yyyyMMdd"_s).toLatin1();
    }

    QDate m_monday;
    QString m_zone;
    QStringList m_written;
    QByteArray m_out;
};

void writeSeries(SampleWriter &out) {
    out.begin("standup", u"Morning round"_s).timed("DTSTART", -21, "0915").timed("DTEND", -21, "0930");
    out.raw("RRULE:FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR").timed("EXDATE", 4, "0915");
    out.organizer(ada).invites({grace, tomas}).text("LOCATION", u"Room Garden"_s).end();
    out.begin("standup", u"Morning round, with the new colleagues"_s);
    out.timed("RECURRENCE-ID", 2, "0915")
        .at(2, "1000", "1030")
        .organizer(ada)
        .invites({grace, tomas, mei})
        .end();

    out.begin("review", u"Design review"_s)
        .at(1, "1400", "1530")
        .raw("RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=10");
    out.organizer(ada).invites({grace, mei, atrium}).text("LOCATION", u"Room Atrium"_s);
    out.text("DESCRIPTION", u"Please bring:\n- the drawings, printed\n- your open questions"_s).end();
}

void writeMeetings(SampleWriter &out) {
    out.begin("planning", u"Planning the spring release"_s).at(0, "1000", "1130");
    out.organizer(ada).invites({grace, tomas, atrium}).text("LOCATION", u"Room Atrium"_s);
    const QString agenda = u"<html><body><p><b>Agenda</b></p><ul><li>Where we are</li>"
                           "<li>What is left; who does it</li></ul><p>See you on Monday.</p></body></html>"_s;
    out.raw("DESCRIPTION:Agenda\\n• Where we are\\n• What is left\\; who does it\\nSee you on Monday.");
    ContentLine styled = ContentLine::make("STYLED-DESCRIPTION", {}, "\n");
    styled.setParameter("VALUE", u"TEXT"_s);
    styled.setParameter("FMTTYPE", u"text/html"_s);
    writeText(styled, agenda);
    out.line(styled).end();

    out.begin("budget", u"Budget, first draft"_s).at(0, "1100", "1200").organizer(ada).invites({tomas}).end();
    out.begin("interview", u"Interview: second candidate"_s).at(3, "1330", "1430");
    out.organizer(ada).invites({grace, garden}).text("LOCATION", u"Room Garden"_s).end();
    out.begin("partner", u"Call with the New York office"_s);
    out.at(3, "0930", "1030", u"America/New_York"_s).organizer(ada).invites({mei}).end();
    out.begin("townhall", u"Town hall"_s).at(4, "1500", "1600").organizer(grace).invites({ada, tomas});
    out.text("LOCATION", u"Canteen"_s).raw("SEQUENCE:2").end();
}

void writeOwnTime(SampleWriter &out) {
    out.begin("fair", u"Trade fair"_s).allDay(2, 2).raw("TRANSP:TRANSPARENT").end();
    out.begin("focus", u"Time to write"_s).at(1, "0900", "1200").end();
    out.begin("dentist", u"Dentist"_s).at(2, "1615", "1700").raw("CLASS:PRIVATE").end();
    out.begin("lunch", u"Lunch with Tomás"_s).at(4, "1215", "1315");
    out.text("LOCATION", u"Corner café, Mill Street 4"_s).end();
}

} // namespace

QByteArray sampleCalendar(const QDate &week) {
    const QDate day = week.isValid() ? week : QDate::currentDate();
    SampleWriter out(day.addDays(1 - day.dayOfWeek()));
    writeSeries(out);
    writeMeetings(out);
    writeOwnTime(out);
    return out.finish();
}

} // namespace mailhost
