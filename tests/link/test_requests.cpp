// What each request sends, and what it makes of its answer.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

QString fields(int count, const QString &meeting, const QString &binary = QString()) {
    QStringList list(count, u"x"_s);
    if (count > 13)
        list[13] = EncodeUtils::base64Encode(meeting.toUtf8());
    if (count > 14)
        list[14] = binary;
    return list.join(u';');
}

class Requests : public LinkTest {
protected:
    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
    vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
};

} // namespace

TEST_F(Requests, GoIntoAnEnvelopeOfActionIdAndContent) {
    vlIPCChannel::sendIPCMessageToVelaClient(0, "a;b");
    vlIPCChannel::sendIPCMessageToVelaClient(4294967295U, "");
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(posted(), (QList<platform::TextMap>{{{"actionId", "0"}, {"content", "a;b"}},
                                                  {{"actionId", "4294967295"}, {"content", ""}}}));
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"), (QList<platform::TextMap>{{{"actionId", "2"}}}));
}

TEST_F(Requests, ToTheAgentStartItUnlessItRuns) {
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_TRUE(desktop.workspace->launched.isEmpty()) << "it is not installed";
    installBundle(desktop, kVlPluginAgentIdentify, kPathVlPluginAgent, {});
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    desktop.workspace->running.append(kVlPluginAgentIdentify);
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(desktop.workspace->launched, QStringList{kVlPluginAgentIdentify});
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent").size(), 3);
}

TEST_F(Requests, AnAnswerThatIsForNoRequestChangesNothing) {
    givenTheClient();
    manager.getUserProfile(window.get());
    for (const char *actionId :
         {"5", "7", "8", "0", "-1", "10", "abc", "3x", "", "4294967297", "1e300", "nan", "inf"})
        clientAnswers(actionId, "12345;invitation");
    desktop.bus->post("VelaVideoClientToVelaOutlookPlugin_PRL", QString(), {{"content", "12345;invitation"}},
                      true);
    desktop.runLoop->advance(0);
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

TEST_F(Requests, AMeetingIsTakenFromFieldThirteenAndFourteen) {
    givenTheClient();
    struct Case {
        int count;
        bool handedBack, binary;
    };
    const Case cases[] = {
        {1, false, false}, {13, false, false}, {14, true, false}, {15, true, true}, {16, true, true}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.count);
        receiver.finished.clear();
        meeting.setMeetingData({});
        meeting.setPBMeetingData("");
        manager.getMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::GetMeeting, fields(c.count, R"({"meetingKey": "77"})", "CAA="));
        EXPECT_EQ(receiver.finished.size(), c.handedBack ? 1 : 0);
        EXPECT_EQ(meeting.hasMeetingInfo(), c.handedBack);
        EXPECT_EQ(meeting.hasPBMeetingData(), c.binary);
        if (c.handedBack) {
            EXPECT_EQ(receiver.finished[0].response(), (QVariantMap{{"meetingKey", "77"}}));
        }
    }
    manager.getMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::GetMeeting, fields(14, "{}"));
    EXPECT_TRUE(meeting.hasPBMeetingData()); // the earlier one stays
}

TEST_F(Requests, AMeetingThatCannotBeReadEmptiesWhatIsKept) {
    givenTheClient();
    const QString unreadable[] = {fields(14, "{"), fields(14, "[1]"), fields(14, ""),
                                  QString(13, u';') + "%%%%", QString(13, u';') + "/w=="};
    for (const QString &content : unreadable) {
        SCOPED_TRACE(qPrintable(content));
        meeting.setMeetingData({{"meetingKey", "77"}});
        receiver.finished.clear();
        manager.getMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::GetMeeting, content);
        ASSERT_EQ(receiver.finished.size(), 1);
        EXPECT_EQ(receiver.finished[0].command, MeetingCommand::CmdGetMeetingDone);
        EXPECT_FALSE(receiver.finished[0].data.contains("vlAPIResponse"));
        EXPECT_TRUE(meeting.meetingData().isEmpty());
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
    clientAnswers(ClientAnswer::GetUserProfile, "0;Error 3001"); // no error for a profile, and no profile
    EXPECT_FALSE(receiver.finished.value(2).data.contains("vlAPIResponse"));
    EXPECT_FALSE(profile.hasUserProfile());

    manager.getPAC(window.get());
    clientAnswers(ClientAnswer::GetPAC, "CAA=");
    EXPECT_EQ(receiver.finished.value(3).data, (QVariantMap{{"keyApptWindowID", "1a2b"}}));
    EXPECT_TRUE(vlGetPACHelper::sharedInstance().hasPACInfo());
}
