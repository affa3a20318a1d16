// What each request sends and what it does with its answer.
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
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

class Requests : public LinkTest {
protected:
    Requests() { givenTheClient(); }

    // The JSON of a schedule request.
    QVariantMap sent(const QVariantMap &record) {
        desktop.bus->clearPosted();
        manager.scheduleMeeting(window.get(), record);
        const platform::TextMap request = posted().value(0);
        EXPECT_EQ(request.value("actionId"), "3");
        EXPECT_TRUE(request.value("content").startsWith(head));
        return vlOLUtils::toArrayOrNSDictionary(request.value("content").mid(head.size())).toMap();
    }
    QVariantMap sentSetting(const QVariantMap &changes) {
        QVariantMap setting = aSetting();
        setting.insert(changes);
        return sent({{"setting", setting}}).value("setting").toMap();
    }

    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
};

} // namespace

TEST_F(Requests, AStartSaysWhetherThereIsVideoAndWithoutTheClientNothingIsSent) {
    const QString json = "{\n    \"from\": \"macOutlookPlugin\",\n    \"launchtype\": \"%1\"\n}";
    for (const auto &[withVideo, type] : {std::pair{true, "groupVideo"}, {false, "groupShare"}}) {
        desktop.bus->clearPosted();
        EXPECT_EQ(manager.startMeeting(withVideo), 0);
        EXPECT_EQ(posted(),
                  (QList<platform::TextMap>{{{"actionId", "2"}, {"content", json.arg(QString(type))}}}));
    }
    client.quits();
    EXPECT_EQ(manager.startMeeting(true), qint32(ClientError::NotRunning));
    EXPECT_EQ(manager.deleteMeeting(window.get(), {}), qint32(ClientError::NotRunning));
    EXPECT_EQ(manager.scheduleMeeting(window.get(), {}), qint32(ClientError::NotRunning));
    EXPECT_TRUE(receiver.scheduledFor.isEmpty());
    EXPECT_EQ(posted().size(), 1);
    ASSERT_EQ(feedback.alerts.size(), 3);
    for (const RecordingFeedback::Alert &alert : std::as_const(feedback.alerts))
        EXPECT_TRUE(alert.offersLaunch && alert.message == "[VelaClientNotRunning]");
    EXPECT_EQ(feedback.alerts[1].window, window.get());
    EXPECT_EQ(receiver.denied, 2) << "by the delete and the schedule; nobody waits for a start";
}

TEST_F(Requests, WhatIsHandedBackIsTheClientsWord) {
    manager.deleteMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::Delete, "0;Error 3001");
    EXPECT_EQ(
        receiver.finished.value(0).response(),
        (QVariantMap{{"meetingKey", "0;Error 3001"}, {"invitationEmail", ""}, {"keyVlResult", "Success"}}));

    manager.getUserProfile(window.get());
    clientAnswers(ClientAnswer::GetUserProfile,
                  R"({"userId": "u1", "userOption": 9007199254740993, "new": [null]})");
    const vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    EXPECT_EQ(receiver.finished.value(1).response(), profile.userProfile());
    EXPECT_EQ(profile.userOption(), 9007199254740993);
    manager.getUserProfile(window.get());
    clientAnswers(ClientAnswer::GetUserProfile, "0;Error 3001"); // neither an error nor a profile
    EXPECT_FALSE(receiver.finished.value(2).data.contains("vlAPIResponse"));
    EXPECT_FALSE(profile.hasUserProfile());

    manager.getPAC(window.get());
    clientAnswers(ClientAnswer::GetPAC, "CAA=");
    EXPECT_EQ(receiver.finished.value(3).data, (QVariantMap{{"keyApptWindowID", "1a2b"}}));
    EXPECT_TRUE(vlGetPACHelper::sharedInstance().hasPACInfo());

    manager.getMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::GetMeeting, QString(12, u';') + "e30="); // a field is missing
    EXPECT_EQ(receiver.denied, 1);
    manager.getMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::GetMeeting, QString(13, u';') + "eyJtZWV0aW5nS2V5IjoiNzcifQ==;CAA=;");
    EXPECT_EQ(receiver.finished.value(4).response(), (QVariantMap{{"meetingKey", "77"}}));
    EXPECT_TRUE(vlGetMeetingHelper::sharedInstance().hasPBMeetingData());
}

TEST_F(Requests, AScheduleSendsTheRecordAsJsonBehindItsHead) {
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
    const QVariantMap longSubject{{"subject", QString(129, u'\u20ac')}};
    EXPECT_EQ(sent({{"apptInfo", longSubject}, {"meetingKey", "0"}}),
              (QVariantMap{{"apptInfo", QVariantMap{{"subject", QString(128, u'\u20ac')}}},
                           {"setting", QVariantMap{{"meetingPassword", ""}}}}));
}

TEST_F(Requests, SettingsFollowTheirConditions) {
    EXPECT_EQ(sentSetting({{"requiredMeetingPassword", false}}).value("meetingPassword"), "");
    EXPECT_EQ(sentSetting({{"audioOption", 3}}).value("thirdPartyAudio"), "dial 1");
    EXPECT_EQ(sentSetting({{"scheduleFor", "boss@x"}}).value("scheduleFor"), "boss@x");
    EXPECT_FALSE(sentSetting({{"scheduleFor", ""}}).contains("scheduleFor"));
    // The workflow is also told that the user schedules for nobody else.
    EXPECT_EQ(receiver.scheduledFor, (QStringList{"", "", "boss@x", ""}));
}

TEST_F(Requests, AScheduleIsAnsweredWithKeyAndInvitationOrAnErrorInTheClientsWords) {
    const auto answered = [this](const char *content) {
        receiver.finished.clear();
        manager.scheduleMeeting(window.get(), {});
        clientAnswers(ClientAnswer::Schedule, content);
        return receiver.finished.value(0).response();
    };
    EXPECT_EQ(
        answered("77;a;b;;c;"),
        (QVariantMap{{"meetingKey", "77"}, {"invitationEmail", "a;b;;c;"}, {"keyVlResult", "Success"}}));
    EXPECT_EQ(answered("  7 7 ;text").value("meetingKey"), "77");
    EXPECT_TRUE(answered("no semicolon").isEmpty());
    EXPECT_TRUE(feedback.alerts.isEmpty());
    EXPECT_EQ(receiver.denied, 1);
    for (const char *error : {"0;no luck;today", ";text"}) {
        EXPECT_TRUE(answered(error).isEmpty());
        ASSERT_FALSE(feedback.alerts.isEmpty());
        EXPECT_EQ(feedback.alerts.last().message, error);
        EXPECT_EQ(feedback.alerts.last().window, window.get());
    }
    manager.updateMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::Update, "0;gone"); // no key of another meeting
    EXPECT_EQ(feedback.alerts.last().message, "0;gone");
    EXPECT_EQ(receiver.denied, 4);
}
