#include "tests/mailhost/HostFixture.h"

#include "standin/mailhost/model/Addresses.h"

#include <QLabel>

namespace mailhost {
namespace {

class MainWindowTest : public HostFixture {
protected:
    MainWindow *main() const { return host->mainWindowController()->mainWindow(); }
    void trigger(const QString &action) const {
        QAction *found = main()->command(action);
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(found->isEnabled()) << qPrintable(action);
        found->trigger();
        QTest::qWait(1);
    }
    void confirm(const QString &name = controls::deleteConfirmButton) const {
        auto *button = main()->findChild<QPushButton *>(name);
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::qWait(1);
    }
    void select(const QString &uid, const QString &day = {}) const {
        ASSERT_TRUE(main()->calendar()->select(uid, day)) << qPrintable(uid);
    }
    [[nodiscard]] Appointment onDisk(const QString &uid, const QString &day = {}) const {
        QString error;
        const auto file = CalendarFile::open(path(), &error);
        return file ? file->find(uid, day).value_or(Appointment()) : Appointment();
    }
};

TEST_F(MainWindowTest, TheWeekCanBeLeftAndOneDayShown) {
    CalendarGrid *calendar = main()->calendar();
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 9));
    EXPECT_TRUE(calendar->select(u"review@example.com"_s));
    trigger(controls::nextAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 16));
    EXPECT_FALSE(calendar->select(u"review@example.com"_s));
    trigger(controls::todayAction);
    EXPECT_TRUE(calendar->select(u"plan@example.com"_s));
    trigger(controls::dayViewAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 11)) << "the day of what was selected";
    EXPECT_FALSE(calendar->select(u"review@example.com"_s));
    trigger(controls::previousAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 10));
    EXPECT_TRUE(calendar->select(u"review@example.com"_s));
    trigger(controls::weekViewAction);
    EXPECT_EQ(calendar->firstDay(), QDate(2026, 3, 9));
}

