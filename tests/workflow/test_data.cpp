#include "tests/workflow/WorkflowFixture.h"

#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/util/vlOLUtils.h"

namespace {

class MeetingData : public WorkflowTest {};

// A dictionary of two levels with one member set; an invalid value takes it out.
QVariantMap with(QVariantMap meeting, const QString &part, const QString &member, const QVariant &value) {
    QVariantMap inner = meeting.value(part).toMap();
    if (value.isValid())
        inner.insert(member, value);
    else
        inner.remove(member);
    meeting.insert(part, inner);
    return meeting;
}

QVariantMap at(const char *utc) {
    return {{vl_ApptInfo_CalDate_UTCTime, utc}};
}

QVariantMap meeting() {
    return {{vl_Outlook_ApptInfo, QVariantMap{{vl_ApptInfo_Subject, "Review"},
                                              {vl_ApptInfo_StartTime, at("2026-11-24 09:00:00")},
                                              {vl_ApptInfo_Duration, "60"},
                                              {vl_ApptInfo_Recurrence, false}}},
            {vl_Setting, QVariantMap{{vl_Setting_AudioOption, 2}}}};
}

} // namespace

TEST_F(MeetingData, AMeetingIsChangedByWhatTheClientKeepsOfIt) {
    struct Case {
        const char *what;
        QString part, member;
        QVariant now, before;
        bool changed;
    };
    const QString appt = vl_Outlook_ApptInfo, setting = vl_Setting;
    QVariantMap elsewhere = at("2026-11-24 09:00:00");
    elsewhere.insert(vl_ApptInfo_CalDate_LocalTime, "2026-11-24 11:00:00");
    const Case cases[] = {
        {"nothing", appt, vl_ApptInfo_Location, "Room 1", "Room 2", false},
        {"trailing blank", appt, vl_ApptInfo_Subject, "Review ", "Review", true},
        {"no subject on either side", appt, vl_ApptInfo_Subject, {}, {}, true},
        {"another start", appt, vl_ApptInfo_StartTime, at("2026-11-24 09:00:01"), at("2026-11-24 09:00:00"),
         true},
        {"the same start elsewhere", appt, vl_ApptInfo_StartTime, elsewhere, at("2026-11-24 09:00:00"),
         false},
        {"a duration that is no text", appt, vl_ApptInfo_Duration, "60", 60, true},
        {"recurrence", appt, vl_ApptInfo_Recurrence, true, {}, true},
        {"recurrence in another kind", appt, vl_ApptInfo_Recurrence, true, 1, false},
        {"host video", setting, vl_Setting_EnableHostVideo, true, false, true},
        {"participants' video", setting, vl_Setting_EnableParticipantsVideo, 1, {}, true},
        {"join before host", setting, vl_Setting_EnableJBH, true, {}, true},
        {"personal meeting", setting, vl_Setting_IsPMI, {}, 1, true},
        {"audio", setting, vl_Setting_AudioOption, 1, 2, true},
        {"audio in another kind", setting, vl_Setting_AudioOption, "2", 2, false},
        {"for whom", setting, vl_Setting_ScheduleFor, "a@example.org", {}, false},
        {"third-party text elsewhere", setting, vl_Setting_ThirdPartyAudio, "call", "dial", false},
        {"attendees", appt, vl_ApptInfo_Attendees, QVariantList{1}, {}, false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(store().isMeetingChanged(with(meeting(), c.part, c.member, c.now),
                                           with(meeting(), c.part, c.member, c.before)),
                  c.changed)
            << c.what;
}

TEST_F(MeetingData, ThePasswordCountsAsItIsRequired) {
    struct Case {
        bool required;
        QVariant now, before;
        bool changed;
    };
    const Case cases[] = {
        {true, "123", "123", false}, {true, "123", "124", true}, {true, "", "123", true},
        {true, "123", {}, true},     {true, {}, "", false},      {false, "123", "123", true},
        {false, "", "123", true},    {false, "123", "", false},  {false, {}, {}, false}};
    for (const Case &c : cases) {
        QVariantMap now = with(meeting(), vl_Setting, vl_Setting_RequiredMPW, c.required);
        now = with(now, vl_Setting, vl_Setting_MeetingPassword, c.now);
        const QVariantMap before = with(meeting(), vl_Setting, vl_Setting_MeetingPassword, c.before);
        EXPECT_EQ(store().isMeetingChanged(now, before), c.changed)
            << c.required << qPrintable(c.now.toString()) << qPrintable(c.before.toString());
    }
}

TEST_F(MeetingData, TheThirdPartyTextCountsForThirdPartyAudioOnly) {
    const auto changed = [](int audio, const QVariant &now, const QVariant &before) {
        const QVariantMap both = with(meeting(), vl_Setting, vl_Setting_AudioOption, audio);
        return store().isMeetingChanged(with(both, vl_Setting, vl_Setting_ThirdPartyAudio, now),
                                        with(both, vl_Setting, vl_Setting_ThirdPartyAudio, before));
    };
    EXPECT_TRUE(changed(3, "call", "dial"));
    EXPECT_TRUE(changed(3, "call", {}));
    EXPECT_FALSE(changed(3, "call", "call"));
    EXPECT_FALSE(changed(3, "", {}));
    EXPECT_FALSE(changed(1, "call", "dial"));
}

TEST_F(MeetingData, TheRecordEndsBeforeTheFirstMemberThatIsMissing) {
    const QString digest = "070c822f0992fa397c1e67bc890f8749"; // of "Join us"
    const QVariantMap whole{{vl_MeetingKey, "k"}, {vl_ApptInfo_Body, "Join us"}, {vl_Meeting_JoinUrl, "u"}};
    const auto record = [](QVariantMap info, const QString &without) {
        info.remove(without);
        return vlOLUtils::toArrayOrNSDictionary(store().getVlDataForOLProperty(info)).toMap();
    };
    const QVariantMap all{{"meetingKey", "k"}, {"encodeMailBody", digest}, {"joinUrl", "u"}};
    EXPECT_EQ(record(whole, ""), all);
    EXPECT_EQ(record(whole, vl_Meeting_JoinUrl),
              (QVariantMap{{"meetingKey", "k"}, {"encodeMailBody", digest}}));
    EXPECT_EQ(record(whole, vl_ApptInfo_Body), (QVariantMap{{"meetingKey", "k"}}));
    EXPECT_EQ(record(whole, vl_MeetingKey), QVariantMap());
    EXPECT_FALSE(store().getVlDataForOLProperty({}).isEmpty()); // an object without members, not "no meeting"

    QVariantMap html = whole;
    html.insert(vl_API_Para_InviteHtmlEmail, "<b>Join</b>&nbsp; us");
    html.insert(vl_ApptInfo_Body, "not this one");
    EXPECT_EQ(record(html, "").value("encodeMailBody"), digest);
    html.insert(vl_API_Para_InviteHtmlEmail, "");
    html.insert(vl_ApptInfo_Body, "Join us");
    EXPECT_EQ(record(html, "").value("encodeMailBody"), digest);
}

TEST_F(MeetingData, WhereSettingsComeFrom) {
    givenAnAppointment();
    const auto hostVideo = [this] {
        return store().getVlSettingsData(windowID()).value(vl_Setting_EnableHostVideo);
    };
    EXPECT_EQ(store().getVlSettingsData(windowID()), (QVariantMap{{vl_Setting_ScheduleFor, ""}}));
    givenTheProfileIsLoaded();
    givenSavedSettings({{vl_Setting_EnableHostVideo, "saved"}, {vl_Setting_ScheduleFor, "gone@example.org"}});
    EXPECT_EQ(hostVideo(), "saved");
    EXPECT_EQ(store().getVlSettingsData(windowID()).value(vl_Setting_ScheduleFor), "");
    givenTheMeetingIsLoaded({{"enableHostVideo", "loaded"}});
    EXPECT_EQ(hostVideo(), "saved"); // it is not this appointment's
    store().setMeetingKey(key);
    EXPECT_EQ(hostVideo(), "loaded");
    sheets.settings.insert(windowID(), {{vl_Setting_EnableHostVideo, "sheet"}});
    EXPECT_EQ(hostVideo(), "sheet");
}

TEST_F(MeetingData, SavedSettingsThatWantThePersonalMeetingGiveWayToItOnceItIsLoaded) {
    givenTheProfileIsLoaded();
    givenSavedSettings({{vl_Setting_EnableHostVideo, "saved"}, {vl_Setting_IsPMI, true}});
    EXPECT_EQ(store().getVlSettingsData({}).value(vl_Setting_EnableHostVideo), "saved");
    givenTheMeetingIsLoaded({{"enableHostVideo", "loaded"}, {"usePMI", 0}});
    const QVariantMap settings = store().getVlSettingsData({});
    EXPECT_EQ(settings.value(vl_Setting_EnableHostVideo), "loaded");
    EXPECT_EQ(settings.value(vl_Setting_IsPMI), true);
}

TEST_F(MeetingData, WhatIsMissingLeavesTheOldTextAndOnlyClearingEmptiesIt) {
    store().setMeetingKey("k");
    store().setEncodeMailBody("d");
    store().setScheduleForEmail("e");
    store().setPACAccountNo(2);
    store().setSavedApptInfo({{vl_ApptInfo_VlOIProperty, "{\"joinUrl\":\"u\"}"}});
    store().setMeetingKey({});
    store().setEncodeMailBody({});
    store().setScheduleForEmail({});
    EXPECT_EQ(store().meetingKey() + store().encodeMailBody() + store().scheduleForEmail(), "kde");
    EXPECT_EQ(store().getOldJoinUrl(), "u");
    store().setSavedApptInfo({});
    EXPECT_TRUE(store().getSavedApptInfo().isEmpty());
    EXPECT_TRUE(store().getOldJoinUrl().isNull());
    store().setSavedApptInfo({{vl_ApptInfo_VlOIProperty, "{\"joinUrl\":"}});
    EXPECT_TRUE(store().getOldJoinUrl().isNull());
    store().clearSavedMeetingData();
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(store().encodeMailBody() + store().scheduleForEmail(), "");
    EXPECT_TRUE(store().getSavedApptInfo().isEmpty());
}
