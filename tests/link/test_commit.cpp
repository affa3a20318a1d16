// What the request for a new or changed meeting sends, and what its answer means.
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"
#include "tests/support/ProcessZone.h"

#include <QTimeZone>

namespace {

const QString head = u"1;;;;;;;;;;;;;"_s;

QVariantMap aSnapshot() {
    return {{"subject", "Review"},
            {"location", "Room 4"},
            {"duration", "90"},
            {"recurrence", true},
            {"emailBody", "<p>not sent</p>"},
            {"startTime", QVariantMap{{"UTCTime", "2016-07-01 13:00:00"},
                                      {"localTime", "2016-07-01 09:00:00"},
                                      {"timezone", QVariant::fromValue(QTimeZone("America/New_York"))}}}};
}

QVariantMap aSetting() {
    return {{"audioOption", 2},          {"thirdPartyAudio", "dial 1"},
            {"enableHostVideo", true},   {"enableParticipantsVideo", false},
            {"enableJBH", true},         {"usePMI", false},
            {"meetingPassword", "1234"}, {"requiredMeetingPassword", true},
            {"scheduleFor", ""},         {"notShowMeAgain", true}};
}

class Commit : public LinkTest {
protected:
    void SetUp() override {
        givenTheClient();
        static_cast<void>(vlAPIMgr::sharedInstance()); // listens from now on
    }
    QVariantMap sent(const QVariantMap &record) {
        desktop.bus->clearPosted();
        vlAPIMgr::sharedInstance().scheduleMeeting(window.get(), record);
        const platform::TextMap request = posted().value(0);
        EXPECT_EQ(request.value("actionId"), "3");
        EXPECT_TRUE(request.value("content").startsWith(head));
        return vlOLUtils::toArrayOrNSDictionary(request.value("content").mid(head.size())).toMap();
    }
    QVariantMap sentAppointment(const QVariantMap &snapshot) {
        return sent({{"apptInfo", snapshot}}).value("apptInfo").toMap();
    }
    QVariantMap sentSetting(const QVariantMap &setting) {
        return sent({{"setting", setting}}).value("setting").toMap();
    }
};

QVariantMap with(QVariantMap map, const QString &key, const QVariant &value) {
    map.insert(key, value);
    return map;
}

} // namespace

TEST_F(Commit, SendsTheRecordAsJsonBehindItsHead) {
    const ProcessZone zone("Europe/Berlin");
    const QVariantMap json = sent({{"apptInfo", aSnapshot()}, {"setting", aSetting()}, {"meetingKey", "77"}});
    EXPECT_EQ(json, (QVariantMap{{"apptInfo", QVariantMap{{"subject", "Review"},
                                                          {"location", "Room 4"},
                                                          {"duration", "90"},
                                                          {"recurrence", true},
                                                          {"startTime", "1467356400"},
                                                          {"timezone", "America/New_York"}}},
                                 {"setting", QVariantMap{{"audioOption", qint64(2)},
                                                         {"enableHostVideo", true},
                                                         {"enableParticipantsVideo", false},
                                                         {"enableJBH", true},
                                                         {"usePMI", false},
                                                         {"meetingPassword", "1234"}}},
                                 {"meetingKey", "77"}}));
}

TEST_F(Commit, WhatTheRecordLacksIsLeftOutOrEmpty) {
    EXPECT_EQ(sent({}), (QVariantMap{{"apptInfo", QVariantMap{{"subject", ""}}},
                                     {"setting", QVariantMap{{"meetingPassword", ""}}}}));
    for (const QVariant &key : {QVariant("0"), QVariant(""), rt::nullMarker()})
        EXPECT_FALSE(sent({{"meetingKey", key}}).contains("meetingKey"));
    EXPECT_EQ(sentAppointment({{"subject", rt::nullMarker()}}).value("subject"), "");
    EXPECT_TRUE(rt::isNullMarker(sentAppointment({{"location", rt::nullMarker()}}).value("location")));
    const auto start = [this](const QVariantMap &record) { return sentAppointment({{"startTime", record}}); };
    EXPECT_EQ(start({{"UTCTime", "2016-07-01 13:00:00"}}), (QVariantMap{{"subject", ""}}));
    EXPECT_EQ(start({{"localTime", "soon"}}).value("startTime"), "0");
    EXPECT_FALSE(start({{"timezone", QVariant::fromValue(QTimeZone())}}).contains("timezone"));
}

