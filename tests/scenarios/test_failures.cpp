// The client is missing, silent, late or wrong: the user is told, and nothing is lost.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/scenarios/Scenario.h"

#include <gtest/gtest.h>

using namespace scenarios;

namespace {

class Failures : public testing::TestWithParam<const char *> {
protected:
    // The alert says it; nothing has changed, and once the cause has gone the same add succeeds.
    void expectToldAndNothingLost(const QString &words, void (*mend)(Scenario &)) {
        EXPECT_EQ(Scenario::alertText(), words);
        EXPECT_EQ(scenario.sent("1"), 0);
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(editor->viewController()->isDirty());
        EXPECT_FALSE(Scenario::progressIsUp());
        mend(scenario);
        scenario.addMeetingAndSave(editor);
        EXPECT_FALSE(scenario.meetingKey(Scenario::plain).isEmpty());
    }
    Scenario scenario{QString::fromLatin1(GetParam())};
    QByteArray before = scenario.fileBytes();
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
};

INSTANTIATE_TEST_SUITE_P(Generations, Failures, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(Failures, AClientThatIsMissingIsNotAsked) {
    scenario.clientIsUninstalled();
    scenario.clickAdd(editor);
    expectToldAndNothingLost(Scenario::text("NoVelaClient"), [](Scenario &desktop) {
        desktop.clientIsInstalled();
        desktop.clientRuns();
    });
}

TEST_P(Failures, AClientThatIsTooOldIsNotAsked) {
    scenario.clientIsInstalled("3.6.40486");
    scenario.clickAdd(editor);
    expectToldAndNothingLost(Scenario::text("NotSupportedVelaClientVersion"),
                             [](Scenario &desktop) { desktop.clientIsInstalled("3.6.40487"); });
}

TEST_P(Failures, AUserWhoIsSignedOutIsToldBeforeAnythingIsScheduled) {
    scenario.client().setSignedIn(false);
    scenario.clickAdd(editor);
    expectToldAndNothingLost(Scenario::text("VelaClientNotSignIn"),
                             [](Scenario &desktop) { desktop.client().setSignedIn(true); });
}

TEST_P(Failures, AClientThatIsNotRunningIsOfferedToBeLaunched) {
    scenario.clientQuits();
    scenario.clickAdd(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("VelaClientNotRunning"));
    scenario.forget();
    scenario.answerAlert();
    const bool newer = QByteArray(GetParam()) == "16";
    EXPECT_EQ(scenario.desktop().workspace->started.size(), newer ? 0 : 1);
    ASSERT_EQ(scenario.desktop().bus->posted().size(), newer ? 1 : 0);
    if (newer) {
        EXPECT_EQ(scenario.desktop().bus->posted().first().userInfo, (platform::TextMap{{"actionId", "2"}}));
    }
    expectToldAndNothingLost(QString(), [](Scenario &desktop) { desktop.clientRuns(); });
}

TEST_P(Failures, AnErrorAnswerIsShownInItsWordsAndChangesNothing) {
    const struct {
        const char *rule;
        QString words;
    } cases[] = {
        {"once error schedule 0;Error 3001", Scenario::text("MeetingNotFound")},
        {"once corrupt schedule empty", Scenario::text("SystemError")},
        {"once error schedule 0;100% %d wrong <b>", "0;100% %d wrong <b>"},
        {"once error schedule ;nothing", ";nothing"},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.rule);
        scenario.given(one.rule);
        scenario.clickAdd(editor);
        scenario.confirmSheet();
        scenario.forget();
        expectToldAndNothingLost(one.words, [](Scenario &) {});
        scenario.clickRemove(editor);
        scenario.pressSave(editor);
        before = scenario.fileBytes();
    }
}

TEST_P(Failures, ASilentClientIsWaitedForThirtySecondsAndALateAnswerStillCounts) {
    scenario.given("delay schedule 45000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    EXPECT_FALSE(Scenario::progressIsUp());
    for (const double seconds : {0.5, 29.0}) {
        scenario.wait(seconds);
        EXPECT_TRUE(Scenario::progressIsUp());
    }
    scenario.wait(1);
    EXPECT_FALSE(Scenario::progressIsUp());
    EXPECT_TRUE(Scenario::alertText().isNull());
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.wait(20);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.pressSave(editor);
    EXPECT_FALSE(scenario.meetingKey(Scenario::plain).isEmpty());
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

TEST_P(Failures, AnAnswerForAnEditorThatHasClosedShowsAndWritesNothing) {
    for (const char *operation : {"profile", "schedule", "get"}) {
        SCOPED_TRACE(operation);
        scenario.given(u"delay %1 5000"_s.arg(QLatin1String(operation)));
        scenario.clickAdd(editor);
        if (Scenario::sheetIsUp())
            scenario.confirmSheet();
        scenario.close(editor);
        scenario.wait(10);
        EXPECT_TRUE(Scenario::alertText().isNull());
        EXPECT_FALSE(Scenario::sheetIsUp());
        EXPECT_EQ(scenario.fileBytes(), before);
        scenario.given("clear");
        editor = scenario.open(Scenario::plain);
    }
}

TEST_P(Failures, TheHostMayQuitWhileARequestIsOut) {
    scenario.given("delay schedule 5000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.hostQuits();
    scenario.wait(60);
    EXPECT_EQ(scenario.fileBytes(), before);
}

TEST_P(Failures, ARepeatedAnswerDoesNotWriteTheInvitationTwice) {
    scenario.given("repeat schedule 3");
    scenario.given("repeat get 2");
    scenario.addMeetingAndSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.inFile(Scenario::plain).location.count(u"https://"_s), 1);
}
