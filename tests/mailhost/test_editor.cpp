#include "tests/mailhost/HostFixture.h"

#include "standin/mailhost/model/CalendarDate.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/Warnings.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDesktopServices>
#include <QTimeEdit>

namespace mailhost {
namespace {

class EditorTest : public HostFixture {};

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
    EXPECT_FALSE(pending().contains(u"content.summary"_s));
    type(controls::locationField, u"Roof"_s);
    EXPECT_EQ(pending().value(u"content.location"_s), QVariant(u"Roof"_s));
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

TEST_F(EditorTest, AZoneThatIsNotTheDesktopsIsShownAtOnce) {
    const ProcessZone desktop("America/New_York");
    open(u"review@example.com"_s);
    EXPECT_FALSE(find<QWidget>(controls::timeZoneRow)->isHidden());
}

TEST_F(EditorTest, AnotherZoneKeepsTheClockTime) {
    open(u"review@example.com"_s);
    EXPECT_TRUE(find<QWidget>(controls::timeZoneRow)->isHidden());
    click(controls::timeZoneButton);
    EXPECT_FALSE(find<QWidget>(controls::timeZoneRow)->isHidden());
    auto *zones = find<QComboBox>(controls::timeZoneChooser);
    zones->setCurrentIndex(zones->findText(u"Asia/Tokyo"_s));
    saveByMenu();
    const Appointment saved = onDisk(u"review@example.com"_s);
    EXPECT_EQ(saved.start.value.toUTC(), QDateTime(QDate(2026, 3, 10), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(saved.start.value.timeZone().id(), QByteArray("Asia/Tokyo"));
}

TEST_F(EditorTest, TheRecurrenceSheetSetsTheRule) {
    open(u"review@example.com"_s);
    click(controls::repeatButton);
    find<QComboBox>(controls::recurrenceKind)->setCurrentIndex(2);
    answer(controls::recurrenceOk);
    EXPECT_TRUE(rt::isPresent(pending().value(u"content.recurrence"_s)));
    saveByMenu();
    EXPECT_EQ(onDisk(u"review@example.com"_s).recurrenceRule, u"FREQ=WEEKLY"_s);
    click(controls::repeatButton);
    find<QComboBox>(controls::recurrenceKind)->setCurrentIndex(0);
    answer(controls::recurrenceOk);
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.recurrence"_s)));
}

TEST_F(EditorTest, ClosingADirtyEditorAsks) {
    open(u"review@example.com"_s);
    type(controls::subjectField, u"Changed"_s);
    window->close();
    answer(controls::keepEditingButton);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_s).summary, u"Design review"_s);
    window->close();
    answer(controls::saveChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_s).summary, u"Changed"_s);
    open(u"review@example.com"_s);
    type(controls::subjectField, u"Lost"_s);
    window->close();
    answer(controls::discardChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_s).summary, u"Changed"_s);
}

TEST_F(EditorTest, ACleanEditorClosesAtOnceAndItsObjectsDie) {
    open(u"review@example.com"_s);
    const rt::Weak<> event(rt::objectValue(rt::send(static_cast<rt::Object *>(editor), "content")));
    const rt::Weak<EditorViewController> weak(editor);
    window->close();
    EXPECT_FALSE(isOpen());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(weak);
    EXPECT_FALSE(event);
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
    answer(controls::sendAnywayButton);
    EXPECT_EQ(messages().size(), 1);
}

TEST_F(EditorTest, TheButtonsFitTheKindOfAppointment) {
    open(u"review@example.com"_s);
    EXPECT_TRUE(find<QPushButton>(controls::saveAndCloseButton)->isVisible());
    EXPECT_FALSE(find<QPushButton>(controls::sendButton)->isVisible());
    type(controls::attendeesField, u"bo@example.com"_s);
    EXPECT_FALSE(find<QPushButton>(controls::saveAndCloseButton)->isVisible());
    EXPECT_TRUE(find<QPushButton>(controls::sendButton)->isVisible());
    open(u"foreign@example.com"_s);
    EXPECT_FALSE(find<QPushButton>(controls::sendButton)->isVisible());
    EXPECT_FALSE(find<QPushButton>(controls::deleteButton)->isVisible());
    EXPECT_TRUE(find<QWidget>(controls::noticeBar)->isVisible());
    EXPECT_TRUE(field(controls::subjectField)->isReadOnly());
}

TEST_F(EditorTest, NewMeetingsAreOpenedThroughTheMethodThatTakesAnEvent) {
    static int opened;
    opened = 0;
    rt::Class *cls = rt::classNamed(u"ERCalendarEventEditorWindowController"_s);
    rt::addMethod(
        cls->metaclass(), "test_showWindowForMeeting:",
        [](rt::Object *self, rt::Selector, rt::Args arguments) {
            ++opened;
            return rt::sendArgs(self, rt::Selector("test_showWindowForMeeting:"), arguments);
        },
        "@@:@");
    rt::Method *own = rt::classMethod(cls, rt::Selector("showWindowForMeeting:"));
    rt::Method *other = rt::classMethod(cls, rt::Selector("test_showWindowForMeeting:"));
    rt::exchangeImplementations(own, other);
    controller = host->openNewMeeting();
    rt::exchangeImplementations(own, other);
    EXPECT_EQ(opened, 1);
    ASSERT_NE(controller, nullptr);
}

