// What the plug-in keeps of a meeting, which changes matter, and for whom the meeting is scheduled.
#include "tests/workflow/WorkflowFixture.h"

#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/ScheduleOwner.h"
#include "plugin/workflow/vlOnbehalfData.h"

namespace {

class MeetingData : public WorkflowTest {};

QVariantMap at(const char *utc) {
    return {{vl_ApptInfo_CalDate_UTCTime, utc}};
}

// A usual meeting with some members changed. An invalid value removes the member.
QVariantMap meeting(const QVariantMap &changes) {
    QVariantMap appointment{{vl_ApptInfo_Subject, "Review"},
                            {vl_ApptInfo_StartTime, at("2026-11-24 09:00:00")},
                            {vl_ApptInfo_Duration, "60"},
                            {vl_ApptInfo_Recurrence, false}};
    QVariantMap setting{{vl_Setting_AudioOption, 2}};
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        QVariantMap &part = appointment.contains(change.key()) ? appointment : setting;
        if (change->isValid())
            part.insert(change.key(), *change);
        else
            part.remove(change.key());
    }
    return {{vl_Outlook_ApptInfo, appointment}, {vl_Setting, setting}};
}

} // namespace

TEST_F(MeetingData, AMeetingIsChangedByWhatTheClientKeepsOfIt) {
    struct Case {
        const char *what;
        QVariantMap now, before;
        bool changed;
    };
    const QString subject = vl_ApptInfo_Subject, start = vl_ApptInfo_StartTime;
    const QString recurs = vl_ApptInfo_Recurrence, video = vl_Setting_EnableHostVideo;
    const QString required = vl_Setting_RequiredMPW, password = vl_Setting_MeetingPassword;
    const QString audio = vl_Setting_AudioOption, thirdParty = vl_Setting_ThirdPartyAudio;
    const auto inWords = [&](const char *text) { return QVariantMap{{audio, 3}, {thirdParty, text}}; };
    QVariantMap elsewhere = at("2026-11-24 09:00:00");
    elsewhere.insert(vl_ApptInfo_CalDate_LocalTime, "2026-11-24 11:00:00");
    const Case cases[] = {
        {"nothing", {}, {}, false},
        {"trailing blank", {{subject, "Review "}}, {}, true},
        {"no subject on either side", {{subject, QVariant()}}, {{subject, QVariant()}}, true},
        {"another start", {{start, at("2026-11-24 09:00:01")}}, {}, true},
        {"the same start elsewhere", {{start, elsewhere}}, {}, false},
        {"a duration that is no text", {}, {{vl_ApptInfo_Duration, 60}}, true},
        {"recurrence", {{recurs, true}}, {}, true},
        {"recurrence in another kind", {{recurs, true}}, {{recurs, 1}}, false},
        {"host video", {{video, true}}, {{video, false}}, true},
        {"participants' video", {{vl_Setting_EnableParticipantsVideo, 1}}, {}, true},
        {"join before host", {{vl_Setting_EnableJBH, true}}, {}, true},
        {"personal meeting", {}, {{vl_Setting_IsPMI, 1}}, true},
        {"for whom", {{vl_Setting_ScheduleFor, "a@example.org"}}, {}, false},
        {"audio", {{audio, 1}}, {}, true},
        {"audio in another kind", {{audio, "2"}}, {}, false},
        {"third-party text elsewhere", {{thirdParty, "call"}}, {{thirdParty, "dial"}}, false},
        {"another third-party text", inWords("call"), inWords("dial"), true},
        {"the same third-party text", inWords("call"), inWords("call"), false},
        {"no third-party text", inWords(""), {{audio, 3}}, false},
        {"the same password", {{required, true}, {password, "123"}}, {{password, "123"}}, false},
        {"another password", {{required, true}, {password, "123"}}, {{password, "124"}}, true},
        {"a new password", {{required, true}, {password, "123"}}, {}, true},
        {"no password", {{required, true}}, {{password, ""}}, false},
        {"the same, not required", {{password, "123"}}, {{password, "123"}}, true},
        {"a new one, not required", {{password, "123"}}, {{password, ""}}, false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(store().isMeetingChanged(meeting(c.now), meeting(c.before)), c.changed) << c.what;
}

TEST_F(MeetingData, TheRecordEndsBeforeTheFirstMemberThatIsMissing) {
    QVariantMap info{{vl_MeetingKey, "k"}, {vl_ApptInfo_Body, "Join us"}, {vl_Meeting_JoinUrl, "u"}};
    const auto record = [&info] {
        return vlOLUtils::toArrayOrNSDictionary(store().getVlDataForOLProperty(info)).toMap();
    };
    const QString digest = "070c822f0992fa397c1e67bc890f8749"; // of "Join us"
    EXPECT_EQ(record(), (QVariantMap{{"meetingKey", "k"}, {"encodeMailBody", digest}, {"joinUrl", "u"}}));
    info.remove(vl_ApptInfo_Body);
    EXPECT_EQ(record(), (QVariantMap{{"meetingKey", "k"}}));
    info.insert(vl_API_Para_InviteHtmlEmail, "<b>Join</b>&nbsp; us");
    EXPECT_EQ(record().value("encodeMailBody"), digest);
    EXPECT_FALSE(
        store().getVlDataForOLProperty({}).isEmpty()); // an empty object, which does not mean "no meeting"
}

TEST_F(MeetingData, WhatIsMissingLeavesTheOldTextAndOnlyClearingEmptiesIt) {
    store().setMeetingKey("k");
    store().setEncodeMailBody("d");
    store().setScheduleForEmail("e");
    store().setPACAccountNo(PACAccount::Second);
    store().setSavedApptInfo({{vl_ApptInfo_VlOIProperty, "{\"joinUrl\":\"u\"}"}});
    store().setMeetingKey({});
    store().setEncodeMailBody({});
    store().setScheduleForEmail({});
    EXPECT_EQ(store().meetingKey() + store().encodeMailBody() + store().scheduleForEmail(), "kde");
    EXPECT_EQ(store().getOldJoinUrl(), "u");
    store().clearSavedMeetingData();
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(store().encodeMailBody() + store().scheduleForEmail(), "");
    EXPECT_TRUE(store().getOldJoinUrl().isNull());
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
    EXPECT_EQ(onbehalf.isOnbehalf(windowID()), edition);
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
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is for the boss";
    editor->values.insert("isDelegating", false);
    EXPECT_EQ(manager().checkScheduleOwnerMatched(editor.get()), !edition) << "the user sends it now";
    appointment->values.insert("olmUCCapabilities", "{\"meetingKey\":\"k\"}");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is stored already";
    EXPECT_FALSE(manager().needCheckOwnerMatched(editor.get()));
    appointment->values.insert("olmUCCapabilities", "{\"joinUrl\":\"u\"}");
    EXPECT_TRUE(manager().needCheckOwnerMatched(editor.get()));
    EXPECT_TRUE(manager().needCheckOwnerMatched(nullptr) && manager().checkScheduleOwnerMatched(nullptr));
    EXPECT_EQ(onbehalf.onbehalfEmail("no such window"), "");
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
