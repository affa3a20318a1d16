#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/roads/Desk.h"

#include <QDir>
#include <QJsonObject>
#include <QLineEdit>
#include <QTimeEdit>
#include <gtest/gtest.h>

using namespace roads;

namespace {

class MainRoad : public testing::TestWithParam<const char *> {
protected:
    Desk desk{QString::fromLatin1(GetParam())};
    QJsonObject meeting(const QString &uid) {
        const auto found = desk.client().meeting(desk.meetingKey(uid));
        EXPECT_TRUE(found) << "the client has no such meeting";
        return found ? *found : QJsonObject();
    }
};

INSTANTIATE_TEST_SUITE_P(Generations, MainRoad, testing::Values("14.1.4", "15.8", "15.9", "16"),
                         [](const auto &info) {
                             return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
                         });

} // namespace

TEST_P(MainRoad, AddedThroughTheSheetAndSavedTheAppointmentHasItsMeeting) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    desk.addMeeting(editor);
    EXPECT_EQ(desk.sent("1"), 1);
    EXPECT_TRUE(desk.inFile(Desk::plain).ucCapabilities.isEmpty())
        << "nothing is stored before the person saves";
    desk.pressSave(editor);
    const mailhost::Appointment saved = desk.inFile(Desk::plain);
    const QString url = meeting(Desk::plain)["joinUrl"].toString();
    EXPECT_EQ(saved.location, QStringLiteral("Room 7 ") + url);
    EXPECT_TRUE(saved.bodyHtml.contains(QStringLiteral("<p>Agenda <b>first</b>.</p>")))
        << qPrintable(saved.bodyHtml);
    EXPECT_TRUE(saved.bodyHtml.contains(url));
    EXPECT_EQ(saved.bodyHtml.count(QStringLiteral("MacVlBookmarkBegin")), 1);
    EXPECT_EQ(desk.sent("2"), 0) << "what was just scheduled needs no update";
    EXPECT_TRUE(desk.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
    EXPECT_EQ(meeting(Desk::plain)["subject"].toString(), QStringLiteral("Quarterly review"));
    EXPECT_EQ(meeting(Desk::plain)["startTime"].toInteger(), saved.start.value.toSecsSinceEpoch());
}

TEST_P(MainRoad, OnlyAChangeThatMattersIsSentToTheClientAndOnce) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    desk.forget();
    desk.pressSave(editor);
    EXPECT_EQ(desk.sent("2"), 0);
    auto *time = editor->findChild<QTimeEdit *>(mailhost::controls::startTimeField);
    time->setTime(time->time().addSecs(3600));
    desk.settle();
    desk.pressSave(editor);
    EXPECT_EQ(desk.sent("2"), 1);
    EXPECT_EQ(meeting(Desk::plain)["startTime"].toInteger(),
              desk.inFile(Desk::plain).start.value.toSecsSinceEpoch());
    desk.forget();
    desk.pressSave(editor);
    EXPECT_EQ(desk.sent("2"), 0);
}

TEST_P(MainRoad, ReopenedFromTheFileTheMeetingIsThereAndItsSettingsCanBeChanged) {
    {
        mailhost::EditorWindow *editor = desk.open(Desk::plain);
        desk.addMeeting(editor);
        desk.pressSave(editor);
        editor->closeNow();
        desk.settle();
        desk.wait(1);
    }
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    desk.forget();
    desk.clickSettings(editor);
    ASSERT_TRUE(Desk::sheetIsUp());
    desk.confirmSheet();
    desk.typeSubject(editor, QStringLiteral("Half-yearly review"));
    desk.pressSave(editor);
    EXPECT_EQ(meeting(Desk::plain)["subject"].toString(), QStringLiteral("Half-yearly review"));
    EXPECT_EQ(desk.inFile(Desk::plain).summary, QStringLiteral("Half-yearly review"));
}

