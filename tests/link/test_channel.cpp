// The envelope of messages to the client and the agent.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "tests/link/LinkFixture.h"

class Channel : public LinkTest {};

TEST_F(Channel, AMessageIsAnEnvelopeOfActionIdAndContent) {
    vlIPCChannel::sendIPCMessageToVelaClient(0, "a;b");
    vlIPCChannel::sendIPCMessageToVelaClient(4294967295U, "");
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(posted(), (QList<platform::TextMap>{{{"actionId", "0"}, {"content", "a;b"}},
                                                  {{"actionId", "4294967295"}, {"content", ""}}}));
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"), (QList<platform::TextMap>{{{"actionId", "2"}}}));
}

TEST_F(Channel, AMessageStartsTheAgentUnlessItRuns) {
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_TRUE(desktop.workspace->launched.isEmpty()) << "it is not installed";
    installBundle(desktop, kVlPluginAgentIdentify, kPathVlPluginAgent, {});
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    desktop.workspace->running.append(kVlPluginAgentIdentify);
    vlIPCChannel::sendIPCMessageToPluginAgent(2, QString());
    EXPECT_EQ(desktop.workspace->launched, QStringList{kVlPluginAgentIdentify});
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent").size(), 3);
}

TEST_F(Channel, AnAnswerThatIsForNoRequestChangesNothing) {
    givenTheClient();
    vlAPIMgr::sharedInstance().getUserProfile(window.get());
    for (const char *actionId :
         {"5", "7", "8", "0", "-1", "10", "abc", "3x", "", "4294967297", "1e300", "nan", "inf"})
        clientAnswers(actionId, "12345;invitation");
    desktop.bus->post(clientsChannel, QString(), {{"content", "12345;invitation"}}, true);
    desktop.runLoop->advance(0);
    EXPECT_TRUE(receiver.finished.isEmpty());
    EXPECT_TRUE(feedback.alerts.isEmpty());
}

TEST_F(Channel, AnswerTwoIsForTheUpdateEvenAfterAStart) {
    givenTheClient();
    vlAPIMgr::sharedInstance().updateMeeting(window.get(), {});
    vlAPIMgr::sharedInstance().startMeeting(true);
    clientAnswers("2", "77;text");
    ASSERT_EQ(receiver.finished.size(), 1);
    EXPECT_EQ(receiver.finished[0].command, MeetingCommand::CmdUpdateMeeting);
}
