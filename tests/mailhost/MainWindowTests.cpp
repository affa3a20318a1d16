#include "tests/mailhost/HostFixture.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Addresses.h"
#include "standin/mailhost/model/CalendarDate.h"

#include <QDir>
#include <QToolButton>

namespace mailhost {
namespace {

class MainWindowTest : public HostFixture {
protected:
    MainWindow *main() const { return host->mainWindowController()->mainWindow(); }
    void trigger(const QString &action) const {
        auto *found = main()->findChild<QAction *>(action);
        ASSERT_NE(found, nullptr);
        found->trigger();
        QTest::qWait(1);
    }
    void confirm() const {
        auto *button = main()->findChild<QPushButton *>(controls::deleteConfirmButton);
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::qWait(1);
    }
    void select(const QString &uid) const { ASSERT_TRUE(main()->list()->select(uid)); }
};

TEST_F(MainWindowTest, TheWeekIsListedByDayAndCanBeLeft) {
    EXPECT_EQ(main()->list()->topLevelItemCount(), 7);
    EXPECT_TRUE(main()->list()->select(u"review@example.com"_qs));
    QTest::mouseClick(main()->findChild<QToolButton *>(controls::nextWeekButton), Qt::LeftButton);
    EXPECT_FALSE(main()->list()->select(u"review@example.com"_qs));
    QTest::mouseClick(main()->findChild<QToolButton *>(controls::todayButton), Qt::LeftButton);
    EXPECT_TRUE(main()->list()->select(u"review@example.com"_qs));
}

TEST_F(MainWindowTest, EnterOpensAndASecondTimeShowsTheSameEditor) {
    select(u"review@example.com"_qs);
    QTest::keyClick(main()->list(), Qt::Key_Return);
    ASSERT_EQ(EditorWindowController::open().size(), 1);
    QTest::keyClick(main()->list(), Qt::Key_Return);
    EXPECT_EQ(EditorWindowController::open().size(), 1);
}

TEST_F(MainWindowTest, DeleteAsksAndGoesThroughTheEvent) {
    select(u"review@example.com"_qs);
    trigger(controls::deleteAction);
    EXPECT_TRUE(fileText().contains("review@example.com"));
    confirm();
    EXPECT_FALSE(fileText().contains("review@example.com"));
    EXPECT_TRUE(fileText().contains("plan@example.com"));
}

TEST_F(MainWindowTest, CancellingTellsTheAttendeesAndDeletes) {
    select(u"plan@example.com"_qs);
    trigger(controls::cancelMeetingAction);
    confirm();
    EXPECT_FALSE(fileText().contains("plan@example.com"));
    ASSERT_EQ(messages().size(), 1);
    QFile message(folder.filePath(u"outbox/"_qs + messages().first()));
    ASSERT_TRUE(message.open(QIODevice::ReadOnly));
    EXPECT_TRUE(message.readAll().contains("CANCEL"));
}

TEST_F(MainWindowTest, ChangesInPlaceAreStored) {
    select(u"review@example.com"_qs);
    trigger(controls::laterAction);
    EXPECT_EQ(onDisk(u"review@example.com"_qs).start.value.toUTC().time(), QTime(9, 30));
    EXPECT_EQ(onDisk(u"review@example.com"_qs).end.value.toUTC().time(), QTime(10, 30));
    trigger(controls::longerAction);
    EXPECT_EQ(onDisk(u"review@example.com"_qs).start.value.toUTC().time(), QTime(9, 30));
    EXPECT_EQ(onDisk(u"review@example.com"_qs).end.value.toUTC().time(), QTime(11, 0));
    GridViewWrapper *grid = host->mainWindowController()->grid();
    rt::Object *event =
        rt::objectValue(rt::send(rt::objectValue(rt::send(grid, "gridViewController")), "selectedEvent"));
    EXPECT_TRUE(rt::boolValue(rt::send(grid, "subjectChanged:forEvent:andTileView:", u"Renamed"_qs,
                                       rt::fromObject(event), rt::Value())));
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Renamed"_qs);
}

TEST_F(MainWindowTest, OneDayOfASeriesIsNotChangedInPlaceButOpensItsSeries) {
    select(u"daily@example.com"_qs);
    const QByteArray before = fileText();
    trigger(controls::laterAction);
    EXPECT_EQ(fileText(), before);
    EXPECT_TRUE(main()->findChild<QMessageBox *>(controls::errorMessage));
    trigger(controls::openAction);
    ASSERT_EQ(EditorWindowController::open().size(), 1);
    controller = EditorWindowController::open().first();
    window = controller->editorWindow();
    editor = window->viewController();
    EXPECT_TRUE(editor->isOccurrenceOrException());
    EXPECT_TRUE(field(controls::subjectField)->isReadOnly());
    click(controls::openSeriesButton);
    EXPECT_FALSE(editor->isOccurrenceOrException());
    EXPECT_FALSE(field(controls::subjectField)->isReadOnly());
    EXPECT_FALSE(editor->isDirty());
}

TEST_F(MainWindowTest, AnUnreadableFileIsRefusedAndLeftAlone) {
    HostOptions options;
    options.calendarPath = folder.filePath(u"broken.ics"_qs);
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
    ASSERT_TRUE(broken.open(QIODevice::ReadOnly));
    EXPECT_EQ(broken.readAll(), QByteArray("not a calendar"));
}

TEST_F(MainWindowTest, EveryControlHasANameForThoseWhoDoNotSeeIt) {
    open(u"plan@example.com"_qs);
    for (const QWidget *top : {static_cast<QWidget *>(main()), static_cast<QWidget *>(window.data())}) {
        for (const QWidget *widget : top->findChildren<QWidget *>()) {
            const bool control =
                widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith(u"qt_");
            if (!control || !widget->isVisible() || widget->inherits("QMenuBar"))
                continue;
            EXPECT_FALSE(widget->accessibleName().isEmpty())
                << qPrintable(widget->objectName()) << ' ' << widget->metaObject()->className();
        }
    }
}

TEST(Addresses, AreReadAsPeopleWriteThem) {
    const QList<Attendee> before{{u"Bo Guest"_qs, u"bo@example.com"_qs, AttendeeType::Optional}};
    const QList<Attendee> parsed =
        parseAddresses(u"\"Guest, Bo\" <BO@example.com>; cy@example.org,nobody,, <d@e.f>"_qs, false, before);
    ASSERT_EQ(parsed.size(), 4);
    EXPECT_EQ(parsed[0], (Attendee{u"Guest, Bo"_qs, u"BO@example.com"_qs, AttendeeType::Optional}));
    EXPECT_EQ(parsed[1].email, u"cy@example.org"_qs);
    EXPECT_EQ(parsed[3].email, u"d@e.f"_qs);
    EXPECT_EQ(incompleteAddresses(parsed), QStringList{u"nobody"_qs});
    EXPECT_EQ(parseAddresses(addressText(parsed, false), false, parsed), parsed);
}

TEST(CalendarOwner, IsWhoTakesPartInMostMeetings) {
    Appointment a, b, c;
    a.organizerEmail = u"me@x.example"_qs;
    a.attendees = {{u"B"_qs, u"b@x.example"_qs, {}}};
    b.organizerEmail = u"b@x.example"_qs;
    b.attendees = {{u"Me"_qs, u"ME@x.example"_qs, {}}};
    c.organizerEmail = u"c@x.example"_qs;
    c.attendees = {{u"Me"_qs, u"me@x.example"_qs, {}}};
    EXPECT_EQ(calendarOwner({a, b, c}), (Mailbox{u"Me"_qs, u"me@x.example"_qs}))
        << qPrintable(calendarOwner({a, b, c}).email);
    EXPECT_EQ(calendarOwner({}).email, u"ada@parlo.example"_qs);
}

TEST(CalendarDates, KeepTheirZone) {
    HostApplication::defineClasses();
    CalendarDate date(QDateTime(QDate(2026, 3, 29), QTime(0, 30), Qt::UTC), QTimeZone("Europe/Berlin"));
    EXPECT_EQ(rt::textValue(
                  rt::send(&date, "descriptionWithCalendarFormat:timeZone:locale:", u"%Y-%m-%d %H:%M:%S"_qs,
                           QVariant::fromValue(date.timeZone()), rt::Value())),
              u"2026-03-29 01:30:00"_qs);
    auto *later =
        dynamic_cast<CalendarDate *>(rt::objectValue(rt::send(&date, "dateByAddingTimeInterval:", 3600.0)));
    ASSERT_NE(later, nullptr);
    EXPECT_EQ(later->hourOfDay(), 3); // the hour that the clocks skip
    EXPECT_EQ(later->weekday(), 1);
    rt::drainTemporaries();
}

} // namespace
} // namespace mailhost
