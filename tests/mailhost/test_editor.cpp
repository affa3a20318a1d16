#include "tests/mailhost/HostFixture.h"

#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/windows/editor/RecurrenceSheet.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/Warnings.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDesktopServices>
#include <QSpinBox>
#include <QTimeEdit>

namespace mailhost {
namespace {

using EditorTest = HostFixture;

// The desktop's browser.
class Browser : public QObject {
    Q_OBJECT
public:
    Browser() { QDesktopServices::setUrlHandler(u"https"_s, this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(u"https"_s); }
    Q_INVOKABLE void open(const QUrl &url) { opened.append(url.toString()); }
    QStringList opened;
};

TEST_F(EditorTest, PendingChangesFollowTheFields) {
    open(u"plan@example.com"_s);
    EXPECT_TRUE(pending().isEmpty()) << qPrintable(pending().keys().join(u' '));
    type(controls::subjectField, u"Plans"_s);
    EXPECT_EQ(pending().value(u"content.summary"_s), QVariant(u"Plans"_s));
    type(controls::subjectField, QString());
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.summary"_s)));
    type(controls::subjectField, u"Planning"_s);
    EXPECT_TRUE(pending().isEmpty());
    type(controls::attendeesField, QString());
    EXPECT_EQ(rt::listValue(pending().value(u"content.attendeeList"_s)).size(), 1);
    type(controls::roomsField, QString());
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.attendeeList"_s)));
    QTest::keyClicks(find<QTextEdit>(controls::bodyEditor), u"x"_s);
    EXPECT_TRUE(rt::textValue(pending().value(u"content.body"_s)).contains(u"xAgenda"_s));
    QTest::keyClick(find<QTextEdit>(controls::bodyEditor), Qt::Key_Backspace);
    EXPECT_FALSE(pending().contains(u"content.body"_s));
}

TEST_F(EditorTest, TheEndMovesWithTheStartAndBothArePending) {
    open(u"plan@example.com"_s);
    find<QTimeEdit>(controls::startTimeField)
        ->setTime(find<QTimeEdit>(controls::startTimeField)->time().addSecs(3600));
    auto *start = dynamic_cast<CalendarDate *>(rt::objectValue(pending().value(u"content.startTime"_s)));
    auto *end = dynamic_cast<CalendarDate *>(rt::objectValue(pending().value(u"content.endTime"_s)));
    ASSERT_TRUE(start && end);
    EXPECT_EQ(start->dateUTC(), QDateTime(QDate(2026, 3, 11), QTime(14, 0), Qt::UTC));
    EXPECT_EQ(rt::doubleValue(rt::send(end, "timeIntervalSinceDate:", rt::fromObject(start))), 3600.0);
    saveByMenu();
    EXPECT_TRUE(fileText().contains("DTSTART:20260311T140000Z"));
}

TEST_F(EditorTest, AnotherZoneIsShownAtOnceAndKeepsTheClockTime) {
    open(u"review@example.com"_s);
    EXPECT_TRUE(find<QWidget>(controls::timeZoneRow)->isHidden());
    window->close();
    const ProcessZone desktop("America/New_York");
    open(u"review@example.com"_s);
    EXPECT_FALSE(find<QWidget>(controls::timeZoneRow)->isHidden());
    auto *zones = find<QComboBox>(controls::timeZoneChooser);
    zones->setCurrentIndex(zones->findText(u"Asia/Tokyo"_s));
    saveByMenu();
    const Appointment saved = onDisk(u"review@example.com"_s);
    EXPECT_EQ(saved.start.value.toUTC(), QDateTime(QDate(2026, 3, 10), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(saved.start.value.timeZone().id(), QByteArray("Asia/Tokyo"));
}

TEST_F(EditorTest, TheRecurrenceSheetSetsTheRuleAndKeepsWhatItDoesNotShow) {
    const auto choose = [this](int kind, int interval) {
        click(controls::repeatButton);
        find<QComboBox>(controls::recurrenceKind)->setCurrentIndex(kind);
        window->findChild<RecurrenceSheet *>()->findChild<QSpinBox *>()->setValue(interval);
        click(controls::recurrenceOk);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return editor->recurrenceRule();
    };
    open(u"plan@example.com"_s);
    EXPECT_EQ(choose(2, 1), u"FREQ=WEEKLY"_s);
    EXPECT_TRUE(rt::isPresent(pending().value(u"content.recurrence"_s)));
    saveByMenu();
    EXPECT_EQ(onDisk(u"plan@example.com"_s).recurrenceRule, u"FREQ=WEEKLY"_s);
    EXPECT_EQ(choose(0, 1), QString());
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.recurrence"_s)));
    open(u"daily@example.com"_s);
    EXPECT_EQ(choose(1, 1), u"FREQ=DAILY;COUNT=4;BYHOUR=7"_s) << "nothing is changed";
    EXPECT_EQ(choose(1, 2), u"FREQ=DAILY;COUNT=4;BYHOUR=7;INTERVAL=2"_s);
    EXPECT_EQ(choose(3, 2), u"FREQ=MONTHLY;INTERVAL=2;COUNT=4"_s);
}

TEST_F(EditorTest, ClosingADirtyEditorAsks) {
    open(u"review@example.com"_s);
    type(controls::subjectField, u"Changed"_s);
    EXPECT_FALSE(host->closeAll());
    click(controls::keepEditingButton);
    ASSERT_TRUE(isOpen());
    window->close();
    click(controls::saveChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_s).summary, u"Changed"_s);
    open(u"review@example.com"_s);
    type(controls::subjectField, u"Lost"_s);
    window->close();
    click(controls::discardChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_s).summary, u"Changed"_s);
}

TEST_F(EditorTest, SendingChecksFirst) {
    open(u"plan@example.com"_s);
    type(controls::attendeesField, u"somebody"_s);
    click(controls::sendButton);
    ASSERT_TRUE(window->findChild<QMessageBox *>(controls::errorMessage));
    EXPECT_TRUE(messages().isEmpty());
    window->findChild<QMessageBox *>(controls::errorMessage)->close();
    type(controls::attendeesField, u"Bo Guest <bo@example.com>"_s);
    type(controls::subjectField, QString());
    click(controls::sendButton);
    EXPECT_TRUE(messages().isEmpty());
    click(controls::sendAnywayButton);
    EXPECT_EQ(messages().size(), 1);
}

TEST_F(EditorTest, TheButtonsFitTheKindOfAppointment) {
    open(u"review@example.com"_s);
    EXPECT_FALSE(find<QPushButton>(controls::sendButton)->isVisible());
    type(controls::attendeesField, u"bo@example.com"_s);
    EXPECT_FALSE(find<QPushButton>(controls::saveAndCloseButton)->isVisible());
    open(u"foreign@example.com"_s);
    for (const QString &button : {controls::sendButton, controls::deleteButton})
        EXPECT_FALSE(find<QPushButton>(button)->isVisible());
    EXPECT_TRUE(find<QWidget>(controls::noticeBar)->isVisible());
    EXPECT_TRUE(field(controls::subjectField)->isReadOnly());
}

TEST_F(EditorTest, WhatIsTypedIntoANewAppointmentIsItsSubjectOnTheSelectedDay) {
    window = host->openNewAppointment()->editorWindow();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    for (const char key : std::string("two words"))
        QTest::keyClick(window->windowHandle(), key); // to wherever the focus is
    const Appointment entered = window->viewController()->content()->appointment();
    EXPECT_EQ(field(controls::subjectField)->text(), u"two words"_s);
    EXPECT_EQ(entered.start.value.date(), host->options().today);
}

TEST_F(EditorTest, JoinsByTheLinkThatTheLocationHasNow) {
    Browser browser;
    open(u"review@example.com"_s);
    QAction *join = window->findChild<QAction *>(controls::joinAction);
    ASSERT_NE(join, nullptr);
    EXPECT_FALSE(join->isEnabled());
    type(controls::locationField, u"Room 4; https://m.example/1?a=b&c=d"_s);
    EXPECT_TRUE(join->text().contains(u"https://m.example/1?a=b&&c=d"_s)) << qPrintable(join->text());
    QTest::keyClick(window, Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(browser.opened, QStringList{u"https://m.example/1?a=b&c=d"_s});
    saveByMenu();
    select(u"review@example.com"_s);
    trigger(controls::joinAction);
    EXPECT_EQ(browser.opened.size(), 2) << "the calendar offers it, too";
}

} // namespace
} // namespace mailhost

#include "test_editor.moc"
