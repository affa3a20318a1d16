// The plug-in's record of a meeting that the client has sent.
#include "plugin/link/calendarDateRecord.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "tests/link/LinkFixture.h"

#include <QTimeZone>

namespace {

class Meeting : public LinkTest {
protected:
    vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();

    QVariantMap infoOf(const QVariantMap &meeting) {
        helper.setMeetingData(meeting);
        return helper.getMeetingInfo();
    }
};

} // namespace

TEST_F(Meeting, BecomesARecordOfWhatTheClientTold) {
    QVariantMap appointment{{"subject", "Review"}, {"duration", qint64(30)}, {"recurrence", false}};
    QVariantMap setting{
        {"audioOption", qint64(2)},         {"enableHostVideo", true}, {"enableJBH", true},
        {"enableParticipantsVideo", false}, {"usePMI", false},         {"meetingPassword", "1234"},
        {"thirdPartyAudio", "dial 1"}};
    QVariantMap meeting{
        {"startTime", qint64(1467378000)}, {"enable3rdPartyAudio", true},  {"meetingKey", "77"},
        {"originalMeetingNumber", "999"},  {"invitationEmail", "Join us"}, {"joinUrl", "https://x/j/77"},
        {"somethingElse", "not read"}};
    meeting.insert(appointment);
    meeting.insert(setting);
    appointment.insert("startTime", QVariantMap{{"UTCTime", "2016-07-01 13:00:00"}});
    setting.insert("requiredMeetingPassword", true);
    EXPECT_EQ(infoOf(meeting), (QVariantMap{{"apptInfo", appointment},
                                            {"setting", setting},
                                            {"meetingKey", "77"},
                                            {"emailBody", "Join us"},
                                            {"joinUrl", "https://x/j/77"}}));
    EXPECT_EQ(
        infoOf({{"thirdPartyAudio", "not in use"}, {"subject", rt::nullMarker()}, {"invitationEmail", ""}}),
        (QVariantMap{{"apptInfo", QVariantMap{}},
                     {"setting", QVariantMap{{"requiredMeetingPassword", false}}}}));
    const QVariantMap farAway = infoOf({{"startTime", std::numeric_limits<qint64>::max()}});
    EXPECT_EQ(farAway.value("apptInfo"), (QVariantMap{{"startTime", QVariantMap{}}}));
}

TEST_F(Meeting, APersonalOneGoesByItsNumber) {
    const std::tuple<QVariant, QVariant, const char *> cases[] = {
        {1, "999", "999"}, {true, "999", "999"}, {1, qint64(5551234567), "5551234567"},
        {1, "0", "77"},    {0, "999", "77"},     {1, QVariant(), "77"},
        {2, "999", "77"},  {QVariant(), 9, "77"}};
    for (const auto &[usePMI, number, key] : cases) {
        const QVariantMap meeting{
            {"meetingKey", "77"}, {"usePMI", usePMI}, {"originalMeetingNumber", number}};
        EXPECT_EQ(infoOf(meeting).value("meetingKey"), key)
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
    EXPECT_FALSE(helper.hasMeetingInfo());
    helper.setPBMeetingData("CAA=");
    EXPECT_EQ(infoOf({{"meetingKey", "77"}}).value("invitehtmlemail").typeId(), QMetaType::QString);
    EXPECT_TRUE(helper.hasMeetingInfo() && !helper.supportHtmlEmail());
    startLinkAfresh();
    EXPECT_FALSE(vlGetMeetingHelper::sharedInstance().hasMeetingInfo());
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
