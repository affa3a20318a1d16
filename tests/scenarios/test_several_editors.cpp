// Several appointments are worked on at once: each keeps its own meeting.
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"

using namespace scenarios;

namespace {

class SeveralEditors : public OnHosts {
protected:
    mailhost::EditorWindow *first = scenario.open(Scenario::plain);
    mailhost::EditorWindow *second = scenario.open(Scenario::other);

    // Without waiting for the client.
    void addToBoth() {
        for (mailhost::EditorWindow *editor : {first, second}) {
            scenario.clickAdd(editor);
            scenario.confirmSheet();
        }
    }
    static QString locationOf(const mailhost::EditorWindow *window) {
        return window->findChild<QLineEdit *>(mailhost::controls::locationField)->text();
    }
    // The settings sheet of that editor, which is up.
    static QDialog *sheetOf(mailhost::EditorWindow *window) {
        return SchSettingWndCtrlMgr::sharedInstance()
            .getSchSettingWindowInArray(rt::identifier(window))
            ->settingWindow();
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, SeveralEditors, bothHosts);

} // namespace

TEST_P(SeveralEditors, TwoAddsThatAreAnsweredInTheOtherOrderKeepTheirMeetings) {
    scenario.given("once delay schedule 2000");
    addToBoth();
    scenario.wait(3);
    for (mailhost::EditorWindow *editor : {first, second}) {
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
        scenario.pressSave(editor);
    }
    for (const QString &uid : {Scenario::plain, Scenario::other})
        EXPECT_EQ(scenario.meeting(uid)["subject"].toString(), scenario.inFile(uid).summary);
    const QString key = scenario.meetingKey(Scenario::plain);
    scenario.clickRemove(second);
    EXPECT_EQ(Scenario::stripOf(first)->uiStatus(), StripState::MeetingAttached);
    EXPECT_TRUE(scenario.client().meeting(key));
}

TEST_P(SeveralEditors, AMeetingThatTheOtherEditorGetsFirstIsWrittenIntoItsOwn) {
    scenario.typeSubject(second, QString(200, u'x')); // the client shortens it
    scenario.given("once delay schedule 2000");
    addToBoth();
    EXPECT_EQ(Scenario::stripOf(first)->uiStatus(), StripState::NoMeeting) << "only the other's is made";
    EXPECT_EQ(Scenario::stripOf(second)->uiStatus(), StripState::MeetingAttached);
    EXPECT_EQ(locationOf(first), "Room 7");
}

TEST_P(SeveralEditors, TwoMeetingsThatAreMadeBeforeOneIsReadAreBothWritten) {
    scenario.given("once delay schedule 500");
    scenario.given("delay get 2000");
    addToBoth();
    scenario.wait(6);
    for (mailhost::EditorWindow *editor : {first, second})
        EXPECT_TRUE(locationOf(editor).contains(u"/j/"));
    EXPECT_NE(locationOf(first), u"Room 7 "_s + locationOf(second));
}

TEST_P(SeveralEditors, ASaveBeforeTwoMeetingsAreSortedOutChangesOnlyItsOwn) {
    scenario.given("once delay schedule 3000");
    scenario.given("once delay get 1000");
    addToBoth();
    scenario.typeSubject(first, u"Renamed"_s);
    scenario.pressSave(first); // it has got the meeting of the second
    scenario.wait(8);
    scenario.pressSave(second);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), u"Renamed"_s);
    EXPECT_EQ(scenario.meeting(Scenario::other)["subject"].toString(),
              scenario.inFile(Scenario::other).summary);
    EXPECT_LT(scenario.meetingKey(Scenario::plain),
              scenario.meetingKey(Scenario::other)); // in order of making
}

TEST_P(SeveralEditors, TheSheetOfOneDoesNotChangeTheSettingsOfTheOther) {
    scenario.clickAdd(first);
    scenario.clickAdd(second);
    sheetOf(first)->findChild<QCheckBox *>(u"enableJBHButton"_s)->click();
    for (mailhost::EditorWindow *editor : {first, second}) {
        sheetOf(editor)->findChild<QAbstractButton *>(u"buttonContinue"_s)->click();
        scenario.settle();
        scenario.pressSave(editor);
    }
    EXPECT_TRUE(scenario.meeting(Scenario::plain)["enableJBH"].toBool());
    EXPECT_FALSE(scenario.meeting(Scenario::other)["enableJBH"].toBool());
}
