#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "tests/scenarios/CalendarText.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/ProcessZone.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

constexpr int hour = 60 * 60;
constexpr int day = 24 * hour;
constexpr int byTheCalendar = -1;

// An appointment as another program has written it, and what a request to the client has to say of it.
struct Case {
    const char *uid;
    const char *head; // of the lines of its times, behind their name
    const char *start, *end;
    const char *zone; // as it is named to the client; null: the system's
    int minutes;      // byTheCalendar: whole days of the system's zone
    qint64 shift;     // what it is moved by
};

// clang-format off
const Case cases[] = {
    {"spring",   ";TZID=Europe/Berlin:", "20270327T230000", "20270328T060000", "Europe/Berlin", 360, 13 * hour},
    {"autumn",   ";TZID=Europe/Berlin:", "20261024T230000", "20261025T060000", "Europe/Berlin", 480, 2 * day},
    {"onto",     ";TZID=Europe/Berlin:", "20261029T080000", "20261030T170000", "Europe/Berlin", 33 * 60, -5 * day},
    {"windows",  ";TZID=Eastern Standard Time:", "20261031T220000", "20261101T030000", "America/New_York", 360, day},
    {"office",   ";TZID=Our office:", "20261024T230000", "20261025T060000", "Europe/Berlin", 480, day},
    {"custom",   ";TZID=\"Customized: Time\":", "20261125T100000", "20261125T113000", "UTC+03:45", 90, day + hour / 4},
    {"unknown",  ";TZID=Atlantis/Capital:", "20261125T100000", "20261125T113000", nullptr, 90, day},
    {"floating", ":", "20261125T093000", "20261125T101500", nullptr, 45, hour},
    {"utc",      ":", "20261125T093000Z", "20261125T101500Z", "UTC", 45, day},
    {"day",      ";VALUE=DATE:", "20261125", "20261126", nullptr, byTheCalendar, 3 * day},
    {"longday",  ";VALUE=DATE:", "20261024", "20261025", nullptr, byTheCalendar, day},
    {"days",     ";VALUE=DATE:", "20261023", "20261027", nullptr, byTheCalendar, -day},
    {"week",     ";TZID=Europe/Berlin:", "20261123T080000", "20261127T170000", "Europe/Berlin", 105 * 60, hour / 2},
    {"length",   ";TZID=Asia/Tokyo:", "20261125T100000", "PT90M", "Asia/Tokyo", 90, day},
    {"nothing",  ";TZID=Europe/Berlin:", "20261125T100000", "20261125T100000", "Europe/Berlin", 0, hour},
    {"backward", ";TZID=Europe/Berlin:", "20261125T110000", "20261125T100000", "Europe/Berlin", 0, hour},
    {"midnight", ";TZID=Asia/Kolkata:", "20261125T235900", "20261126T000100", "Asia/Kolkata", 2, 2 * hour},
};
// clang-format on

const char zonesOfTheFile[] = "BEGIN:VTIMEZONE\r\n"
                              "TZID:Our office\r\n"
                              "X-LIC-LOCATION:Europe/Berlin\r\n"
                              "BEGIN:STANDARD\r\n"
                              "DTSTART:19701025T030000\r\n"
                              "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n"
                              "TZOFFSETFROM:+0200\r\n"
                              "TZOFFSETTO:+0100\r\n"
                              "END:STANDARD\r\n"
                              "BEGIN:DAYLIGHT\r\n"
                              "DTSTART:19700329T020000\r\n"
                              "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
                              "TZOFFSETFROM:+0100\r\n"
                              "TZOFFSETTO:+0200\r\n"
                              "END:DAYLIGHT\r\n"
                              "END:VTIMEZONE\r\n"
                              "BEGIN:VTIMEZONE\r\n"
                              "TZID:Customized: Time\r\n"
                              "BEGIN:STANDARD\r\n"
                              "DTSTART:16010101T000000\r\n"
                              "TZOFFSETFROM:+0345\r\n"
                              "TZOFFSETTO:+0345\r\n"
                              "END:STANDARD\r\n"
                              "END:VTIMEZONE\r\n";

