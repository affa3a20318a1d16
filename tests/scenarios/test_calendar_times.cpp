// Appointments as other programs write their times: what the client is told of them, and what a change on the
// calendar makes of them in the file.
#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/ProcessZone.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
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
    {"office",   ";TZID=W. Europe Standard Time:", "20261024T230000", "20261025T060000", "Europe/Berlin", 480, day},
    {"custom",   ";TZID=\"Customized Time Zone\":", "20261125T100000", "20261125T113000", "UTC+03:45", 90, day + hour / 4},
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

// The zones that another program explains in its file.
QByteArray zonesOfTheFile() {
    QFile file(u"" PARLO_FIXTURES "/windows_zones.ics"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll().replace("\r\n", "\n");
    const qsizetype begin = text.indexOf("BEGIN:VTIMEZONE");
    return text.mid(begin, text.indexOf("BEGIN:VEVENT") - begin);
}

QTimeZone zoneOf(const Case &one) {
    return one.zone ? QTimeZone(one.zone) : QTimeZone::systemTimeZone();
}

bool isWholeDay(const Case &one) {
    return qstrlen(one.start) == 8;
}

bool hasLength(const Case &one) {
    return one.end[0] == 'P';
}

// The instant that a text of that appointment's clock means.
QDateTime instant(const Case &one, const char *text) {
    const QString clock = QString::fromLatin1(text);
    const QDate date = QDate::fromString(clock.left(8), u"yyyyMMdd"_s);
    if (isWholeDay(one))
        return date.startOfDay();
    // Date and time apart: together they would be refused where the process's own zone skips them.
    return {date, QTime::fromString(clock.mid(9, 6), u"HHmmss"_s), zoneOf(one)};
}

QDateTime startOf(const Case &one) {
    return instant(one, one.start);
}

int minutesOf(const Case &one) {
    return one.minutes != byTheCalendar ? one.minutes : int(startOf(one).secsTo(instant(one, one.end)) / 60);
}

// A line of the appointment with a text of its clock.
QByteArray line(const Case &one, const char *name, const QByteArray &clock) {
    return QByteArray(name) + one.head + clock;
}

QByteArray line(const Case &one, const char *name, const QDateTime &when) {
    const QString form = isWholeDay(one) ? u"yyyyMMdd"_s : u"yyyyMMdd'T'HHmmss"_s;
    const char *utc = QByteArray(one.start).endsWith('Z') ? "Z" : "";
    return line(one, name, when.toTimeZone(zoneOf(one)).toString(form).toLatin1() + utc);
}

QByteArray endLine(const Case &one) {
    return hasLength(one) ? QByteArray("DURATION:") + one.end : line(one, "DTEND", QByteArray(one.end));
}

OpenedCalendar calendarOf(const Case &one) {
    const QByteArray times = line(one, "DTSTART", QByteArray(one.start)) + '\n' + endLine(one) + '\n';
    return {CalendarBuilder()
                .lines(zonesOfTheFile())
                .event(QString::fromLatin1(one.uid), "Planning", times)
                .text()};
}

// An appointment in a scenario of its own.
class Given {
public:
    Given(const Case &one, const QString &hostVersion)
        : m_case(one)
        , m_scenario(hostVersion, calendarOf(one)) {
        mailhost::EditorWindow *editor = m_scenario.open(uid());
        m_scenario.addMeetingAndSave(editor);
        expectRequest("1", startOf(one), minutesOf(one));
        expectInFile(line(one, "DTSTART", QByteArray(one.start)), endLine(one));
        m_scenario.close(editor);
    }

    // The client has been told, once, of an appointment that begins then and is so long.
    void expectRequest(const QString &subCommand, const QDateTime &start, int minutes) {
        ASSERT_EQ(m_scenario.sent(subCommand), 1);
        const QString content = m_scenario.sentContents(subCommand).first();
        SCOPED_TRACE(qPrintable(content));
        m_scenario.forget();
        constexpr qsizetype headLength = 14; // one digit and 13 semicolons
        ASSERT_EQ(content.mid(1, headLength - 1), QString(headLength - 1, u';'));
        const QJsonObject sent =
            QJsonDocument::fromJson(content.mid(headLength).toUtf8()).object()["apptInfo"].toObject();
        // The appointment's clock, counted as if it stood in this computer's zone.
        const QDateTime clock = start.toTimeZone(zoneOf(m_case));
        const QDateTime here(clock.date(), clock.time(), QTimeZone::systemTimeZone());
        EXPECT_EQ(sent["startTime"], QJsonValue(QString::number(here.toSecsSinceEpoch())));
        EXPECT_EQ(sent["timezone"], QJsonValue(QString::fromUtf8(zoneOf(m_case).id())));
        EXPECT_EQ(sent["duration"], QJsonValue(QString::number(minutes)));
        EXPECT_EQ(sent["recurrence"], QJsonValue(false));
        EXPECT_EQ(sent["subject"], QJsonValue(u"Planning"_s));
        EXPECT_EQ(m_scenario.meeting(uid())["startTime"].toInteger(), start.toSecsSinceEpoch());
    }
    void expectInFile(const QByteArray &start, const QByteArray &end) {
        const QByteArray file = m_scenario.fileBytes();
        const QByteArray event = file.mid(file.indexOf("BEGIN:VEVENT")).replace("\r\n ", "");
        EXPECT_TRUE(event.contains("\r\n" + start + "\r\n")) << start.toStdString() << event.toStdString();
        EXPECT_TRUE(event.contains("\r\n" + end + "\r\n")) << end.toStdString() << event.toStdString();
    }
    void moveTo(const QDateTime &when) {
        select();
        mailhost::CalendarDate date(when, zoneOf(m_case));
        EXPECT_TRUE(rt::boolValue(rt::send(grid(), "performDragFrom:to:forDate:inProgress:", rt::Value(),
                                           rt::Value(), rt::fromObject(&date), rt::Value())));
        m_scenario.settle();
    }
    void resizeTo(const QDateTime &start, qint64 seconds) {
        select();
        mailhost::CalendarDate date(start, zoneOf(m_case));
        EXPECT_TRUE(rt::boolValue(
            rt::send(grid(),
                     "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:"
                     "partialEnd:",
                     rt::fromObject(grid()->controller()->selectedEvent()), rt::Value(),
                     rt::fromObject(&date), double(seconds), rt::Value(), false, false)));
        m_scenario.settle();
    }

private:
    [[nodiscard]] QString uid() const { return QString::fromLatin1(m_case.uid); }
    mailhost::GridViewWrapper *grid() { return m_scenario.host().mainWindowController()->grid(); }
    void select() {
        mailhost::MainWindowController *main = m_scenario.host().mainWindowController();
        main->showDay(m_scenario.inFile(uid()).start.value.toLocalTime().date());
        main->mainWindow()->calendar()->select(uid());
        ASSERT_NE(grid()->controller()->selectedEvent(), nullptr);
    }
    const Case &m_case;
    Scenario m_scenario;
};

// In a system's zone and a generation of the host.
class Times : public testing::TestWithParam<std::tuple<const char *, const char *>> {
protected:
    [[nodiscard]] static QString hostVersion() { return QString::fromLatin1(std::get<1>(GetParam())); }
    ProcessZone zone{std::get<0>(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(Zones, Times,
                         testing::Values(std::tuple("Europe/Berlin", "16"),
                                         std::tuple("America/St_Johns", "15.8"),
                                         std::tuple("Asia/Kolkata", "16")),
                         [](const auto &info) {
                             return QString::fromLatin1(std::get<0>(info.param))
                                 .replace(QRegularExpression(u"[^A-Za-z0-9]"_s), "_")
                                 .toStdString();
                         });

} // namespace

TEST_P(Times, AMeetingHasItsAppointmentsTimesAndKeepsTheirKindWhenItIsMovedAndResized) {
    for (const Case &one : cases) {
        SCOPED_TRACE(one.uid);
        Given given(one, hostVersion());
        const bool whole = isWholeDay(one);
        QDateTime start = whole ? startOf(one).toLocalTime().date().addDays(one.shift / day).startOfDay()
                                : startOf(one).addSecs(one.shift);
        QDateTime end = whole ? start.addDays(startOf(one).daysTo(instant(one, one.end)))
                              : start.addSecs(qint64(one.minutes) * 60);
        given.moveTo(start);
        given.expectRequest("2", start, minutesOf(one));
        given.expectInFile(line(one, "DTSTART", start),
                           hasLength(one) ? endLine(one) : line(one, "DTEND", end));
        // By the lower edge and, where there is a time of day, by the upper one too.
        end = whole ? end.addDays(1) : start.addSecs(5 * hour + hour / 4);
        start = whole ? start : start.addSecs(-hour);
        given.resizeTo(start, start.secsTo(end));
        given.expectRequest("2", start, int(start.secsTo(end) / 60));
        given.expectInFile(line(one, "DTSTART", start),
                           hasLength(one) ? "DURATION:PT6H15M" : line(one, "DTEND", end));
    }
}
