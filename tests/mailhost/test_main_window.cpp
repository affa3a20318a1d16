#include "tests/mailhost/HostFixture.h"

#include "standin/mailhost/model/Addresses.h"

#include <QLabel>

namespace mailhost {
namespace {

using MainWindowTest = HostFixture;

TEST_F(MainWindowTest, TheWeekCanBeLeftAndOneDayShown) {
    CalendarGrid *calendar = main()->calendar();
    trigger(controls::nextAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 16));
    EXPECT_FALSE(calendar->select(u"review@example.com"_s));
    trigger(controls::todayAction);
    select(u"plan@example.com"_s);
    trigger(controls::dayViewAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 11)) << "the day of what was selected";
    trigger(controls::previousAction);
    select(u"review@example.com"_s);
    trigger(controls::weekViewAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 9));
}

TEST_F(MainWindowTest, ANewAppointmentBeginsWhereThePersonPoints) {
    Q_EMIT main()->calendar()->newRequested(QDateTime({2026, 3, 13}, {14, 0}), false);
    Q_EMIT main()->calendar()->newRequested(QDateTime({2026, 3, 12}, {0, 0}), true);
    const auto open = EditorWindowController::open();
    ASSERT_EQ(open.size(), 2);
    const Appointment timed = open[0]->editorWindow()->viewController()->content()->appointment();
    EXPECT_EQ(timed.start.value.toLocalTime(), QDateTime({2026, 3, 13}, {14, 0}));
    const Appointment allDay = open[1]->editorWindow()->viewController()->content()->appointment();
    EXPECT_EQ(allDay.start.kind, CalendarTime::Kind::Date);
    EXPECT_EQ(allDay.end.value.date(), QDate(2026, 3, 13));
}

TEST_F(MainWindowTest, AnAppointmentOneDayOrASeriesIsDeletedAfterAQuestionAndComesBack) {
    const QByteArray before = fileText();
    const QString daily = u"daily@example.com"_s;
    const QString day = u"20260311T070000Z"_s;
    const auto remove = [this](const QString &uid, const QString &ofDay, const QString &answer) {
        select(uid, ofDay);
        trigger(controls::deleteAction);
        EXPECT_TRUE(main()->calendar()->select(uid, ofDay));
        click(answer);
        EXPECT_FALSE(main()->calendar()->select(uid, ofDay));
    };
    remove(u"review@example.com"_s, {}, controls::deleteConfirmButton);
    remove(daily, day, controls::deleteConfirmButton);
    EXPECT_TRUE(main()->calendar()->select(daily));
    remove(daily, {}, controls::deleteSeriesButton);
    EXPECT_TRUE(fileText().contains("plan@example.com"));
    for (int i = 0; i < 3; ++i)
        trigger(controls::undoAction);
    EXPECT_TRUE(main()->calendar()->select(daily, day));
    EXPECT_EQ(fileText().count("BEGIN:VEVENT"), before.count("BEGIN:VEVENT"));
    EXPECT_TRUE(fileText().contains("X-PLANNER-COLOUR;X-SHADE=dark:teal"));
    EXPECT_FALSE(fileText().contains("EXDATE"));
    trigger(controls::redoAction);
    EXPECT_FALSE(fileText().contains("review@example.com"));
}

TEST_F(MainWindowTest, WhatAnotherProgramChangedSinceIsNotUndone) {
    select(u"review@example.com"_s);
    trigger(controls::laterAction);
    writeFile(fileText().replace("Design review", "Theirs"));
    select(u"plan@example.com"_s);
    trigger(controls::laterAction); // is refused, and the file is read again
    delete main()->findChild<QMessageBox *>(controls::errorMessage);
    EXPECT_FALSE(main()->command(controls::undoAction)->isEnabled());
    EXPECT_TRUE(fileText().contains("Theirs"));
}