TEST_P(MainRoad, RemovedTheMeetingIsGoneFromClientAndFileAndTheWordsStay) {
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    const QString key = desk.meetingKey(Desk::plain);
    desk.clickRemove(editor);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    EXPECT_FALSE(desk.client().meeting(key));
    desk.pressSave(editor);
    const mailhost::Appointment saved = desk.inFile(Desk::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_TRUE(saved.location.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(QStringLiteral("MacVlBookmark")));
    EXPECT_TRUE(saved.bodyHtml.contains(QStringLiteral("<p>Agenda <b>first</b>.</p>")));
}

TEST_P(MainRoad, SentWithAttendeesTheMessageCarriesTheMeetingAndTheRooms) {
    mailhost::EditorWindow *editor = desk.open(Desk::invited);
    desk.addMeeting(editor);
    desk.pressSend(editor);
    desk.wait(1);
    const mailhost::Appointment sent = desk.inFile(Desk::invited);
    const QString url = meeting(Desk::invited)["joinUrl"].toString();
    EXPECT_EQ(sent.location, url + QStringLiteral(" Blue room; Red room"));
    EXPECT_EQ(sent.sequence, 1);
    const QDir outbox(QFileInfo(desk.calendarPath()).path() + QStringLiteral("/outbox"));
    EXPECT_EQ(outbox.entryList({QStringLiteral("*.eml")}).size(), 1);
    EXPECT_TRUE(mailhost::EditorWindowController::open().isEmpty()) << "a sent editor closes";
}

TEST_P(MainRoad, ACancelledSheetChangesNothing) {
    const QByteArray before = desk.fileBytes();
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.clickAdd(editor);
    desk.cancelSheet();
    EXPECT_EQ(desk.sent("1"), 0);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    EXPECT_FALSE(editor->viewController()->isDirty());
    EXPECT_EQ(desk.fileBytes(), before);
}

TEST_P(MainRoad, TwoEditorsKeepTheirOwnStripsAndMeetings) {
    mailhost::EditorWindow *first = desk.open(Desk::plain);
    mailhost::EditorWindow *second = desk.open(Desk::other);
    desk.addMeeting(first);
    EXPECT_EQ(Desk::stripOf(second)->uiStatus(), StripState::NoMeeting);
    desk.pressSave(first);
    EXPECT_FALSE(desk.meetingKey(Desk::plain).isEmpty());
    EXPECT_TRUE(desk.inFile(Desk::other).ucCapabilities.isEmpty());
    EXPECT_NE(Desk::stripOf(first), Desk::stripOf(second));
}

TEST_P(MainRoad, AnAnswerForTheEditorBehindIsNotWrittenIntoTheBodyInFront) {
    mailhost::EditorWindow *behind = desk.open(Desk::plain);
    mailhost::EditorWindow *front = desk.open(Desk::other);
    desk.addMeeting(behind);
    front->activateWindow();
    front->viewController()->attachBodyEditor();
    desk.settle();
    desk.pressSave(behind);
    EXPECT_TRUE(desk.inFile(Desk::plain).bodyHtml.contains(QStringLiteral("MacVlBookmarkBegin")));
    EXPECT_FALSE(front->viewController()->uncommittedChanges().contains(QStringLiteral("content.body")));
    EXPECT_FALSE(front->viewController()->isDirty());
}

TEST_P(MainRoad, AnAppointmentWithoutAMeetingSavesAsWithoutThePlugin) {
    mailhost::EditorWindow *editor = desk.open(Desk::other);
    desk.forget();
    desk.typeSubject(editor, QStringLiteral("Renamed"));
    desk.pressSave(editor);
    EXPECT_EQ(desk.inFile(Desk::other).summary, QStringLiteral("Renamed"));
    EXPECT_TRUE(desk.desktop().bus->posted().isEmpty());
}

TEST_P(MainRoad, ALongSubjectIsCutForTheClientAndNotForThePerson) {
    mailhost::EditorWindow *editor = desk.host().openNewAppointment()->editorWindow();
    desk.settle();
    const QString subject = QString(100, u'a') + QString(100, u'b');
    desk.typeSubject(editor, subject);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    const QString uid = editor->viewController()->content()->UUID();
    EXPECT_EQ(desk.inFile(uid).summary, subject);
    EXPECT_EQ(meeting(uid)["subject"].toString(), subject.left(128));
}

TEST_P(MainRoad, ANewMeetingOpenedForItAddsTheMeetingByItself) {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    desk.settle();
    const auto open = mailhost::EditorWindowController::open();
    ASSERT_EQ(open.size(), 1);
    ASSERT_TRUE(Desk::sheetIsUp());
    desk.confirmSheet();
    EXPECT_EQ(Desk::stripOf(open.first()->editorWindow())->uiStatus(), StripState::MeetingAttached);
    EXPECT_TRUE(platform::services().mainThreadDictionary.isEmpty());
}

TEST_P(MainRoad, AnInstantMeetingAndTheLogFolderNeedNoEditor) {
    vlCommandItemMgr &commands = vlCommandItemMgr::sharedInstance();
    for (const auto &[video, type] : {std::pair{"1", "groupVideo"}, {"0", "groupShare"}}) {
        desk.forget();
        commands.SendToolbarItemCommand(qint32(ToolbarCommand::StartInstantMeeting),
                                        {{keyStartWithVideo, QString::fromLatin1(video)}});
        ASSERT_EQ(desk.desktop().bus->posted().size(), 1);
        const platform::TextMap sent = desk.desktop().bus->posted().first().userInfo;
        EXPECT_EQ(sent.value(QStringLiteral("actionId")), QStringLiteral("2"));
        EXPECT_TRUE(sent.value(QStringLiteral("content")).contains(QString::fromLatin1(type)));
    }
    commands.SendToolbarItemCommand(qint32(ToolbarCommand::OpenLogFolder));
    EXPECT_EQ(desk.desktop().workspace->opened, QStringList{desk.desktop().workspace->documents +
                                                            QStringLiteral("/ParloMeetingsOutlookPlugin")});
    desk.forget();
    EXPECT_EQ(commands.SendToolbarItemCommand(5), 0);
    EXPECT_TRUE(desk.desktop().bus->posted().isEmpty());
}