bool hasLength(const Case &one) {
    return one.end[0] == 'P';
}

std::string line(const Case &one, const char *name, const QByteArray &clock) {
    return std::string(name) + one.head + clock.toStdString();
}

std::string startLine(const Case &one) {
    return line(one, "DTSTART", one.start);
}

// The line that says when it ends.
QByteArray endName(const Case &one) {
    return hasLength(one) ? "DURATION" : "DTEND";
}

std::string endLine(const Case &one) {
    return hasLength(one) ? std::string("DURATION:") + one.end : line(one, "DTEND", one.end);
}

QByteArray calendarOf(const Case &one) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\n";
    text += zonesOfTheFile;
    text += QByteArray("BEGIN:VEVENT\r\nUID:") + one.uid + "\r\nDTSTAMP:20261101T080000Z\r\n" +
            startLine(one).c_str() + "\r\n" + endLine(one).c_str() + "\r\nSUMMARY:Planning\r\nEND:VEVENT\r\n";
    return text + "END:VCALENDAR\r\n";
}

QTimeZone zoneOf(const Case &one) {
    return one.zone ? QTimeZone(one.zone) : QTimeZone::systemTimeZone();
}

bool isWholeDay(const Case &one) {
    return QByteArray(one.start).size() == 8;
}

QString formOf(const Case &one) {
    const QString form = u"yyyyMMdd"_s;
    return isWholeDay(one) ? form : form + u"'T'HHmmss"_s;
}

// The instant that a clock's text of that appointment means.
QDateTime instant(const Case &one, const QByteArray &text) {
    if (isWholeDay(one))
        return QDate::fromString(QString::fromLatin1(text), formOf(one)).startOfDay();
    // Date and time apart: together they would be refused where the process's own zone skips them.
    return QDateTime(QDate::fromString(QString::fromLatin1(text.left(8)), u"yyyyMMdd"_s),
                     QTime::fromString(QString::fromLatin1(text.mid(9, 6)), u"HHmmss"_s), zoneOf(one));
}

// The text that the file has of an instant.
QByteArray clockText(const Case &one, const QDateTime &when) {
    const QByteArray text = when.toTimeZone(zoneOf(one)).toString(formOf(one)).toLatin1();
    return QByteArray(one.start).endsWith('Z') ? text + 'Z' : text;
}

QDateTime startOf(const Case &one) {
    return instant(one, one.start);
}

int minutesOf(const Case &one) {
    return one.minutes != byTheCalendar ? one.minutes : int(startOf(one).secsTo(instant(one, one.end)) / 60);
}

// What a request to the client says of an appointment that begins then.
void expectRequest(const QString &content, const Case &one, const QDateTime &start, int minutes) {
    SCOPED_TRACE(qPrintable(content));
    constexpr qsizetype headLength = 14; // one digit and 13 semicolons
    ASSERT_EQ(content.mid(1, headLength - 1), QString(headLength - 1, u';'));
    const QJsonObject sent =
        QJsonDocument::fromJson(content.mid(headLength).toUtf8()).object()["apptInfo"].toObject();
    // The appointment's clock, counted as if it stood in this computer's zone.
    const QDateTime clock = start.toTimeZone(zoneOf(one));
    const QDateTime here(clock.date(), clock.time(), QTimeZone::systemTimeZone());
    EXPECT_EQ(sent["startTime"], QJsonValue(QString::number(here.toSecsSinceEpoch())));
    EXPECT_EQ(sent["timezone"], QJsonValue(QString::fromUtf8(zoneOf(one).id())));
    EXPECT_EQ(sent["duration"], QJsonValue(QString::number(minutes)));
    EXPECT_EQ(sent["recurrence"], QJsonValue(false));
    EXPECT_EQ(sent["subject"], QJsonValue(u"Planning"_s));
}

// Each in a scenario of its own, in a system's zone and for a generation of the host.
class Times : public testing::TestWithParam<std::tuple<const char *, const char *>> {
protected:
    struct Given {
        explicit Given(const Case &one, const QString &hostVersion)
            : appointment(one)
            , scenario(hostVersion, OpenedCalendar{calendarOf(one)}) {}
        const Case &appointment;
        Scenario scenario;