TEST_F(MainWindowTest, CommandsMoveStartAndEndByHalfHoursAndWholeDaysByDays) {
    struct Case {
        QString command;
        int start; // what it changes, in half hours or days
        int end;
    };
    const QList<Case> cases{{controls::laterAction, 1, 1},         {controls::earlierAction, -1, -1},
                            {controls::longerAction, 0, 1},        {controls::shorterAction, 0, -1},
                            {controls::startEarlierAction, -1, 0}, {controls::startLaterAction, 1, 0},
                            {controls::shorterAction, 0, -1},      {controls::shorterAction, 0, 0}};
    for (const auto &[uid, seconds] :
         {std::pair(u"review@example.com"_s, 1800), {u"trip@example.com"_s, 86400}}) {
        select(uid);
        for (const Case &c : cases) {
            const Appointment before = onDisk(uid);
            trigger(c.command);
            const Appointment after = onDisk(uid);
            EXPECT_EQ(before.start.value.secsTo(after.start.value), c.start * seconds)
                << qPrintable(c.command);
            EXPECT_EQ(before.end.value.secsTo(after.end.value), c.end * seconds) << qPrintable(c.command);
        }
    }
    for (const QString &command :
         {controls::dayLaterAction, controls::dayLaterAction, controls::dayEarlierAction})
        trigger(command);
    EXPECT_EQ(onDisk(u"trip@example.com"_s).start.value.date(), QDate(2026, 3, 11));
}

TEST_F(MainWindowTest, ADayIsEditedAsAnExceptionAndItsSeriesCanBeOpenedFromIt) {
    const QString uid = u"daily@example.com"_s;
    const QString day = u"20260311T070000Z"_s;
    select(uid, day);
    trigger(controls::openAction);
    ASSERT_EQ(EditorWindowController::open().size(), 1);
    controller = EditorWindowController::open().first();
    window = controller->editorWindow();
    editor = window->viewController();
    saveByMenu();
    EXPECT_FALSE(fileText().contains("RECURRENCE-ID")) << "an unchanged day is still the series'";
    type(controls::subjectField, u"Long stand-up"_s);
    click(controls::openSeriesButton);
    click(controls::saveChangesButton);
    EXPECT_EQ(onDisk(uid, day).summary, u"Long stand-up"_s);
    EXPECT_EQ(onDisk(uid).summary, u"Stand-up"_s);
    EXPECT_EQ(field(controls::subjectField)->text(), u"Stand-up"_s);
    EXPECT_FALSE(editor->isDirty());
    for (const QString &name : {controls::startDateField, controls::startTimeField, controls::allDayBox})
        EXPECT_FALSE(find<QWidget>(name)->isEnabled()) << "the series has a changed day now";
    EXPECT_TRUE(find<QWidget>(controls::endDateField)->isEnabled());
    EXPECT_EQ(find<QLabel>(controls::noticeBar)->text(), CalendarSession::startIsKept());
}

TEST_F(MainWindowTest, AnotherPersonsMeetingIsNotChangedInPlace) {
    const QByteArray before = fileText();
    select(u"foreign@example.com"_s);
    trigger(controls::laterAction);
    EXPECT_EQ(fileText(), before);
    EXPECT_TRUE(main()->findChild<QMessageBox *>(controls::errorMessage));
}

TEST(Addresses, AreReadAsPeopleWriteThem) {
    const QList<Attendee> before{{u"Bo Guest"_s, u"bo@example.com"_s, AttendeeType::Optional}};
    const QList<Attendee> parsed =
        parseAddresses(u"\"Guest, Bo\" <BO@example.com>; cy@example.org,nobody,, <d@e.f>"_s, false, before);
    ASSERT_EQ(parsed.size(), 4);
    EXPECT_EQ(parsed[0], (Attendee{u"Guest, Bo"_s, u"BO@example.com"_s, AttendeeType::Optional}));
    EXPECT_EQ(parsed[1].email, u"cy@example.org"_s);
    EXPECT_EQ(parsed[3].email, u"d@e.f"_s);
    EXPECT_EQ(incompleteAddresses(parsed), QStringList{u"nobody"_s});
    EXPECT_EQ(parseAddresses(addressText(parsed, false), false, parsed), parsed);
}

TEST(CalendarOwner, IsWhoTakesPartInMostMeetings) {
    Appointment a, b, c;
    a.organizerEmail = u"me@x.example"_s;
    a.attendees = {{u"B"_s, u"b@x.example"_s, {}}};
    b.organizerEmail = u"b@x.example"_s;
    b.attendees = {{u"Me"_s, u"ME@x.example"_s, {}}};
    c.organizerEmail = u"c@x.example"_s;
    c.attendees = {{u"Me"_s, u"me@x.example"_s, {}}};
    EXPECT_EQ(calendarOwner({a, b, c}), (Mailbox{u"Me"_s, u"me@x.example"_s}));
    EXPECT_EQ(calendarOwner({}).email, u"ada@parlo.example"_s);
}

} // namespace
} // namespace mailhost
