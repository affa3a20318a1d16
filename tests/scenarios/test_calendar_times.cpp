// Appointments as other programs write their times: what the client is told of them when they get a meeting,
// and when they are moved on the calendar.
#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/ProcessZone.h"

using namespace scenarios;

namespace {

constexpr int hour = 60 * 60;
constexpr int day = 24 * hour;
constexpr int wholeDay = -1; // one of the system's zone

// An appointment as another program has written it, and what a request to the client has to say of it.
struct Case {
    const char *name;
    const char *head; // of the lines of its times, behind their name
    const char *start;
    const char *end;  // or a duration
    const char *zone; // as it is named to the client; null: the system's
    int minutes;      // or wholeDay
    qint64 shift;     // what it is moved by
};

// clang-format off
const Case cases[] = {
    {"spring",   ";TZID=Europe/Berlin:", "20270327T230000", "20270328T060000", "Europe/Berlin", 360, 13 * hour},
    {"autumn",   ";TZID=Europe/Berlin:", "20261024T230000", "20261025T060000", "Europe/Berlin", 480, 2 * day},
    {"onto",     ";TZID=Europe/Berlin:", "20261029T080000", "20261030T170000", "Europe/Berlin", 33 * 60, -5 * day},
    {"windows",  ";TZID=Eastern Standard Time:", "20261031T220000", "20261101T030000", "America/New_York", 360, day},
    {"unknown",  ";TZID=Atlantis/Capital:", "20261125T100000", "20261125T113000", nullptr, 90, day},
    {"floating", ":", "20261125T093000", "20261125T101500", nullptr, 45, hour},
    {"utc",      ":", "20261125T093000Z", "20261125T101500Z", "UTC", 45, day},
    {"day",      ";VALUE=DATE:", "20261125", "20261126", nullptr, wholeDay, 3 * day},
    {"longday",  ";VALUE=DATE:", "20261024", "20261025", nullptr, wholeDay, day},
    {"length",   ";TZID=Asia/Tokyo:", "20261125T100000", "PT90M", "Asia/Tokyo", 90, day},
    {"nothing",  ";TZID=Europe/Berlin:", "20261125T100000", "20261125T100000", "Europe/Berlin", 0, hour},
    {"backward", ";TZID=Europe/Berlin:", "20261125T110000", "20261125T100000", "Europe/Berlin", 0, hour},
    {"midnight", ";TZID=Asia/Kolkata:", "20261125T235900", "20261126T000100", "Asia/Kolkata", 2, 2 * hour},
};
// clang-format on

QTimeZone zoneOf(const Case &one) {
    return one.zone ? QTimeZone(one.zone) : QTimeZone::systemTimeZone();
}

// The instant at which the appointment begins.
QDateTime startOf(const Case &one) {
    const QString clock = QString::fromLatin1(one.start);
    const QDate date = QDate::fromString(clock.left(8), u"yyyyMMdd"_s);
    if (one.minutes == wholeDay)
        return date.startOfDay();
    // Date and time apart: together they would be refused where the process's own zone skips them.
    return {date, QTime::fromString(clock.mid(9, 6), u"HHmmss"_s), zoneOf(one)};
}

OpenedCalendar calendarOf(const Case &one) {
    const QByteArray start = QByteArray("DTSTART") + one.head + one.start;
    const QByteArray end =
        one.end[0] == 'P' ? QByteArray("DURATION:") + one.end : QByteArray("DTEND") + one.head + one.end;
    return {CalendarBuilder().event(Scenario::plain, "Planning", start + '\n' + end + '\n').text()};
}

// The client has been told, once, of the appointment, which begins then.
void expectRequest(Scenario &scenario, const QString &subCommand, const Case &one, const QDateTime &start) {
    ASSERT_EQ(scenario.sent(subCommand), 1);
    const QString content = scenario.sentContents(subCommand).first();
    SCOPED_TRACE(qPrintable(content));
    scenario.forget();
    const QJsonObject sent =
        QJsonDocument::fromJson(content.mid(content.indexOf(u'{')).toUtf8()).object()["apptInfo"].toObject();
    // The appointment's clock, counted as if it stood in this computer's zone.
    const QDateTime clock = start.toTimeZone(zoneOf(one));
    const QDateTime here(clock.date(), clock.time(), QTimeZone::systemTimeZone());
    const qint64 day = startOf(one).secsTo(startOf(one).addDays(1));
    EXPECT_EQ(sent["startTime"], QJsonValue(QString::number(here.toSecsSinceEpoch())));
    EXPECT_EQ(sent["timezone"], QJsonValue(QString::fromUtf8(zoneOf(one).id())));
    EXPECT_EQ(sent["duration"],
              QJsonValue(QString::number(one.minutes == wholeDay ? day / 60 : one.minutes)));
    EXPECT_EQ(sent["recurrence"], QJsonValue(false));
    EXPECT_EQ(scenario.meeting(Scenario::plain)["startTime"].toInteger(), start.toSecsSinceEpoch());
}

void moveTo(Scenario &scenario, const Case &one, const QDateTime &when) {
    mailhost::MainWindowController *main = scenario.host().mainWindowController();
    main->showDay(startOf(one).toLocalTime().date());
    ASSERT_TRUE(main->mainWindow()->calendar()->select(Scenario::plain));
    mailhost::CalendarDate date(when, zoneOf(one));
    EXPECT_TRUE(rt::boolValue(rt::send(main->grid(), "performDragFrom:to:forDate:inProgress:", rt::Value(),
                                       rt::Value(), rt::fromObject(&date), rt::Value())));
    scenario.settle();
}

// In a system's zone and a generation of the host.
class Times : public testing::TestWithParam<std::pair<const char *, const char *>> {
protected:
    ProcessZone zone{GetParam().first};
};

INSTANTIATE_TEST_SUITE_P(Zones, Times,
                         testing::Values(std::pair("Europe/Berlin", "16"),
                                         std::pair("America/St_Johns", "15.8"),
                                         std::pair("Asia/Kolkata", "16")));

} // namespace

TEST_P(Times, AMeetingHasItsAppointmentsTimesAlsoWhenThatIsMoved) {
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        Scenario scenario(QString::fromLatin1(GetParam().second), calendarOf(one));
        mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
        scenario.addMeetingAndSave(editor);
        expectRequest(scenario, "1", one, startOf(one));
        scenario.close(editor);
        const QDateTime moved =
            one.minutes == wholeDay ? startOf(one).addDays(one.shift / day) : startOf(one).addSecs(one.shift);
        moveTo(scenario, one, moved);
        expectRequest(scenario, "2", one, moved);
    }
}
