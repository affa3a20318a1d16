// The plug-in's record of a meeting that the client has sent.
#include "plugin/link/calendarDateRecord.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "tests/link/LinkFixture.h"

#include <QTimeZone>

namespace {

QVariantMap aMeeting() {
    return {{"subject", "Review"},
            {"duration", qint64(30)},
            {"recurrence", false},
            {"startTime", qint64(1467378000)},
            {"audioOption", qint64(2)},
            {"enableHostVideo", true},
            {"enableParticipantsVideo", false},
            {"enableJBH", true},
            {"usePMI", false},
            {"enable3rdPartyAudio", false},
            {"thirdPartyAudio", "dial 1"},
            {"meetingPassword", "1234"},
            {"meetingKey", "77"},
            {"originalMeetingNumber", "999"},
            {"invitationEmail", "Join us"},
            {"joinUrl", "https://x/j/77"},
            {"somethingElse", "not read"}};
}

class Meeting : public LinkTest {
protected:
    vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();

    QVariantMap infoOf(const QVariantMap &changes) {
        QVariantMap meeting = aMeeting();
        meeting.insert(changes);
        helper.setMeetingData(meeting);
        return helper.getMeetingInfo();
    }
    QVariantMap settingOf(const QVariantMap &changes) { return infoOf(changes).value("setting").toMap(); }
};

} // namespace

TEST_F(Meeting, BecomesAMeetingInfoRecord) {
    EXPECT_EQ(infoOf({}),
              (QVariantMap{
                  {"apptInfo", QVariantMap{{"subject", "Review"},
                                           {"duration", qint64(30)},
                                           {"recurrence", false},
                                           {"startTime", QVariantMap{{"UTCTime", "2016-07-01 13:00:00"}}}}},
                  {"setting", QVariantMap{{"audioOption", qint64(2)},
                                          {"enableHostVideo", true},
                                          {"enableParticipantsVideo", false},
                                          {"enableJBH", true},
                                          {"usePMI", false},
                                          {"meetingPassword", "1234"},
                                          {"requiredMeetingPassword", true}}},
                  {"meetingKey", "77"},
                  {"emailBody", "Join us"},
                  {"joinUrl", "https://x/j/77"}}));
}

TEST_F(Meeting, LeavesOutWhatTheClientDidNotTell) {
    helper.setMeetingData({{"unknown", 1}});
    EXPECT_EQ(helper.getMeetingInfo(),
              (QVariantMap{{"apptInfo", QVariantMap{}},
                           {"setting", QVariantMap{{"requiredMeetingPassword", false}}}}));
    const QVariant null = rt::nullMarker();
    helper.setMeetingData({{"subject", null}, {"startTime", null}, {"meetingKey", null}});
    EXPECT_EQ(helper.getMeetingInfo().value("apptInfo"), QVariantMap{});
    EXPECT_FALSE(helper.getMeetingInfo().contains("meetingKey"));
    EXPECT_FALSE(infoOf({{"invitationEmail", ""}}).contains("emailBody"));
    EXPECT_FALSE(settingOf({{"meetingPassword", ""}}).value("requiredMeetingPassword").toBool());
    EXPECT_EQ(settingOf({{"enable3rdPartyAudio", true}}).value("thirdPartyAudio"), "dial 1");
    const QVariantMap farAway = infoOf({{"startTime", std::numeric_limits<qint64>::max()}});
    EXPECT_EQ(farAway.value("apptInfo").toMap().value("startTime"), QVariantMap{});
}

TEST_F(Meeting, APersonalOneGoesByItsNumber) {
    const std::tuple<QVariant, QVariant, const char *> cases[] = {
        {1, "999", "999"}, {true, "999", "999"}, {1, qint64(5551234567), "5551234567"},
        {1, "0", "77"},    {0, "999", "77"},     {1, QVariant(), "77"},
        {2, "999", "77"},  {QVariant(), 9, "77"}};
    for (const auto &[usePMI, number, key] : cases) {
        EXPECT_EQ(infoOf({{"usePMI", usePMI}, {"originalMeetingNumber", number}}).value("meetingKey"), key)
            << usePMI.toInt() << ' ' << qPrintable(number.toString());
    }
}

TEST_F(Meeting, StaysPersonalThroughTheNextReadForIt) {
    for (const auto &[before, forPMI, after] :
         {std::tuple{1, true, 1}, {1, false, 0}, {0, true, 0}, {2, true, 0}}) {
        helper.setMeetingData({{"usePMI", before}, {"old", 1}});
        helper.setMeetingData({{"usePMI", 0}}, forPMI);
        EXPECT_EQ(helper.meetingData(), (QVariantMap{{"usePMI", after}}));
    }
}

TEST_F(Meeting, IsThereWhenItHasAKeyAndNeverOffersHtml) {
    for (const QVariantMap &none : {QVariantMap{}, {{"meetingKey", ""}}}) {
        helper.setMeetingData(none);
        EXPECT_FALSE(helper.hasMeetingInfo());
    }
    helper.setPBMeetingData("CAA=");
    EXPECT_TRUE(helper.hasPBMeetingData());
    EXPECT_EQ(infoOf({}).value("invitehtmlemail"), "");
    EXPECT_TRUE(helper.hasMeetingInfo() && !helper.supportHtmlEmail());
    EXPECT_EQ(helper.getInviteEmail(), "Join us");
}

TEST(DateRecord, EndsBeforeTheFirstMissingValue) {
    const QVariant zone = QVariant::fromValue(QTimeZone::utc());
    const QVariant noZone = QVariant::fromValue(QTimeZone());
    EXPECT_EQ(GenerateVlCalendarDate("u", "l", zone).keys(),
              (QStringList{"UTCTime", "localTime", "timezone"}));
    EXPECT_EQ(GenerateVlCalendarDate("u", "l", noZone).keys(), (QStringList{"UTCTime", "localTime"}));
    EXPECT_EQ(GenerateVlCalendarDate("u", QString(), zone).keys(), QStringList{"UTCTime"});
    EXPECT_TRUE(GenerateVlCalendarDate(QString(), "l", zone).isEmpty());
}
