#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/Warnings.h"

#include <QLineEdit>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

class BadDay : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override {
        before = scenario.fileBytes();
        editor = scenario.open(Scenario::plain);
    }
    // After a failure: the alert (if any) is dismissed, nothing has changed, and the road can be walked as if
    // nothing had been.
    void nothingIsLostAndTheRoadIsOpen() {
        if (!Scenario::alertText().isNull())
            scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(editor->viewController()->isDirty());
        EXPECT_FALSE(Scenario::progressIsUp());
        scenario.client().setSignedIn(true);
        scenario.given("clear");
        scenario.clientRuns();
        scenario.addMeeting(editor);
        scenario.pressSave(editor);
        EXPECT_FALSE(scenario.meetingKey(Scenario::plain).isEmpty());
    }
    Scenario scenario{QString::fromLatin1(GetParam())};
    mailhost::EditorWindow *editor = nullptr;
    QByteArray before;
};

INSTANTIATE_TEST_SUITE_P(Generations, BadDay, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(BadDay, WithoutAClientItIsSaidAndNothingIsSent) {
    scenario.clientIsUninstalled();
    scenario.clickAdd(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("NoVelaClient"));
    EXPECT_TRUE(scenario.desktop().bus->posted().isEmpty() || scenario.sent("1") == 0);
    scenario.clientIsInstalled("3.6.40500");
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AClientThatIsTooOldIsNotAsked) {
    scenario.clientIsInstalled("3.6.40486");
    scenario.clickAdd(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("NotSupportedVelaClientVersion"));
    scenario.clientIsInstalled("3.6.40487");
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AClientThatIsNotRunningIsOfferedToBeLaunched) {
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
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, EachErrorTextIsShownInItsWordsAndChangesNothing) {
    const struct {
        const char *rule;
        const char *key; // null: the client's own words
        const char *words;
    } cases[] = {
        {"once error schedule 0;Error 3001", "MeetingNotFound", nullptr},
        {"once error schedule 0;Error 3018", "MeetingNotFound", nullptr},
        {"once error schedule 0;Error 2", "NetworkConnectionError", nullptr},
        {"once error schedule 0;Error 5003", "NetworkConnectionError", nullptr},
        {"once error schedule 0;Error VelaClientNotSignIn", "VelaClientNotSignIn", nullptr},
        {"once corrupt schedule empty", "SystemError", nullptr},
        {"once error schedule 0;100% %d wrong <b>", nullptr, "0;100% %d wrong <b>"},
        {"once error schedule 0;Err", nullptr, "0;Err"},
        {"once error schedule ;nothing", nullptr, ";nothing"},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.rule);
        scenario.given(one.rule);
        scenario.clickAdd(editor);
        scenario.confirmSheet();
        EXPECT_EQ(Scenario::alertText(), one.key ? Scenario::text(one.key) : QString::fromLatin1(one.words));
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(Scenario::progressIsUp());
        scenario.dismissAlert();
    }
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, SignedOutTheProfileRequestSaysSo) {
    scenario.signedOut();
    scenario.clickAdd(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("VelaClientNotSignIn"));
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AfterThirtySilentSecondsTheProgressWindowClosesAndNothingIsSaid) {
    scenario.given("drop schedule");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    EXPECT_FALSE(Scenario::progressIsUp());
    scenario.wait(0.5);
    EXPECT_TRUE(Scenario::progressIsUp());
    scenario.wait(29);
    EXPECT_TRUE(Scenario::progressIsUp());
    scenario.wait(1);
    EXPECT_FALSE(Scenario::progressIsUp());
    EXPECT_TRUE(Scenario::alertText().isNull());
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AnAnswerAfterTheTimeOutStillAttachesTheMeeting) {
    scenario.given("delay schedule 45000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.wait(31);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.wait(20);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.pressSave(editor);
    EXPECT_FALSE(scenario.meetingKey(Scenario::plain).isEmpty());
}

TEST_P(BadDay, AClientKilledInTheMiddleLeavesTheAppointmentAsItWas) {
    scenario.given("drop schedule");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.clientQuits();
    scenario.wait(31);
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    EXPECT_EQ(Scenario::alertText(), Scenario::text("VelaClientNotRunning"));
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, CorruptAnswersOfEveryKindChangeNothingThatWasStored) {
    for (const char *operation : {"profile", "schedule", "get"}) {
        for (const char *way : {"truncate", "flip", "nul", "empty", "json", "base64"}) {
            SCOPED_TRACE(std::string(operation) + " " + way);
            if (QByteArray(way) == "nul")
                expectWarning(u"NUL"_s); // the bus does not carry it
            scenario.given(qPrintable(u"corrupt %1 %2"_s.arg(QLatin1String(operation), QLatin1String(way))));
            scenario.clickAdd(editor);
            if (Scenario::sheetIsUp())
                scenario.confirmSheet();
            scenario.wait(31);
            while (!Scenario::alertText().isNull())
                scenario.dismissAlert();
            EXPECT_EQ(scenario.fileBytes(), before);
            scenario.given("clear");
            // However far it came, the editor can be closed and opened again.
            editor->closeNow();
            scenario.wait(1);
            editor = scenario.open(Scenario::plain);
            ASSERT_NE(editor, nullptr);
        }
    }
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, ASaveThatTheClientRefusesKeepsTheEditorOpenWithItsChanges) {
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    const QByteArray saved = scenario.fileBytes();
    scenario.given("error update 0;Error 5003");
    scenario.typeSubject(editor, u"Changed"_s);
    scenario.pressSave(editor);
    EXPECT_EQ(Scenario::alertText(), Scenario::text("NetworkConnectionError"));
    scenario.dismissAlert();
    EXPECT_EQ(scenario.fileBytes(), saved);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    scenario.given("clear");
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Changed"_s);
}

TEST_P(BadDay, AnEditorClosedWhileItsAnswerIsOnItsWayIsNotMissed) {
    for (const char *operation : {"profile", "schedule", "get"}) {
        SCOPED_TRACE(operation);
        scenario.given(qPrintable(u"delay %1 5000"_s.arg(QLatin1String(operation))));
        scenario.clickAdd(editor);
        if (Scenario::sheetIsUp())
            scenario.confirmSheet();
        editor->closeNow();
        scenario.wait(1);
        scenario.wait(10);
        EXPECT_TRUE(Scenario::alertText().isNull());
        EXPECT_FALSE(Scenario::sheetIsUp());
        EXPECT_EQ(scenario.fileBytes(), before);
        scenario.given("clear");
        editor = scenario.open(Scenario::plain);
    }
}

TEST_P(BadDay, TheHostMayQuitWhileARequestIsOut) {
    scenario.given("delay schedule 5000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.hostQuits();
    scenario.wait(60);
    EXPECT_EQ(scenario.fileBytes(), before);
}

TEST_P(BadDay, ARepeatedAnswerDoesNotWriteTheInvitationTwice) {
    scenario.given("repeat schedule 3");
    scenario.given("repeat get 2");
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.inFile(Scenario::plain).location.count(u"https://"_s), 1);
}