TEST_F(MainWindowTest, EnterOpensAndASecondTimeShowsTheSameEditor) {
    select(u"review@example.com"_s);
    main()->calendar()->setFocus();
    QTest::keyClick(main()->windowHandle(), Qt::Key_Return);
    ASSERT_EQ(EditorWindowController::open().size(), 1);
    main()->activateWindow();
    main()->calendar()->setFocus();
    QTest::keyClick(main()->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(EditorWindowController::open().size(), 1);
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

TEST_F(MainWindowTest, DeleteAsksAndGoesThroughTheEvent) {
    select(u"review@example.com"_s);
    trigger(controls::deleteAction);
    EXPECT_TRUE(fileText().contains("review@example.com"));
    confirm();
    EXPECT_FALSE(fileText().contains("review@example.com"));
    EXPECT_TRUE(fileText().contains("plan@example.com"));
    trigger(controls::undoAction);
    EXPECT_TRUE(fileText().contains("X-PLANNER-COLOUR;X-SHADE=dark:teal"));
    trigger(controls::redoAction);
    EXPECT_FALSE(fileText().contains("review@example.com"));
}

TEST_F(MainWindowTest, WhatAnotherProgramChangedSinceIsNotUndone) {
    select(u"review@example.com"_s);
    trigger(controls::laterAction);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray other = file.readAll().replace("Design review", "Theirs");
    file.resize(0);
    file.write(other);
    file.close();
    select(u"plan@example.com"_s);
    trigger(controls::laterAction); // is refused, and the file is read again
    delete main()->findChild<QMessageBox *>(controls::errorMessage);
    EXPECT_FALSE(main()->command(controls::undoAction)->isEnabled());
    EXPECT_TRUE(fileText().contains("Theirs"));
}

TEST_F(MainWindowTest, CommandsMoveStartAndEndByHalfHoursAndWholeDaysByDays) {
    struct Case {
        QString command;
        int start; // what it changes, in minutes
        int end;
    };
    const QList<Case> cases{
        {controls::laterAction, 30, 30},        {controls::earlierAction, -30, -30},
        {controls::longerAction, 0, 30},        {controls::shorterAction, 0, -30},
        {controls::startEarlierAction, -30, 0}, {controls::startLaterAction, 30, 0},
        {controls::dayLaterAction, 1440, 1440}, {controls::dayEarlierAction, -1440, -1440}};
    const QMap<QString, int> smallest{{u"review@example.com"_s, 1}, {u"trip@example.com"_s, 48}};
    for (auto it = smallest.cbegin(); it != smallest.cend(); ++it) {
        for (const Case &c : cases) {
            const Appointment before = onDisk(it.key());
            const int factor = std::abs(c.start + c.end) < 1440 ? it.value() : 1;
            select(it.key());
            trigger(c.command);
            const Appointment after = onDisk(it.key());
            EXPECT_EQ(before.start.value.secsTo(after.start.value), c.start * 60 * factor)
                << qPrintable(c.command);
            EXPECT_EQ(before.end.value.secsTo(after.end.value), c.end * 60 * factor) << qPrintable(c.command);
        }
    }
    select(u"review@example.com"_s);
    for (int i = 0; i < 4; ++i)
        trigger(controls::shorterAction);
    EXPECT_EQ(onDisk(u"review@example.com"_s).end.value.toUTC().time(), QTime(9, 30)) << "something is left";
}

TEST_F(MainWindowTest, AnEditorWithChangesKeepsTheProgramOpen) {
    open(u"review@example.com"_s);
    type(controls::subjectField, u"Unsaved"_s);
    EXPECT_FALSE(host->closeAll());
    EXPECT_NE(host->mainWindowController(), nullptr);
}

TEST_F(MainWindowTest, OneDayOfASeriesIsChangedAloneOrAsItsSeries) {
    const QString uid = u"daily@example.com"_s;
    const QString day = u"20260311T070000Z"_s;
    select(uid, day);
    trigger(controls::laterAction);
    EXPECT_EQ(onDisk(uid, day).start.value.toUTC().time(), QTime(7, 30));
    EXPECT_EQ(onDisk(uid).start.value.toUTC(), QDateTime({2026, 3, 9}, {7, 0}, Qt::UTC));
    EXPECT_EQ(main()->calendar()->selected()->instanceId, day) << "still selected where it went";
    const QString next = u"20260312T070000Z"_s;
    select(uid, next);
    trigger(controls::deleteAction);
    confirm();
    EXPECT_FALSE(main()->calendar()->select(uid, next));
    EXPECT_TRUE(main()->calendar()->select(uid, day));
    trigger(controls::deleteAction);
    confirm(controls::deleteSeriesButton);
    EXPECT_FALSE(fileText().contains(uid.toUtf8()));
    for (int i = 0; i < 3; ++i)
        trigger(controls::undoAction);
    EXPECT_FALSE(fileText().contains("RECURRENCE-ID"));
    EXPECT_FALSE(fileText().contains("EXDATE"));
    EXPECT_TRUE(main()->calendar()->select(uid, next));
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
    EXPECT_TRUE(editor->isOccurrenceOrException());
    type(controls::subjectField, u"Long stand-up"_s);
    click(controls::openSeriesButton);
    answer(controls::saveChangesButton);
    EXPECT_EQ(onDisk(uid, day).summary, u"Long stand-up"_s);
    EXPECT_EQ(onDisk(uid).summary, u"Stand-up"_s);
    EXPECT_FALSE(editor->isOccurrenceOrException());
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

TEST_F(MainWindowTest, AnUnreadableFileIsRefusedAndLeftAlone) {
    HostOptions options;
    options.calendarPath = folder.filePath(u"broken.ics"_s);
    QFile broken(options.calendarPath);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("not a calendar");
    broken.close();
    host.reset();
    host = std::make_unique<HostApplication>(options);
    host->start();
    QString error;
    EXPECT_FALSE(host->openCalendar(&error));
    EXPECT_FALSE(error.isEmpty());
    host->show();
    host->mainWindowController()->newAppointment();
    EXPECT_TRUE(EditorWindowController::open().isEmpty());
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
    EXPECT_EQ(calendarOwner({a, b, c}), (Mailbox{u"Me"_s, u"me@x.example"_s}))
        << qPrintable(calendarOwner({a, b, c}).email);
    EXPECT_EQ(calendarOwner({}).email, u"ada@parlo.example"_s);
}

} // namespace
} // namespace mailhost
