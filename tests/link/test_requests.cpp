// What each request sends and what it does with its answer.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

class Requests : public LinkTest {
protected:
    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
    vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
};

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
    desktop.workspace->running.append(kVlPluginAgentIdentify);
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(desktop.workspace->launched, QStringList{kVlPluginAgentIdentify});
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"),
              QList<platform::TextMap>(3, {{"actionId", "2"}}));
}

TEST_F(Requests, AnAnswerThatIsForNoRequestChangesNothing) {
    givenTheClient();
    manager.getUserProfile(window.get());
    for (const char *actionId : {"5", "8", "0", "-1", "10", "abc", "3x", "", "4294967297", "1e300", "nan"})
        clientAnswers(actionId, "12345;invitation");
    EXPECT_TRUE(receiver.finished.isEmpty());
    EXPECT_TRUE(feedback.alerts.isEmpty());
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
