// The client is missing, silent, late or wrong: the user is told, and nothing is lost.
#include "tests/scenarios/Scenario.h"

using namespace scenarios;

namespace {

class Failures : public OnHosts {
protected:
    QByteArray before = scenario.fileBytes();
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
};

INSTANTIATE_TEST_SUITE_P(Hosts, Failures, bothHosts);

} // namespace

TEST_P(Failures, TheUserIsToldWhyAMeetingCannotBeAddedAndNothingIsLost) {
    const struct {
        const char *words;
        void (*breaks)(Scenario &);
    } cases[] = {
        {"NoVelaClient", [](Scenario &desktop) { desktop.clientIsUninstalled(); }},
        {"NotSupportedVelaClientVersion", [](Scenario &desktop) { desktop.clientIsInstalled("3.6.40486"); }},
        {"VelaClientNotSignIn", [](Scenario &desktop) { desktop.client().setSignedIn(false); }},
        {"VelaClientNotRunning", [](Scenario &desktop) { desktop.clientQuits(); }},
        {"MeetingNotFound", [](Scenario &desktop) { desktop.given("once error schedule 0;Error 3001"); }},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.words);
        one.breaks(scenario);
        scenario.clickAdd(editor);
        if (Scenario::sheetIsUp())
            scenario.confirmSheet();
        EXPECT_EQ(Scenario::alertText(), Scenario::text(one.words));
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(editor->viewController()->isDirty());
        EXPECT_FALSE(Scenario::progressIsUp());
        // Once the cause has gone, the same add succeeds.
        scenario.clientIsInstalled();
        scenario.client().setSignedIn(true);
        scenario.clientRuns();
        scenario.addMeetingAndSave(editor);
        EXPECT_FALSE(scenario.meetingKey(Scenario::plain).isEmpty());
        scenario.clickRemove(editor);
        scenario.pressSave(editor);
        before = scenario.fileBytes();
    }
}

TEST_P(Failures, ASaveThatTheClientRefusesKeepsTheEditorOpenWithItsChanges) {
    scenario.addMeetingAndSave(editor);
    const QByteArray saved = scenario.fileBytes();
    scenario.given("once error update 0;Error 5003");
    scenario.typeSubject(editor, u"Changed"_s);
    scenario.pressSave(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("NetworkConnectionError"));
    scenario.dismissAlert();
    EXPECT_EQ(scenario.fileBytes(), saved);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Changed"_s);
}

TEST_P(Failures, TheHostMayQuitWhileARequestIsOut) {
    scenario.given("delay schedule 5000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.hostQuits();
    scenario.wait(60);
    EXPECT_EQ(scenario.fileBytes(), before);
}
