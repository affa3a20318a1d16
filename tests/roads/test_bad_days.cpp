#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/roads/Desk.h"
#include "tests/support/Warnings.h"

#include <QLineEdit>
#include <gtest/gtest.h>

using namespace roads;

namespace {

class BadDay : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override {
        before = desk.fileBytes();
        editor = desk.open(Desk::plain);
    }
    // After a failure: the alert (if any) is dismissed, nothing has changed, and the road can be walked as if
    // nothing had been.
    void nothingIsLostAndTheRoadIsOpen() {
        if (!Desk::alertText().isNull())
            desk.dismissAlert();
        EXPECT_EQ(desk.fileBytes(), before);
        EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(editor->viewController()->isDirty());
        EXPECT_FALSE(Desk::progressIsUp());
        desk.client().setSignedIn(true);
        desk.given("clear");
        desk.clientRuns();
        desk.addMeeting(editor);
        desk.pressSave(editor);
        EXPECT_FALSE(desk.meetingKey(Desk::plain).isEmpty());
    }
    Desk desk{QString::fromLatin1(GetParam())};
    mailhost::EditorWindow *editor = nullptr;
    QByteArray before;
};

INSTANTIATE_TEST_SUITE_P(Generations, BadDay, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(BadDay, WithoutAClientItIsSaidAndNothingIsSent) {
    desk.clientIsUninstalled();
    desk.clickAdd(editor);
    EXPECT_EQ(Desk::alertText(), Desk::text("NoVelaClient"));
    EXPECT_TRUE(desk.desktop().bus->posted().isEmpty() || desk.sent("1") == 0);
    desk.clientIsInstalled("3.6.40500");
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AClientThatIsTooOldIsNotAsked) {
    desk.clientIsInstalled("3.6.40486");
    desk.clickAdd(editor);
    EXPECT_EQ(Desk::alertText(), Desk::text("NotSupportedVelaClientVersion"));
    desk.clientIsInstalled("3.6.40487");
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AClientThatIsNotRunningIsOfferedToBeLaunched) {
    desk.clientQuits();
    desk.clickAdd(editor);
    EXPECT_EQ(Desk::alertText(), Desk::text("VelaClientNotRunning"));
    desk.forget();
    desk.answerAlert();
    const bool newer = QByteArray(GetParam()) == "16";
    EXPECT_EQ(desk.desktop().workspace->started.size(), newer ? 0 : 1);
    ASSERT_EQ(desk.desktop().bus->posted().size(), newer ? 1 : 0);
    if (newer) {
        EXPECT_EQ(desk.desktop().bus->posted().first().userInfo, (platform::TextMap{{"actionId", "2"}}));
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
        desk.given(one.rule);
        desk.clickAdd(editor);
        desk.confirmSheet();
        EXPECT_EQ(Desk::alertText(), one.key ? Desk::text(one.key) : QString::fromLatin1(one.words));
        EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        EXPECT_FALSE(Desk::progressIsUp());
        desk.dismissAlert();
    }
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, SignedOutTheProfileRequestSaysSo) {
    desk.signedOut();
    desk.clickAdd(editor);
    EXPECT_EQ(Desk::alertText(), Desk::text("VelaClientNotSignIn"));
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AfterThirtySilentSecondsTheProgressWindowClosesAndNothingIsSaid) {
    desk.given("drop schedule");
    desk.clickAdd(editor);
    desk.confirmSheet();
    EXPECT_FALSE(Desk::progressIsUp());
    desk.wait(0.5);
    EXPECT_TRUE(Desk::progressIsUp());
    desk.wait(29);
    EXPECT_TRUE(Desk::progressIsUp());
    desk.wait(1);
    EXPECT_FALSE(Desk::progressIsUp());
    EXPECT_TRUE(Desk::alertText().isNull());
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, AnAnswerAfterTheTimeOutStillAttachesTheMeeting) {
    desk.given("delay schedule 45000");
    desk.clickAdd(editor);
    desk.confirmSheet();
    desk.wait(31);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    desk.wait(20);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    desk.pressSave(editor);
    EXPECT_FALSE(desk.meetingKey(Desk::plain).isEmpty());
}

TEST_P(BadDay, AClientKilledInTheMiddleLeavesTheAppointmentAsItWas) {
    desk.given("drop schedule");
    desk.clickAdd(editor);
    desk.confirmSheet();
    desk.clientQuits();
    desk.wait(31);
    desk.clickAdd(editor);
    desk.confirmSheet();
    EXPECT_EQ(Desk::alertText(), Desk::text("VelaClientNotRunning"));
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, CorruptAnswersOfEveryKindChangeNothingThatWasStored) {
    for (const char *operation : {"profile", "schedule", "get"}) {
        for (const char *way : {"truncate", "flip", "nul", "empty", "json", "base64"}) {
            SCOPED_TRACE(std::string(operation) + " " + way);
            if (QByteArray(way) == "nul")
                expectWarning(QStringLiteral("NUL")); // the bus does not carry it
            desk.given(qPrintable(
                QStringLiteral("corrupt %1 %2").arg(QLatin1String(operation), QLatin1String(way))));
            desk.clickAdd(editor);
            if (Desk::sheetIsUp())
                desk.confirmSheet();
            desk.wait(31);
            while (!Desk::alertText().isNull())
                desk.dismissAlert();
            EXPECT_EQ(desk.fileBytes(), before);
            desk.given("clear");
            // However far it came, the editor can be closed and opened again.
            editor->closeNow();
            desk.wait(1);
            editor = desk.open(Desk::plain);
            ASSERT_NE(editor, nullptr);
        }
    }
    nothingIsLostAndTheRoadIsOpen();
}

TEST_P(BadDay, ASaveThatTheClientRefusesKeepsTheEditorOpenWithItsChanges) {
    desk.addMeeting(editor);
    desk.pressSave(editor);
    const QByteArray saved = desk.fileBytes();
    desk.given("error update 0;Error 5003");
    desk.typeSubject(editor, QStringLiteral("Changed"));
    desk.pressSave(editor);
    EXPECT_EQ(Desk::alertText(), Desk::text("NetworkConnectionError"));
    desk.dismissAlert();
    EXPECT_EQ(desk.fileBytes(), saved);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(editor->viewController()->isDirty());
    desk.given("clear");
    desk.pressSave(editor);
    EXPECT_EQ(desk.inFile(Desk::plain).summary, QStringLiteral("Changed"));
}

TEST_P(BadDay, AnEditorClosedWhileItsAnswerIsOnItsWayIsNotMissed) {
    for (const char *operation : {"profile", "schedule", "get"}) {
        SCOPED_TRACE(operation);
        desk.given(qPrintable(QStringLiteral("delay %1 5000").arg(QLatin1String(operation))));
        desk.clickAdd(editor);
        if (Desk::sheetIsUp())
            desk.confirmSheet();
        editor->closeNow();
        desk.wait(1);
        desk.wait(10);
        EXPECT_TRUE(Desk::alertText().isNull());
        EXPECT_FALSE(Desk::sheetIsUp());
        EXPECT_EQ(desk.fileBytes(), before);
        desk.given("clear");
        editor = desk.open(Desk::plain);
    }
}

TEST_P(BadDay, TheHostMayQuitWhileARequestIsOut) {
    desk.given("delay schedule 5000");
    desk.clickAdd(editor);
    desk.confirmSheet();
    desk.hostQuits();
    desk.wait(60);
    EXPECT_EQ(desk.fileBytes(), before);
}

TEST_P(BadDay, ARepeatedAnswerDoesNotWriteTheInvitationTwice) {
    desk.given("repeat schedule 3");
    desk.given("repeat get 2");
    desk.addMeeting(editor);
    desk.pressSave(editor);
    EXPECT_EQ(desk.inFile(Desk::plain).bodyHtml.count(QStringLiteral("MacVlBookmarkBegin")), 1);
    EXPECT_EQ(desk.inFile(Desk::plain).location.count(QStringLiteral("https://")), 1);
}
