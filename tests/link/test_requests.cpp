// What each request sends and what it does with its answer.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"
#include "tests/support/ProcessZone.h"

#include <QTimeZone>

namespace {

class Requests : public LinkTest {
protected:
    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
    vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
};

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
        static_cast<void>(vlAPIMgr::sharedInstance()); // it observes the bus from now on
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

TEST_F(Requests, GoIntoAnEnvelopeOfActionIdAndContentAndToTheAgentAlsoStartIt) {
    vlIPCChannel::sendIPCMessageToVelaClient(0, "a;b");
    vlIPCChannel::sendIPCMessageToVelaClient(4294967295U, "");
    EXPECT_EQ(posted(), (QList<platform::TextMap>{{{"actionId", "0"}, {"content", "a;b"}},
                                                  {{"actionId", "4294967295"}, {"content", ""}}}));
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_TRUE(desktop.workspace->launched.isEmpty()) << "it is not installed";
    installBundle(desktop, kVlPluginAgentIdentify, kPathVlPluginAgent, {});
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(desktop.workspace->launched.size(), 1);
    desktop.workspace->running.append(kVlPluginAgentIdentify);
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(desktop.workspace->launched, QStringList{kVlPluginAgentIdentify});
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"),
              QList<platform::TextMap>(3, {{"actionId", "2"}}));
}

TEST_F(Requests, AStartSaysWhetherThereIsVideoAndWaitsForNothing) {
    givenTheClient();
    for (const bool withVideo : {true, false}) {
        desktop.bus->clearPosted();
        EXPECT_EQ(manager.startMeeting(withVideo), 0);
        ASSERT_EQ(posted().size(), 1);
        EXPECT_EQ(posted()[0].value("actionId"), "2");
        EXPECT_EQ(vlOLUtils::toArrayOrNSDictionary(posted()[0].value("content")).toMap(),
                  (QVariantMap{{"from", "macOutlookPlugin"},
                               {"launchtype", withVideo ? "groupVideo" : "groupShare"}}));
    }
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
    EXPECT_TRUE(feedback.shownOn.isEmpty());

    client.quits();
    desktop.bus->clearPosted();
    EXPECT_EQ(manager.startMeeting(true), qint32(ClientError::NotRunning));
    ASSERT_EQ(feedback.alerts.size(), 1);
    EXPECT_TRUE(feedback.alerts[0].offersLaunch);
    client.isUninstalled();
    EXPECT_EQ(manager.startMeeting(true), qint32(ClientError::NotInstalled));
    EXPECT_TRUE(desktop.bus->posted().isEmpty());
}

TEST_F(Requests, AMeetingIsTakenFromFieldsThirteenAndFourteen) {
    givenTheClient();
    const auto fields = [](int count, const QByteArray &json = R"({"meetingKey": "77"})") {
        QStringList list(count, u"CAA="_s);
        if (count > 13)
            list[13] = EncodeUtils::base64Encode(json);
        return list.join(u';');
    };
    const struct {
        QString content;
        bool isFinished, isReadable, hasBinary;
    } cases[] = {{fields(1), false, false, false},
                 {fields(13), false, false, false},
                 {fields(14), true, true, false},
                 {fields(15), true, true, true},
                 {fields(16), true, true, true},
                 {fields(14, "{"), true, false, false},
                 {fields(14, "[1]"), true, false, false},
                 {fields(14, ""), true, false, false},
                 {QString(13, u';') + "%%%%", true, false, false},
                 {QString(13, u';') + "/w==", true, false, false}};
    for (const auto &c : cases) {
        SCOPED_TRACE(qPrintable(c.content));
        receiver.finished.clear();
        meeting.setMeetingData({{"meetingKey", "old"}});
        meeting.setPBMeetingData("");
        manager.getMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::GetMeeting, c.content);
        EXPECT_EQ(receiver.finished.size(), c.isFinished);
        EXPECT_EQ(meeting.hasMeetingInfo(), c.isReadable || !c.isFinished);
        EXPECT_EQ(meeting.hasPBMeetingData(), c.hasBinary);
        if (!c.isFinished)
            continue;
        EXPECT_EQ(receiver.finished[0].command, MeetingCommand::CmdGetMeetingDone);
        EXPECT_EQ(receiver.finished[0].data.contains("vlAPIResponse"), c.isReadable);
        EXPECT_EQ(receiver.finished[0].response().value("meetingKey"),
                  c.isReadable ? QVariant("77") : QVariant());
    }
}

TEST_F(Requests, WhatIsHandedBackIsTheClientsWord) {
    givenTheClient();
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
}

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
    // The cut would split a surrogate pair.
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
        const char *content, *key = nullptr, *invitation = nullptr; // an error has no key
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
