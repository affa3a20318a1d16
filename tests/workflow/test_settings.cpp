#include "tests/workflow/WorkflowFixture.h"

#include "plugin/workflow/vlSettingData.h"

#include <QRegularExpression>
#include <QSet>

namespace {

class Settings : public WorkflowTest {
protected:
    vlSettingData settings;
};

} // namespace

TEST_F(Settings, LiveInTheUsersDefaultsAndAreWrittenAtOnce) {
    EXPECT_EQ(settings.audioType(), 0);
    EXPECT_FALSE(settings.meetingPassword().isNull());
    settings.setUsePMI(true);
    EXPECT_TRUE(vlSettingData().usePMI()); // in another sheet
    settings.setRoomMeetingId("123");
    settings.setRoomMeetingId({});
    EXPECT_FALSE(desktop.userDefaults->values.contains("roomMeetingId"));
    EXPECT_EQ(desktop.userDefaults->synchronizations, 3);
    settings.initSettingData();
    EXPECT_EQ(desktop.userDefaults->synchronizations, 4) << "the initial settings are written at once";
}

TEST_F(Settings, TheProfileAndTheSiteComeBeforeTheFixedOnes) {
    settings.setHostvideoOn(true);
    settings.setRequiredMeetingPassword(true);
    settings.setMeetingPassword("left over");
    settings.setScheduleForEmail("a@example.org");
    settings.initSettingData(); // without a user
    EXPECT_EQ(settings.meetingPassword(), "");
    const QVariantMap data = settings.getSettingsData();
    EXPECT_EQ(data.size(), 10); // without the password
    EXPECT_EQ(data.value("enableHostVideo"), false);
    EXPECT_EQ(data.value("audioOption"), 2);
    EXPECT_EQ(data.value("scheduleFor"), "");

    QVariantMap profile{{"enableThirdPartyAudio", true},
                        {"thirdPartyAudio", "Call 1"},
                        {"use3rdPartyAsDefaultAudio", true},
                        {"useRandomPasswordByDefault", true},
                        {"userOption", -1}};
    givenTheProfileIsLoaded(profile);
    settings.initSettingData();
    EXPECT_EQ(settings.audioType(), 3);
    EXPECT_EQ(settings.thirdPartyAudio(), "Call 1");
    EXPECT_EQ(settings.roomMeetingId(), roomNumber);
    EXPECT_TRUE(settings.requiredMeetingPassword());
    EXPECT_FALSE(settings.hostvideoOn()); // no site option turns it on
    EXPECT_EQ(settings.getSettingsData().value("meetingPassword"), settings.meetingPassword());
    QSet<QChar> digits;
    for (int i = 0; i < 100; ++i) {
        static const QRegularExpression sixDigitsButNine("\\A[0-8]{6}\\z");
        EXPECT_TRUE(sixDigitsButNine.match(settings.meetingPassword()).hasMatch());
        for (const QChar digit : settings.meetingPassword())
            digits.insert(digit);
        settings.setMeetingPasswordWithRadomDigit();
    }
    EXPECT_EQ(digits.size(), 9); // misses one of 600 digits about once in 10^29 runs

    profile.remove("enableThirdPartyAudio");
    givenTheProfileIsLoaded(profile);
    settings.initSettingData();
    EXPECT_EQ(settings.audioType(), 2);
    EXPECT_EQ(settings.thirdPartyAudio(), "");
}

TEST_F(Settings, WhatTheUserSavedCountsAsFarAsTheSheetIsNotWanted) {
    // Depending on a random password, an unwanted sheet and the personal meeting.
    const std::tuple<bool, bool, bool, bool, bool> cases[] = {
        {false, false, false, false, false}, {false, false, true, false, false},
        {false, true, false, true, true},    {true, true, false, true, false},
        {true, true, true, true, true},      {true, false, false, false, false}};
    for (const auto &[random, notShow, pmi, takesVideo, takesPassword] : cases) {
        SCOPED_TRACE(testing::Message() << random << notShow << pmi);
        givenTheProfileIsLoaded({{"useRandomPasswordByDefault", random}});
        givenSavedSettings({{vl_Setting_NotShowMeAgain, notShow},
                            {vl_Setting_IsPMI, pmi},
                            {vl_Setting_EnableHostVideo, !pmi},
                            {vl_Setting_EnableParticipantsVideo, pmi},
                            {vl_Setting_EnableJBH, true},
                            {vl_Setting_AudioOption, 1},
                            {vl_Setting_MeetingPassword, "saved 9"}});
        settings.initSettingData();
        EXPECT_EQ(settings.usePMI(), pmi);
        EXPECT_EQ(settings.notShowMeAgain(), notShow);
        EXPECT_EQ(settings.hostvideoOn(), takesVideo && !pmi);
        EXPECT_EQ(settings.paticipantvideoOn(), takesVideo && pmi);
        EXPECT_EQ(settings.enableJoinBeforeHost(), takesVideo);
        EXPECT_EQ(settings.audioType(), takesVideo ? 1 : 2);
        EXPECT_EQ(settings.meetingPassword() == "saved 9", takesPassword);
        EXPECT_EQ(settings.requiredMeetingPassword(), takesPassword || random);
    }
}

TEST_F(Settings, ALoadedMeetingTakesThePlaceOfTheDefaults) {
    settings.setThirdPartyAudio("kept");
    settings.setMeetingPassword("old");
    settings.initWithSiteMeetingInfo();
    EXPECT_EQ(settings.meetingPassword(), "old"); // no meeting is loaded
    givenTheMeetingIsLoaded(
        {{"meetingPassword", "secret"}, {"usePMI", 1}, {"enableJBH", true}, {"audioOption", 1}});
    settings.initWithSiteMeetingInfo();
    EXPECT_TRUE(settings.requiredMeetingPassword() && settings.usePMI() && settings.enableJoinBeforeHost());
    EXPECT_TRUE(settings.hostvideoOn());
    EXPECT_EQ(settings.meetingPassword(), "secret");
    EXPECT_EQ(settings.audioType(), 1);
    EXPECT_EQ(settings.thirdPartyAudio(), "kept");
    givenTheMeetingIsLoaded({{"enable3rdPartyAudio", true}, {"thirdPartyAudio", "Call 2"}});
    settings.initWithSiteMeetingInfo();
    EXPECT_FALSE(settings.requiredMeetingPassword());
    EXPECT_EQ(settings.meetingPassword(), "");
    EXPECT_EQ(settings.thirdPartyAudio(), "Call 2");
}

TEST_F(Settings, APersonalMeetingNumberIsShownInGroups) {
    for (const auto &[number, shown] : {std::pair{"12", "12"},
                                        {"123", "123-"},
                                        {"123456", "123-456-"},
                                        {"1234567890", "123-456-7890"},
                                        {"12345678901", "123-4567-8901"}})
        EXPECT_EQ(vlSettingData::getFormatRoomMeetingId(number), shown);
    EXPECT_TRUE(vlSettingData::getFormatRoomMeetingId("").isNull());
}