TEST_F(EditorTest, WhatIsTypedIntoANewAppointmentIsItsSubjectOnTheSelectedDay) {
    EditorWindowController *controller = host->openNewAppointment();
    ASSERT_NE(controller, nullptr);
    EditorWindow *window = controller->editorWindow();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    for (const char key : std::string("two words"))
        QTest::keyClick(window->windowHandle(), key); // to wherever the focus is
    const Appointment entered = window->viewController()->content()->appointment();
    EXPECT_EQ(window->findChild<QLineEdit *>(controls::subjectField)->text(), u"two words"_s);
    EXPECT_EQ(entered.start.value.date(), host->options().today);
}

TEST_F(EditorTest, WhatIsSetOnTheContentShowsInTheFieldsAndIsSaved) {
    open(u"review@example.com"_s);
    rt::Object *event = rt::objectValue(rt::send(static_cast<rt::Object *>(editor), "content"));
    rt::send(event, "setLocation:", u"Online"_s);
    rt::send(static_cast<rt::Object *>(editor), "setOlmUCCapabilities:", u"{\"a\": \"ü, ;\\n\"}"_s);
    EXPECT_EQ(field(controls::locationField)->text(), u"Online"_s);
    EXPECT_TRUE(editor->isDirty());
    EXPECT_EQ(editor->olmUCCapabilities(), u"{\"a\": \"ü, ;\\n\"}"_s);
    EXPECT_TRUE(rt::textValue(rt::send(event, "olmUCCapabilities")).isNull()) << "before it is saved";
    EXPECT_TRUE(onDisk(u"review@example.com"_s).ucCapabilities.isNull());
    saveByMenu();
    EXPECT_FALSE(editor->isDirty());
    EXPECT_EQ(rt::textValue(rt::send(event, "olmUCCapabilities")), u"{\"a\": \"ü, ;\\n\"}"_s);
    EXPECT_EQ(onDisk(u"review@example.com"_s).location, u"Online"_s);
    EXPECT_EQ(onDisk(u"review@example.com"_s).ucCapabilities, u"{\"a\": \"ü, ;\\n\"}"_s);
}

struct Generation {
    const char *version;
    const char *headerClass;
};

class GenerationTest : public HostFixture, public testing::WithParamInterface<Generation> {};

TEST_P(GenerationTest, TheHeaderLeavesRoomAtTheBottomRightAndShowsItsZoneRow) {
    startHost(QString::fromLatin1(GetParam().version));
    open(u"plan@example.com"_s);
    auto *header = find<HeaderView>(controls::editorHeader);
    EXPECT_EQ(header->isa()->name(), QString::fromLatin1(GetParam().headerClass));
    for (const bool zone : {false, true}) {
        if (zone)
            click(controls::timeZoneButton);
        QTest::qWait(20);
        const QRect strip(460, header->height() - (zone ? 83 : 60), header->width() - 460, zone ? 70 : 60);
        for (QWidget *child : header->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            EXPECT_FALSE(child->isVisible() && child->geometry().intersects(strip)) << zone;
    }
}

INSTANTIATE_TEST_SUITE_P(Hosts, GenerationTest,
                         testing::Values(Generation{"14.1.4", "OLCalendarHeaderContainerView"},
                                         Generation{"15.8", "OLCalendarHeaderContainerView"},
                                         Generation{"15.9", "OLAutoLayoutAttachmentsAcceptingView"},
                                         Generation{"16", "OLAutoLayoutAttachmentsAcceptingView"}));

TEST_F(EditorTest, JoinsByTheLinkThatTheLocationHasNow) {
    Browser browser;
    open(u"review@example.com"_s);
    QAction *join = window->findChild<QAction *>(controls::joinAction);
    ASSERT_NE(join, nullptr);
    EXPECT_FALSE(join->isEnabled());
    for (const char *refused : {"http://m.example/1", "https://good.example@m.example/1", "Room https://"}) {
        type(controls::locationField, QString::fromLatin1(refused));
        EXPECT_FALSE(join->isEnabled()) << refused;
    }
    type(controls::locationField, u"Room 4; https://m.example/1?a=b&c=d"_s);
    EXPECT_TRUE(join->text().contains(u"https://m.example/1?a=b&&c=d"_s)) << qPrintable(join->text());
    QTest::keyClick(window, Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(browser.opened, QStringList{u"https://m.example/1?a=b&c=d"_s});
    saveByMenu();
    // The calendar offers it too.
    MainWindow *main = host->mainWindowController()->mainWindow();
    ASSERT_TRUE(main->calendar()->select(u"review@example.com"_s));
    main->command(controls::joinAction)->trigger();
    EXPECT_EQ(browser.opened.size(), 2);
    ASSERT_TRUE(main->calendar()->select(u"plan@example.com"_s));
    EXPECT_FALSE(main->command(controls::joinAction)->isEnabled());
}

} // namespace
} // namespace mailhost

#include "test_editor.moc"