TEST_F(Commit, TheSubjectIsCutToItsFirst128Units) {
    for (const qsizetype length : {128, 129}) {
        const QString subject(length, u'\u20ac');
        EXPECT_EQ(sentAppointment({{"subject", subject}}).value("subject"), subject.left(128)) << length;
    }
    // The cut would split a pair of units.
    const QString start(127, u'x');
    const QString sentText =
        sentAppointment({{"subject", start + u"\U0001F600"_s}}).value("subject").toString();
    EXPECT_TRUE(sentText.startsWith(start) && sentText.size() <= 128);
}

TEST_F(Commit, SettingsFollowTheirConditions) {
    const QVariantMap setting = aSetting();
    EXPECT_EQ(sentSetting(with(setting, "requiredMeetingPassword", false)).value("meetingPassword"), "");
    EXPECT_EQ(sentSetting(with(setting, "requiredMeetingPassword", qint64(1))).value("meetingPassword"),
              "1234");
    EXPECT_EQ(sentSetting(with(setting, "audioOption", 3)).value("thirdPartyAudio"), "dial 1");
    EXPECT_EQ(sentSetting(with(setting, "audioOption", "3")).value("thirdPartyAudio"), "dial 1");
    EXPECT_FALSE(sentSetting(with(setting, "audioOption", 100)).contains("thirdPartyAudio"));
    EXPECT_EQ(sentSetting(with(setting, "scheduleFor", "boss@x")).value("scheduleFor"), "boss@x");
    EXPECT_FALSE(sentSetting(with(setting, "scheduleFor", "")).contains("scheduleFor"));
    sentSetting({});
    // The workflow is also told that the user schedules for nobody else.
    EXPECT_EQ(receiver.scheduledFor.mid(receiver.scheduledFor.size() - 3), (QStringList{"boss@x", "", ""}));
}

TEST_F(Commit, AnAnswerIsAKeyAndAllThatFollowsTheFirstSemicolonOrAnErrorInTheClientsWords) {
    struct Case {
        const char *content, *key = nullptr, *invitation = nullptr; // without a key: an error
    };
    for (const Case &c :
         {Case{"77;a;b;;c;", "77", "a;b;;c;"}, Case{"77;", "77", ""}, Case{"  7 7 ;text", "77", "text"},
          Case{"00;Err", "00", "Err"}, Case{"77;Error 3001", "77", "Error 3001"}, Case{"0;no luck;today"},
          Case{"0;"}, Case{";text"}}) {
        SCOPED_TRACE(c.content);
        receiver.finished.clear();
        feedback.alerts.clear();
        vlAPIMgr::sharedInstance().scheduleMeeting(window.get(), {});
        clientAnswers(ClientAnswer::Schedule, c.content);
        ASSERT_EQ(receiver.finished.size(), c.key ? 1 : 0);
        ASSERT_EQ(feedback.alerts.size(), c.key ? 0 : 1);
        if (c.key) {
            EXPECT_EQ(receiver.finished[0].response(), (QVariantMap{{"meetingKey", c.key},
                                                                    {"invitationEmail", c.invitation},
                                                                    {"keyVlResult", "Success"}}));
        } else {
            EXPECT_EQ(feedback.alerts[0].message, c.content);
            EXPECT_EQ(feedback.alerts[0].window, window.get());
        }
    }
    feedback.alerts.clear();
    receiver.finished.clear();
    vlAPIMgr::sharedInstance().scheduleMeeting(window.get(), {});
    clientAnswers(ClientAnswer::Schedule, "no semicolon");
    EXPECT_TRUE(feedback.alerts.isEmpty() && receiver.finished.isEmpty());
}
