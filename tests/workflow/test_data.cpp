// What the plug-in keeps of a meeting, which changes matter, and for whom the meeting is scheduled.
#include "tests/workflow/WorkflowFixture.h"

#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/ScheduleOwner.h"
#include "plugin/workflow/vlOnbehalfData.h"

namespace {

class MeetingData : public WorkflowTest {};

} // namespace

TEST_F(MeetingData, AMeetingIsChangedByTheSettingsThatTheClientKeepsOfIt) {
    struct Case {
        const char *what;
        QVariantMap now, before;
        bool changed;
    };
    const QString required = vl_Setting_RequiredMPW, password = vl_Setting_MeetingPassword;
    const QString audio = vl_Setting_AudioOption, thirdParty = vl_Setting_ThirdPartyAudio;
    const auto inWords = [&](const char *text) { return QVariantMap{{audio, 3}, {thirdParty, text}}; };
    const Case cases[] = {
        {"nothing", {}, {}, false},
        {"host video", {{vl_Setting_EnableHostVideo, true}}, {{vl_Setting_EnableHostVideo, false}}, true},
        {"participants' video", {{vl_Setting_EnableParticipantsVideo, 1}}, {}, true},
        {"join before host", {{vl_Setting_EnableJBH, true}}, {}, true},
        {"personal meeting", {}, {{vl_Setting_IsPMI, 1}}, true},
        {"for whom", {{vl_Setting_ScheduleFor, "a@example.org"}}, {}, false},
        {"audio", {{audio, 1}}, {{audio, 2}}, true},
        {"third-party text elsewhere", {{thirdParty, "call"}}, {{thirdParty, "dial"}}, false},
        {"another third-party text", inWords("call"), inWords("dial"), true},
        {"no third-party text", inWords(""), {{audio, 3}}, false},
        {"the same password", {{required, true}, {password, "123"}}, {{password, "123"}}, false},
        {"another password", {{required, true}, {password, "123"}}, {{password, "124"}}, true},
        {"the same, not required", {{password, "123"}}, {{password, "123"}}, true},
        {"a new one, not required", {{password, "123"}}, {{password, ""}}, false},
    };
    const QVariantMap appointment{
        {vl_ApptInfo_Subject, "Review"},
        {vl_ApptInfo_StartTime, QVariantMap{{vl_ApptInfo_CalDate_UTCTime, "2026-11-24 09:00:00"}}},
        {vl_ApptInfo_Duration, "60"}};
    for (const Case &c : cases)
        EXPECT_EQ(store().isMeetingChanged({{vl_Outlook_ApptInfo, appointment}, {vl_Setting, c.now}},
                                           {{vl_Outlook_ApptInfo, appointment}, {vl_Setting, c.before}}),
                  c.changed)
            << c.what;
}

TEST_F(MeetingData, AMeetingGoesOutForThePersonForWhomItWasMade) {
    const std::tuple<const char *, ScheduleOwner, bool> cases[] = {
        {"for the user, by the user", {false, "", "me@x", false, ""}, true},
        {"for the user, now for a stranger", {true, "other@x", "other@x", false, ""}, true},
        {"for another person", {true, "second@x", "second@x", true, "boss@x"}, false},
        {"for a person, now for a stranger", {true, "other@x", "other@x", false, "boss@x"}, true},
        {"on behalf without an address", {true, "", "", false, ""}, false},
    };
    for (const auto &[what, owner, isMatched] : cases)
        EXPECT_EQ(isScheduleOwnerMatched(owner), isMatched) << what;
}

// The editor acts for the boss. Its meeting is not stored yet.
TEST_F(MeetingData, OnlyTheEditionForItSchedulesForOthers) {
    const bool edition = vlPluginBuildMgr::supportScheduleFor();
    givenAnAppointmentWithAMeeting();
    appointment->values.remove("olmUCCapabilities");
    FakeObject account("ECEmailAccount", {{"emailAddress", "Boss@example.org"}});
    editor->values.insert("isDelegating", true);
    editor->values.insert("currentEmailAccount", rt::fromObject(&account));
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_EQ(onbehalf.onbehalfEmail(windowID()), edition ? "Boss@example.org" : "");
    EXPECT_FALSE(onbehalf.isCurrentScheduleVelaForOther(windowID())) << "the boss has not allowed it yet";
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "without permission nothing is checked";
    givenTheProfileIsLoaded(
        {{"bosses", QVariantList{QVariantMap{{"displayName", "B"}, {"email", "boss@example.org"}}}}});
    EXPECT_EQ(onbehalf.isCurrentScheduleVelaForOther(windowID()), edition);
    FinishReceiver &link = manager();
    link.setScheduleForEmail("");
    EXPECT_EQ(manager().checkScheduleOwnerMatched(editor.get()), !edition) << "the meeting is for the user";
    link.setScheduleForEmail("BOSS@example.org");
    EXPECT_EQ(store().scheduleForEmail(), "BOSS@example.org");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is for the boss";
    editor->values.insert("isDelegating", false);
    EXPECT_EQ(manager().checkScheduleOwnerMatched(editor.get()), !edition) << "the user sends it now";
    appointment->values.insert("olmUCCapabilities", "{\"meetingKey\":\"k\"}");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is stored already";
    EXPECT_FALSE(manager().needCheckOwnerMatched(editor.get()));
}

TEST_F(MeetingData, PeopleAreFoundByAddressInAnyCaseAndTheFirstCounts) {
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@example.org"), "");
    const QVariantMap boss{{"displayName", "The boss"}, {"email", "Boss@example.org"}};
    const QVariantMap again{{"displayName", "Another"}, {"email", "boss@example.org"}};
    const QVariantMap nameless{{"email", "nameless@example.org"}};
    givenTheProfileIsLoaded({{"bosses", QVariantList{7, nameless, boss, again}}});
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@EXAMPLE.org"), "The boss");
    EXPECT_TRUE(onbehalf.hasSchedulePermission("boss@example.org"));
    for (const QString &email : {QString(), QString("nameless@example.org"), QString("boss@example")})
        EXPECT_FALSE(onbehalf.hasSchedulePermission(email)) << qPrintable(email);
}
