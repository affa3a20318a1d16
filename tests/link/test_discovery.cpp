// Where the host and the client are, which versions they have, and how the client is started.
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "tests/link/LinkFixture.h"

namespace {

class Discovery : public LinkTest {
protected:
    const vlAppHelper &helper = vlAppHelper::sharedInstance();
};

const QString usualPath = u"/Applications/Parlo Meetings.app"_s;
const QString ownPath = u"/Applications/Elsewhere.app"_s;
const QString startUrl = u"velamtg://meetings.parlo.example/start"_s;

} // namespace

TEST_F(Discovery, TheClientIsLookedForInOrder) {
    EXPECT_EQ(helper.getVelaClientInstallPath(),
              "~/Library/Application Support/Parlo Meetings/Parlo Meetings.app");
    EXPECT_FALSE(helper.isVelausInstalled());
    const QString perUser =
        desktop.workspace->home + "/Library/Application Support/Parlo Meetings/Parlo Meetings.app";
    EXPECT_EQ(helper.getVelaClientBundlePath(), perUser);
    installBundle(desktop, "per user", perUser, {});
    EXPECT_TRUE(helper.isVelausInstalled()); // one user's own installation counts
    installBundle(desktop, kVelausIdentify, usualPath, {});
    EXPECT_EQ(helper.getVelaClientInstallPath(), usualPath);
    desktop.userDefaults->domains[kVelausIdentify] = {{"installPath", ownPath}};
    EXPECT_EQ(helper.getVelaClientInstallPath(), usualPath); // its own path does not exist
    installBundle(desktop, "other", ownPath, {});
    EXPECT_EQ(helper.getVelaClientInstallPath(), ownPath);
    EXPECT_TRUE(helper.isVelausInstalled());
}

TEST_F(Discovery, ALaunchStartsTheClientOrWakesTheRunningOne) {
    EXPECT_FALSE(helper.LaunchVelaClient());
    installBundle(desktop, kVelausIdentify, usualPath, {}, QString()); // no executable
    EXPECT_TRUE(helper.isVelausInstalled());
    EXPECT_FALSE(helper.LaunchVelaClient());
    desktop.workspace->running = QStringList{kVelausIdentify};
    EXPECT_FALSE(helper.LaunchVelaClient());
    desktop.workspace->running.clear();
    EXPECT_TRUE(desktop.workspace->started.isEmpty());

    desktop.workspace->bundles[0].executable = "/bin/client";
    EXPECT_TRUE(helper.LaunchVelaClient());
    ASSERT_EQ(desktop.workspace->started.size(), 1);
    EXPECT_EQ(desktop.workspace->started[0].executable, "/bin/client");
    EXPECT_EQ(desktop.workspace->started[0].arguments, QStringList{startUrl});
    EXPECT_TRUE(desktop.bus->posted().isEmpty());

    desktop.workspace->running.append(kVelausIdentify);
    EXPECT_FALSE(helper.LaunchVelaClient());
    EXPECT_EQ(desktop.workspace->started.size(), 1);
    EXPECT_EQ(posted("Noti_ActivateVelaApplicationExternally"),
              (QList<platform::TextMap>{{{"Param_ActivateVelaApplicationExternally", startUrl}}}));
}

TEST_F(Discovery, TheHostIsFoundAndLaunchedByItsIdentifier) {
    EXPECT_FALSE(helper.isOutlookInstalled());
    installHost(desktop, "16.1");
    EXPECT_TRUE(helper.isOutlookInstalled());
    helper.launchOutlookApp();
    EXPECT_EQ(desktop.workspace->launched, QStringList{"com.microsoft.Outlook"});
}

TEST_F(Discovery, TheAgentsVersionCountsWhenTheClientCannotBeRead) {
    const auto agentAnswers = [this](const platform::TextMap &envelope) {
        desktop.bus->post("vOutlookPluginAgentToVOutlookPlugin", QString(), envelope, true);
        desktop.runLoop->advance(0);
    };
    installBundle(desktop, "com.parlo.vOutlookPluginAgent",
                  "/Users/Shared/ParloMeetingsOutlookPlugin/vOutlookPluginAgent.app", {});
    vlGetClientVersionHelper::sharedInstance().getClientVersion();
    EXPECT_EQ(desktop.workspace->launched, QStringList{"com.parlo.vOutlookPluginAgent"});
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"),
              (QList<platform::TextMap>{{{"actionId", "1"}, {"content", "1"}}}));
    EXPECT_TRUE(vlGetClientVersionHelper::getVelaClientVersion().isEmpty());
    agentAnswers({{"actionId", "2"}, {"content", "9.9.9"}});
    agentAnswers({{"content", "9.9.9"}});
    agentAnswers({{"actionId", "1"}});
    EXPECT_TRUE(vlGetClientVersionHelper::getVelaClientVersion().isEmpty());
    agentAnswers({{"actionId", "1"}, {"content", "3.7.1"}});
    EXPECT_EQ(vlGetClientVersionHelper::getVelaClientVersion(), "3.7.1");
    EXPECT_TRUE(vlClientFeatureMgr::sharedInstance().isSupportedVelaClientVersion());
    client.isInstalled("3.5.0"); // what is installed counts first
    EXPECT_EQ(vlGetClientVersionHelper::getVelaClientVersion(), "3.5.0");
}
