// A meeting from the click that adds it to the one that removes it, in every generation of the host.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"

#include <QDir>
#include <QJsonObject>
#include <QTimeEdit>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

class MainScenario : public testing::TestWithParam<const char *> {
protected:
    Scenario scenario{QString::fromLatin1(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(Generations, MainScenario, testing::Values("14.1.4", "15.8", "15.9", "16"),
                         [](const auto &info) {
                             return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
                         });

} // namespace

TEST_P(MainScenario, AddedThroughTheSheetAndSavedTheAppointmentHasItsMeeting) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.addMeeting(editor);
    EXPECT_EQ(scenario.sent("1"), 1);
    EXPECT_TRUE(scenario.inFile(Scenario::plain).ucCapabilities.isEmpty())
        << "nothing is stored before the user saves";
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    const QJsonObject meeting = scenario.meeting(Scenario::plain);
    const QString url = meeting["joinUrl"].toString();
    EXPECT_EQ(saved.location, u"Room 7 "_s + url);
    EXPECT_TRUE(saved.bodyHtml.contains(u"<p>Agenda <b>first</b>.</p>"_s)) << qPrintable(saved.bodyHtml);
    EXPECT_TRUE(saved.bodyHtml.contains(url));
    EXPECT_EQ(saved.bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.sent("2"), 0) << "what was just scheduled needs no update";
    EXPECT_TRUE(scenario.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
    EXPECT_EQ(meeting["subject"].toString(), u"Quarterly review"_s);
    EXPECT_EQ(meeting["startTime"].toInteger(), saved.start.value.toSecsSinceEpoch());
}

TEST_P(MainScenario, OnlyAChangeThatMattersIsSentToTheClientAndOnce) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.addMeetingAndSave(editor);
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.sent("2"), 0);
    auto *time = editor->findChild<QTimeEdit *>(mailhost::controls::startTimeField);
    time->setTime(time->time().addSecs(3600));
    scenario.settle();
    for (int i = 0; i < 2; ++i)
        scenario.pressSave(editor);
    EXPECT_EQ(scenario.sent("2"), 1);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["startTime"].toInteger(),
              scenario.inFile(Scenario::plain).start.value.toSecsSinceEpoch());
}

TEST_P(MainScenario, ReopenedFromTheFileTheMeetingIsThereAndItsSettingsCanBeChanged) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.addMeetingAndSave(editor);
    scenario.close(editor);
    editor = scenario.open(Scenario::plain);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.clickSettings(editor);
    scenario.confirmSheet();
    scenario.typeSubject(editor, u"Half-yearly review"_s);
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), u"Half-yearly review"_s);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Half-yearly review"_s);
}

TEST_P(MainScenario, RemovedTheMeetingIsGoneFromClientAndFileAndTheTextStays) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.addMeetingAndSave(editor);
    const QString key = scenario.meetingKey(Scenario::plain);
    scenario.clickRemove(editor);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    EXPECT_FALSE(scenario.client().meeting(key));
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_TRUE(saved.location.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(u"MacVlBookmark"_s));
    EXPECT_TRUE(saved.bodyHtml.contains(u"<p>Agenda <b>first</b>.</p>"_s));
}

TEST_P(MainScenario, SentWithAttendeesTheMessageCarriesTheMeetingAndTheRooms) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::invited);
    scenario.addMeeting(editor);
    scenario.pressSend(editor);
    scenario.wait(1);
    const mailhost::Appointment sent = scenario.inFile(Scenario::invited);
    const QString url = scenario.meeting(Scenario::invited)["joinUrl"].toString();
    EXPECT_EQ(sent.location, url + u" Blue room; Red room"_s);
    EXPECT_EQ(sent.sequence, 1);
    const QDir outbox(QFileInfo(scenario.calendarPath()).path() + u"/outbox"_s);
    EXPECT_EQ(outbox.entryList({u"*.eml"_s}).size(), 1);
    EXPECT_TRUE(Scenario::openEditors().isEmpty()) << "a sent editor closes";
}

TEST_P(MainScenario, ACancelledSheetChangesNothing) {
    const QByteArray before = scenario.fileBytes();
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.clickAdd(editor);
    scenario.cancelSheet();
    EXPECT_EQ(scenario.sent("1"), 0);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    EXPECT_FALSE(editor->viewController()->isDirty());
    EXPECT_EQ(scenario.fileBytes(), before);
}

TEST_P(MainScenario, AnAppointmentWithoutAMeetingSavesAsWithoutThePlugin) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::other);
    scenario.forget();
    scenario.typeSubject(editor, u"Renamed"_s);
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::other).summary, u"Renamed"_s);
    EXPECT_TRUE(scenario.desktop().bus->posted().isEmpty());
}

TEST_P(MainScenario, ALongSubjectIsCutForTheClientAndNotForTheUser) {
    mailhost::EditorWindow *editor = scenario.host().openNewAppointment()->editorWindow();
    scenario.settle();
    const QString subject = QString(100, u'a') + QString(100, u'b');
    scenario.typeSubject(editor, subject);
    scenario.addMeetingAndSave(editor);
    const QString uid = editor->viewController()->content()->UUID();
    EXPECT_EQ(scenario.inFile(uid).summary, subject);
    EXPECT_EQ(scenario.meeting(uid)["subject"].toString(), subject.left(128));
}

TEST_P(MainScenario, ANewMeetingOpenedForItAddsTheMeetingByItself) {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    scenario.settle();
    ASSERT_EQ(Scenario::openEditors().size(), 1);
    scenario.confirmSheet();
    EXPECT_EQ(Scenario::stripOf(Scenario::openEditors().first()->editorWindow())->uiStatus(),
              StripState::MeetingAttached);
    EXPECT_TRUE(platform::services().mainThreadDictionary.isEmpty());
}

TEST_P(MainScenario, AnInstantMeetingAndTheLogFolderNeedNoEditor) {
    vlCommandItemMgr &commands = vlCommandItemMgr::sharedInstance();
    for (const auto &[video, type] : {std::pair{"1", "groupVideo"}, {"0", "groupShare"}}) {
        scenario.forget();
        commands.SendToolbarItemCommand(qint32(ToolbarCommand::StartInstantMeeting),
                                        {{keyStartWithVideo, QString::fromLatin1(video)}});
        ASSERT_EQ(scenario.desktop().bus->posted().size(), 1);
        const platform::TextMap sent = scenario.desktop().bus->posted().first().userInfo;
        EXPECT_EQ(sent.value(u"actionId"_s), u"2"_s);
        EXPECT_TRUE(sent.value(u"content"_s).contains(QString::fromLatin1(type)));
    }
    commands.SendToolbarItemCommand(qint32(ToolbarCommand::OpenLogFolder));
    EXPECT_EQ(scenario.desktop().workspace->opened,
              QStringList{scenario.desktop().workspace->documents + u"/ParloMeetingsOutlookPlugin"_s});
}
