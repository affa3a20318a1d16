// The client is missing or wrong, nothing can be stored, or another program has written the record: the user
// is told, and nothing is lost.
#include "tests/scenarios/Scenario.h"
#include "tests/support/DiskFaults.h"

using namespace scenarios;

namespace {

class Failures : public OnHosts {
protected:
    QByteArray before = scenario.fileBytes();
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
};

INSTANTIATE_TEST_SUITE_P(Hosts, Failures, bothHosts);

const QByteArray theirProperty = "X-THEIRS:written meanwhile\r\n";

enum class Cause { FullDisk, AnotherProgram };

// The calendar cannot be written: the disk is full, or another program has changed the file meanwhile.
class DiskFailures : public testing::TestWithParam<std::tuple<const char *, Cause>> {
protected:
    // The host says that it cannot store what the action stores, and the file stays as it is.
    template<typename Action>
    void expectNotStored(Action action) {
        QByteArray before = scenario.fileBytes();
        {
            std::optional<FullDisk> full;
            if (cause == Cause::AnotherProgram)
                scenario.writeFile(before.replace("X-UNKNOWN", theirProperty + "X-UNKNOWN"));
            else
                full.emplace();
            action();
        }
        EXPECT_TRUE(Scenario::alertText().contains(cause == Cause::AnotherProgram ? u"Another program"_s
                                                                                  : u"cannot be saved"_s))
            << qPrintable(Scenario::alertText());
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes().toStdString(), before.toStdString());
        EXPECT_TRUE(editor->isVisible());
        EXPECT_TRUE(editor->viewController()->isDirty());
    }

    Scenario scenario{QString::fromLatin1(std::get<0>(GetParam()))};
    const Cause cause = std::get<1>(GetParam());
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
};

INSTANTIATE_TEST_SUITE_P(Hosts, DiskFailures,
                         testing::Combine(bothHosts,
                                          testing::Values(Cause::FullDisk, Cause::AnotherProgram)));

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

TEST_P(Failures, TheHostMayQuitWhileARequestIsOut) {
    scenario.given("delay schedule 5000");
    scenario.clickAdd(editor);
    scenario.confirmSheet();
    scenario.hostQuits();
    scenario.wait(60);
    EXPECT_EQ(scenario.fileBytes(), before);
}

TEST_P(DiskFailures, WhatCannotBeStoredIsKeptInTheEditorAndStoredWithTheNextSave) {
    expectNotStored([this] { scenario.addMeetingAndSave(editor); });
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.pressSave(editor);
    mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(saved.location.startsWith(u"Room 7 https://"_s)) << qPrintable(saved.location);
    EXPECT_EQ(saved.bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.sent("1"), 1) << "it was scheduled once";

    scenario.typeSubject(editor, u"Changed"_s);
    expectNotStored([this] { scenario.pressSave(editor); });
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Changed"_s);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), u"Changed"_s);

    const QString key = scenario.meetingKey(Scenario::plain);
    expectNotStored([this] {
        scenario.clickRemove(editor);
        if (Scenario::alertText().isNull()) // the host may have tried to store it by then
            scenario.pressSave(editor);
    });
    EXPECT_FALSE(scenario.client().meeting(key));
    scenario.pressSave(editor);
    saved = scenario.inFile(Scenario::plain);
    EXPECT_TRUE(saved.ucCapabilities.isEmpty());
    EXPECT_TRUE(saved.location.isEmpty());
    EXPECT_FALSE(saved.bodyHtml.contains(u"MacVlBookmark"_s));
    EXPECT_TRUE(saved.bodyHtml.contains(u"Agenda <b>first</b>"_s));
    EXPECT_EQ(scenario.fileBytes().count(theirProperty), cause == Cause::AnotherProgram ? 3 : 0);
}

TEST(StoredRecords, ARecordThatThePluginDidNotWriteOpensWithoutAMeetingAndIsKeptToTheLetter) {
    Scenario scenario(u"16"_s);
    for (const QString &record :
         {u"{"_s, u"[]"_s, u"null"_s, u"{\"meetingKey\": 7}"_s, u"{\"meetingKey\": \"\"}"_s,
          QString(5000, u'['), u"{\"joinUrl\": {\"a\": [1, 2]}}"_s, u"\u2028;,\\n"_s, u"   "_s}) {
        SCOPED_TRACE(qPrintable(record.left(40)));
        mailhost::Appointment appointment = scenario.inFile(Scenario::other);
        appointment.ucCapabilities = record;
        ASSERT_TRUE(scenario.host().session()->store(appointment));
        mailhost::EditorWindow *editor = scenario.open(Scenario::other);
        EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
        scenario.typeSubject(editor, u"Again"_s);
        scenario.pressSave(editor);
        EXPECT_EQ(scenario.inFile(Scenario::other).ucCapabilities, record);
        scenario.close(editor);
    }
}