        [[nodiscard]] EventText inFile() const { return eventIn(scenario.fileBytes(), appointment.uid); }
        void hasAMeeting() {
            mailhost::EditorWindow *editor = scenario.open(QString::fromLatin1(appointment.uid));
            scenario.addMeeting(editor);
            scenario.pressSave(editor);
        }
        // With the editor closed again and nothing sent so far.
        void hasAMeetingOnTheGrid() {
            hasAMeeting();
            for (mailhost::EditorWindowController *controller : mailhost::EditorWindowController::open())
                controller->close();
            scenario.wait(1);
            scenario.forget();
            select();
        }
        [[nodiscard]] mailhost::GridViewWrapper *grid() {
            return scenario.host().mainWindowController()->grid();
        }
        [[nodiscard]] rt::Object *selected() { return grid()->controller()->selectedEvent(); }
        // The one place that knows how the grid is made to select.
        void select() {
            mailhost::MainWindowController *main = scenario.host().mainWindowController();
            main->showDay(startOf(appointment).toLocalTime().date());
            main->mainWindow()->calendar()->select(QString::fromLatin1(appointment.uid));
            ASSERT_NE(selected(), nullptr);
        }
        // What the client has of the meeting begins then.
        void expectAtClient(const QDateTime &start) {
            const auto meeting =
                scenario.client().meeting(scenario.meetingKey(QString::fromLatin1(appointment.uid)));
            ASSERT_TRUE(meeting);
            EXPECT_EQ((*meeting)["startTime"].toInteger(), start.toSecsSinceEpoch());
        }
        void moveTo(const QDateTime &when) {
            mailhost::CalendarDate date(when, zoneOf(appointment));
            EXPECT_TRUE(rt::boolValue(rt::send(grid(), "performDragFrom:to:forDate:inProgress:", rt::Value(),
                                               rt::Value(), rt::fromObject(&date), rt::Value())));
            scenario.settle();
        }
        void resizeTo(const QDateTime &start, double seconds) {
            mailhost::CalendarDate date(start, zoneOf(appointment));
            EXPECT_TRUE(rt::boolValue(
                rt::send(grid(),
                         "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:"
                         "partialEnd:",
                         rt::fromObject(selected()), rt::Value(), rt::fromObject(&date), seconds, rt::Value(),
                         false, false)));
            scenario.settle();
        }
    };
    [[nodiscard]] static QString hostVersion() { return QString::fromLatin1(std::get<1>(GetParam())); }
    static void moveOnTheGrid(const Case &one) {
        SCOPED_TRACE(one.uid);
        Given given(one, hostVersion());
        given.hasAMeetingOnTheGrid();
        const QDateTime start = isWholeDay(one)
                                    ? startOf(one).toLocalTime().date().addDays(one.shift / day).startOfDay()
                                    : startOf(one).addSecs(one.shift);
        given.moveTo(start);
        ASSERT_EQ(given.scenario.sent("2"), 1);
        expectRequest(given.scenario.sentContents("2").first(), one, start, minutesOf(one));
        given.expectAtClient(start);
        EXPECT_EQ(given.inFile().line("DTSTART"), line(one, "DTSTART", clockText(one, start)));
        const QDateTime end = isWholeDay(one) ? start.addDays(startOf(one).daysTo(instant(one, one.end)))
                                              : start.addSecs(qint64(one.minutes) * 60);
        EXPECT_EQ(given.inFile().line(endName(one)),
                  hasLength(one) ? endLine(one) : line(one, "DTEND", clockText(one, end)));
    }
    ProcessZone zone{std::get<0>(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(Zones, Times,
                         testing::Values(std::tuple("Europe/Berlin", "16"),
                                         std::tuple("America/St_Johns", "15.8"),
                                         std::tuple("Asia/Kolkata", "16")),
                         [](const auto &info) {
                             return QString::fromLatin1(std::get<0>(info.param))
                                 .append(std::get<1>(info.param))
                                 .replace(QRegularExpression(u"[^A-Za-z0-9]"_s), "_")
                                 .toStdString();
                         });

} // namespace

TEST_P(Times, AMeetingIsScheduledForTheAppointmentsOwnTimesAndLeavesThemAsWritten) {
    for (const Case &one : cases) {
        SCOPED_TRACE(one.uid);
        Given given(one, hostVersion());
        given.hasAMeeting();
        ASSERT_EQ(given.scenario.sent("1"), 1);
        expectRequest(given.scenario.sentContents("1").first(), one, startOf(one), minutesOf(one));
        EXPECT_EQ(given.scenario.sent("2"), 0) << "what the client has is what was meant";
        given.expectAtClient(startOf(one));
        EXPECT_EQ(given.inFile().line("DTSTART"), startLine(one));
        EXPECT_EQ(given.inFile().line(endName(one)), endLine(one));
    }
}

TEST_P(Times, MovedOnTheGridAnAppointmentKeepsItsKindZoneAndLength) {
    for (const Case &one : cases)
        moveOnTheGrid(one);
}

TEST_P(Times, ResizedOnTheGridAnAppointmentEndsWhenItWasLetGo) {
    for (const Case &one : cases) {
        if (isWholeDay(one))
            continue; // below
        for (const int earlier : {0, hour}) {
            SCOPED_TRACE(std::string(one.uid) + (earlier ? ", the upper edge" : ", the lower edge"));
            Given given(one, hostVersion());
            given.hasAMeetingOnTheGrid();
            const QDateTime start = startOf(one).addSecs(-earlier);
            constexpr int minutes = 6 * 60 + 15; // past the hour that a change gives twice
            given.resizeTo(start, minutes * 60);
            ASSERT_EQ(given.scenario.sent("2"), 1);
            expectRequest(given.scenario.sentContents("2").first(), one, start, minutes);
            given.expectAtClient(start);
            EXPECT_EQ(given.inFile().line("DTSTART"), line(one, "DTSTART", clockText(one, start)));
            EXPECT_EQ(given.inFile().line(endName(one)),
                      hasLength(one)
                          ? "DURATION:PT6H15M"
                          : line(one, "DTEND", clockText(one, start.addSecs(qint64(minutes) * 60))));
        }
    }
}

TEST_P(Times, ResizedByADayWholeDaysStayWholeDays) {
    for (const Case &one : cases) {
        if (!isWholeDay(one))
            continue;
        SCOPED_TRACE(one.uid);
        Given given(one, hostVersion());
        given.hasAMeetingOnTheGrid();
        const QDateTime end = instant(one, one.end).addDays(1);
        const qint64 seconds = startOf(one).secsTo(end);
        given.resizeTo(startOf(one), double(seconds));
        ASSERT_EQ(given.scenario.sent("2"), 1);
        expectRequest(given.scenario.sentContents("2").first(), one, startOf(one), int(seconds / 60));
        EXPECT_EQ(given.inFile().line("DTSTART"), startLine(one));
        EXPECT_EQ(given.inFile().line("DTEND"), line(one, "DTEND", clockText(one, end)));
    }
}

TEST_P(Times, AnEndInTheHourThatTheClockShowsTwiceIsTheInstantThatWasMeant) {
    const Case &one = cases[1];
    for (const int minutes : {3 * 60 + 15, 4 * 60 + 15}) { // 02:15, and 02:15 again
        SCOPED_TRACE(minutes);
        Given given(one, hostVersion());
        given.hasAMeetingOnTheGrid();
        given.resizeTo(startOf(one), minutes * 60);
        ASSERT_EQ(given.scenario.sent("2"), 1);
        expectRequest(given.scenario.sentContents("2").first(), one, startOf(one), minutes);
        const mailhost::Appointment saved = given.scenario.inFile(QString::fromLatin1(one.uid));
        EXPECT_EQ(saved.start.value.secsTo(saved.end.value), minutes * 60);
        EXPECT_EQ(given.inFile().line("DTSTART"), startLine(one));
    }
}
