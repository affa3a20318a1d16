#include "tests/mailhost/HostFixture.h"

#include "standin/mailhost/model/CalendarDate.h"
#include "tests/support/Warnings.h"

#include <QComboBox>
#include <QDateEdit>
#include <QTimeEdit>

namespace mailhost {
namespace {

class EditorTest : public HostFixture {};

TEST_F(EditorTest, AnEditIsSavedAndComesBackFromTheFile) {
    open(u"review@example.com"_qs);
    type(controls::subjectField, u"Design review 2"_qs);
    QTest::keyClicks(find<QTextEdit>(controls::bodyEditor), u"First. "_qs);
    saveByMenu();
    EXPECT_FALSE(editor->isDirty());
    const Appointment saved = onDisk(u"review@example.com"_qs);
    EXPECT_EQ(saved.summary, u"Design review 2"_qs);
    EXPECT_TRUE(saved.bodyHtml.contains(u"First. Bring the drawings."_qs)) << qPrintable(saved.bodyHtml);
    EXPECT_TRUE(fileText().contains("X-PLANNER-COLOUR;X-SHADE=dark:teal"));
    startHost(u"16"_qs);
    open(u"review@example.com"_qs);
    EXPECT_EQ(field(controls::subjectField)->text(), u"Design review 2"_qs);
    EXPECT_TRUE(pending().isEmpty()) << qPrintable(pending().keys().join(u' '));
}

TEST_F(EditorTest, PendingChangesFollowTheFields) {
    open(u"plan@example.com"_qs);
    EXPECT_TRUE(pending().isEmpty()) << qPrintable(pending().keys().join(u' '));
    type(controls::subjectField, u"Plans"_qs);
    EXPECT_EQ(pending().value(u"content.summary"_qs), QVariant(u"Plans"_qs));
    type(controls::subjectField, QString());
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.summary"_qs)));
    type(controls::subjectField, u"Planning"_qs);
    EXPECT_FALSE(pending().contains(u"content.summary"_qs));
    type(controls::locationField, u"Roof"_qs);
    EXPECT_EQ(pending().value(u"content.location"_qs), QVariant(u"Roof"_qs));
    type(controls::attendeesField, QString());
    EXPECT_EQ(rt::listValue(pending().value(u"content.attendeeList"_qs)).size(), 1);
    type(controls::roomsField, QString());
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.attendeeList"_qs)));
    QTest::keyClicks(find<QTextEdit>(controls::bodyEditor), u"x"_qs);
    EXPECT_TRUE(rt::textValue(pending().value(u"content.body"_qs)).contains(u"xAgenda"_qs));
    QTest::keyClick(find<QTextEdit>(controls::bodyEditor), Qt::Key_Backspace);
    EXPECT_FALSE(pending().contains(u"content.body"_qs));
}

TEST_F(EditorTest, TheEndMovesWithTheStartAndBothArePending) {
    open(u"plan@example.com"_qs);
    find<QTimeEdit>(controls::startTimeField)
        ->setTime(find<QTimeEdit>(controls::startTimeField)->time().addSecs(3600));
    auto *start = dynamic_cast<CalendarDate *>(rt::objectValue(pending().value(u"content.startTime"_qs)));
    auto *end = dynamic_cast<CalendarDate *>(rt::objectValue(pending().value(u"content.endTime"_qs)));
    ASSERT_TRUE(start && end);
    EXPECT_EQ(start->dateUTC(), QDateTime(QDate(2026, 3, 11), QTime(14, 0), Qt::UTC));
    EXPECT_EQ(rt::doubleValue(rt::send(end, "timeIntervalSinceDate:", rt::fromObject(start))), 3600.0);
    saveByMenu();
    EXPECT_TRUE(fileText().contains("DTSTART:20260311T140000Z"));
}

TEST_F(EditorTest, AnotherZoneKeepsTheClockTime) {
    open(u"review@example.com"_qs);
    EXPECT_TRUE(find<QWidget>(controls::timeZoneRow)->isHidden());
    click(controls::timeZoneButton);
    EXPECT_FALSE(find<QWidget>(controls::timeZoneRow)->isHidden());
    auto *zones = find<QComboBox>(controls::timeZoneChooser);
    zones->setCurrentIndex(zones->findText(u"Asia/Tokyo"_qs));
    saveByMenu();
    const Appointment saved = onDisk(u"review@example.com"_qs);
    EXPECT_EQ(saved.start.value.toUTC(), QDateTime(QDate(2026, 3, 10), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(saved.start.value.timeZone().id(), QByteArray("Asia/Tokyo"));
}

TEST_F(EditorTest, TheRecurrenceSheetSetsTheRule) {
    open(u"review@example.com"_qs);
    click(controls::repeatButton);
    find<QComboBox>(controls::recurrenceKind)->setCurrentIndex(2);
    answer(controls::recurrenceOk);
    EXPECT_TRUE(rt::isPresent(pending().value(u"content.recurrence"_qs)));
    saveByMenu();
    EXPECT_EQ(onDisk(u"review@example.com"_qs).recurrenceRule, u"FREQ=WEEKLY"_qs);
    click(controls::repeatButton);
    find<QComboBox>(controls::recurrenceKind)->setCurrentIndex(0);
    answer(controls::recurrenceOk);
    EXPECT_TRUE(rt::isNullMarker(pending().value(u"content.recurrence"_qs)));
}

TEST_F(EditorTest, ClosingADirtyEditorAsks) {
    open(u"review@example.com"_qs);
    type(controls::subjectField, u"Changed"_qs);
    window->close();
    answer(controls::keepEditingButton);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Design review"_qs);
    window->close();
    answer(controls::saveChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Changed"_qs);
    open(u"review@example.com"_qs);
    type(controls::subjectField, u"Lost"_qs);
    window->close();
    answer(controls::discardChangesButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Changed"_qs);
}

TEST_F(EditorTest, ACleanEditorClosesAtOnceAndItsObjectsDie) {
    open(u"review@example.com"_qs);
    const rt::Weak<> event(rt::objectValue(rt::send(static_cast<rt::Object *>(editor), "content")));
    const rt::Weak<EditorViewController> weak(editor);
    window->close();
    EXPECT_FALSE(isOpen());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(weak);
    EXPECT_FALSE(event);
}

TEST_F(EditorTest, SendingWritesAMessageAndRaisesTheSequence) {
    open(u"plan@example.com"_qs);
    click(controls::sendButton);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(onDisk(u"plan@example.com"_qs).sequence, 4);
}

TEST_F(EditorTest, SendingChecksFirst) {
    open(u"plan@example.com"_qs);
    type(controls::attendeesField, u"somebody"_qs);
    click(controls::sendButton);
    ASSERT_TRUE(window->findChild<QMessageBox *>(controls::errorMessage));
    EXPECT_TRUE(messages().isEmpty());
    window->findChild<QMessageBox *>(controls::errorMessage)->close();
    type(controls::attendeesField, u"Bo Guest <bo@example.com>"_qs);
    type(controls::subjectField, QString());
    click(controls::sendButton);
    EXPECT_TRUE(messages().isEmpty());
    answer(controls::sendAnywayButton);
    EXPECT_EQ(messages().size(), 1);
}

TEST_F(EditorTest, TheButtonsFitTheKindOfAppointment) {
    open(u"review@example.com"_qs);
    EXPECT_TRUE(find<QPushButton>(controls::saveAndCloseButton)->isVisible());
    EXPECT_FALSE(find<QPushButton>(controls::sendButton)->isVisible());
    type(controls::attendeesField, u"bo@example.com"_qs);
    EXPECT_FALSE(find<QPushButton>(controls::saveAndCloseButton)->isVisible());
    EXPECT_TRUE(find<QPushButton>(controls::sendButton)->isVisible());
    open(u"foreign@example.com"_qs);
    EXPECT_FALSE(find<QPushButton>(controls::sendButton)->isVisible());
    EXPECT_FALSE(find<QPushButton>(controls::deleteButton)->isVisible());
    EXPECT_TRUE(find<QWidget>(controls::noticeBar)->isVisible());
    EXPECT_TRUE(field(controls::subjectField)->isReadOnly());
}

TEST_F(EditorTest, AnErrorWhileSavingIsShownAndTheChangesStayPending) {
    open(u"review@example.com"_qs);
    type(controls::subjectField, u"Mine"_qs);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\r\n");
    file.close();
    saveByMenu();
    ASSERT_TRUE(window->findChild<QMessageBox *>(controls::errorMessage));
    EXPECT_EQ(pending().value(u"content.summary"_qs), QVariant(u"Mine"_qs));
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Design review"_qs);
    saveByMenu();
    EXPECT_EQ(onDisk(u"review@example.com"_qs).summary, u"Mine"_qs);
}

TEST_F(EditorTest, NewMeetingsAreOpenedThroughTheMethodThatTakesAnEvent) {
    static int opened;
    opened = 0;
    rt::Class *cls = rt::classNamed(u"ERCalendarEventEditorWindowController"_qs);
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
    window = controller->editorWindow();
    editor = window->viewController();
    type(controls::subjectField, u"Fresh"_qs);
    type(controls::attendeesField, u"Bo <bo@example.com>"_qs);
    click(controls::sendButton);
    const QList<Appointment> all = host->session()->file().appointments();
    const auto fresh = std::ranges::find(all, u"Fresh"_qs, &Appointment::summary);
    ASSERT_NE(fresh, all.end());
    EXPECT_EQ(fresh->organizerEmail, u"ada@parlo.example"_qs);
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
    EXPECT_EQ(window->findChild<QLineEdit *>(controls::subjectField)->text(), QStringLiteral("two words"));
    EXPECT_EQ(entered.start.value.date(), host->options().today);
}

TEST_F(EditorTest, WhatIsSetOnTheContentShowsInTheFieldsAndIsSaved) {
    open(u"review@example.com"_qs);
    rt::Object *event = rt::objectValue(rt::send(static_cast<rt::Object *>(editor), "content"));
    rt::send(event, "setLocation:", u"Online"_qs);
    rt::send(static_cast<rt::Object *>(editor), "setOlmUCCapabilities:", u"{\"a\": \"ü, ;\\n\"}"_qs);
    EXPECT_EQ(field(controls::locationField)->text(), u"Online"_qs);
    EXPECT_TRUE(editor->isDirty());
    EXPECT_EQ(editor->olmUCCapabilities(), u"{\"a\": \"ü, ;\\n\"}"_qs);
    EXPECT_TRUE(rt::textValue(rt::send(event, "olmUCCapabilities")).isNull()) << "before it is saved";
    EXPECT_TRUE(onDisk(u"review@example.com"_qs).ucCapabilities.isNull());
    saveByMenu();
    EXPECT_FALSE(editor->isDirty());
    EXPECT_EQ(rt::textValue(rt::send(event, "olmUCCapabilities")), u"{\"a\": \"ü, ;\\n\"}"_qs);
    EXPECT_EQ(onDisk(u"review@example.com"_qs).location, u"Online"_qs);
    EXPECT_EQ(onDisk(u"review@example.com"_qs).ucCapabilities, u"{\"a\": \"ü, ;\\n\"}"_qs);
}

struct Generation {
    const char *version;
    const char *headerClass;
};

class GenerationTest : public HostFixture, public testing::WithParamInterface<Generation> {};

TEST_P(GenerationTest, TheHeaderLeavesRoomAtTheBottomRightAndShowsItsZoneRow) {
    startHost(QString::fromLatin1(GetParam().version));
    open(u"plan@example.com"_qs);
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

TEST_P(GenerationTest, TheBodyIsReachedTheWayTheGenerationHasIt) {
    startHost(QString::fromLatin1(GetParam().version), BookmarkMangling::QuotesStripped);
    open(u"plan@example.com"_qs);
    const QString html =
        u"<html><body><p>New</p><a name=\"MarkBegin\"></a>x<a name=\"MarkEnd\"></a></body></html>"_qs;
    QWidget *compose = nullptr;
    for (QWidget *child : window->findChildren<QWidget *>())
        if (auto *object = dynamic_cast<rt::Object *>(child);
            object && object->isa()->name() == u"ComposeView")
            compose = child;
    if (isNewerGeneration(QString::fromLatin1(GetParam().version))) {
        EXPECT_EQ(compose, nullptr);
        auto *body = window->findChild<BodyEdit *>();
        WordMailEditor fresh(BodyReference(body, body));
        rt::send(&fresh, "displayHTMLContent:readOnly:signatureEditor:activateEditor:", html, false, true,
                 true);
        rt::Object *content = rt::objectValue(rt::send(&fresh, "editorContent"));
        EXPECT_TRUE(rt::textValue(rt::send(content, "bodyContent")).contains(u"<a name=MarkBegin></a>"_qs));
    } else {
        ASSERT_NE(compose, nullptr);
        rt::Object *frame = rt::objectValue(rt::send(dynamic_cast<rt::Object *>(compose), "mainFrame"));
        rt::Object *document = rt::objectValue(rt::send(frame, "DOMDocument"));
        rt::Object *root = rt::objectValue(rt::send(document, "documentElement"));
        EXPECT_TRUE(rt::textValue(rt::send(root, "outerHTML")).contains(u"<p>Agenda</p>"_qs));
        const QVariantList bodies = rt::listValue(rt::send(document, "getElementsByTagName:", u"body"_qs));
        ASSERT_EQ(bodies.size(), 1);
        rt::send(rt::objectValue(bodies[0]), "setInnerHTML:", html);
    }
    EXPECT_TRUE(rt::textValue(pending().value(u"content.body"_qs)).contains(u"<a name=MarkBegin></a>"_qs));
    QTextCursor cursor = find<QTextEdit>(controls::bodyEditor)->textCursor();
    cursor.movePosition(QTextCursor::Start);
    cursor.insertText(u"Typed "_qs);
    EXPECT_TRUE(rt::textValue(pending().value(u"content.body"_qs))
                    .contains(u"<p>Typed New</p><a name=MarkBegin></a>x<a name=MarkEnd></a>"_qs));
}

INSTANTIATE_TEST_SUITE_P(Hosts, GenerationTest,
                         testing::Values(Generation{"14.1.4", "OLCalendarHeaderContainerView"},
                                         Generation{"15.8", "OLCalendarHeaderContainerView"},
                                         Generation{"15.9", "OLAutoLayoutAttachmentsAcceptingView"},
                                         Generation{"16", "OLAutoLayoutAttachmentsAcceptingView"}));

} // namespace
} // namespace mailhost
