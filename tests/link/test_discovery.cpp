#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

class Discovery : public LinkTest {
protected:
    const vlAppHelper &helper = vlAppHelper::sharedInstance();
    const vlClientFeatureMgr &features = vlClientFeatureMgr::sharedInstance();
};

const QString usualPath = u"/Applications/Parlo Meetings.app"_s;
const QString ownPath = u"/Applications/Elsewhere.app"_s;
const QString startUrl = u"velamtg://meetings.parlo.example/start"_s;

} // namespace

TEST_F(Discovery, TheHostsVersionDecidesWhatIsHooked) {
    struct Case {
        const char *version;
        bool supported, above2016;
    };
    const Case cases[] = {{"14.1.3", false, false}, {"14.1.4", true, false}, {"14.1", false, false},
                          {"14.0.9", false, false}, {"14.2", true, false},   {"13.9.9", false, false},
                          {"15.0", true, false},    {"15.8.9", true, false}, {"15.9", true, true},
                          {"15.10.1", true, true},  {"16", true, true},      {"16.0.1.2", true, true},
                          {"", false, false},       {"beta", false, false}};
    for (const Case &c : cases) {
        desktop.workspace->bundles.clear();
        givenTheHost(c.version);
        EXPECT_EQ(helper.OutlookVersion(), c.version);
        EXPECT_EQ(helper.isSupportedOutlookVersion(), c.supported) << c.version;
        EXPECT_EQ(helper.isOutlookVersionLargeThan2016(), c.above2016) << c.version;
    }
    desktop.workspace->bundles.clear();
    EXPECT_TRUE(helper.OutlookVersion().isNull());
    EXPECT_FALSE(helper.isSupportedOutlookVersion());
    EXPECT_FALSE(helper.isOutlookVersionLargeThan2016());
}

TEST_F(Discovery, TheSystemMustBeLaterThanItsLastUnsupportedVersion) {
    struct Case {
        int version;
        bool supported;
    };
    for (const Case &c :
         {Case{0, false}, Case{0x1058, false}, Case{0x1060, false}, Case{0x1061, true}, Case{0x1068, true}}) {
        desktop.workspace->version = c.version;
        EXPECT_EQ(helper.isSupportedOSVersion(), c.supported) << c.version;
    }
}

TEST_F(Discovery, TheClientsVersionOpensBothGates) {
    struct Case {
        const char *version;
        bool open;
    };
    const Case cases[] = {{"3.6.40486", false}, {"3.6.40487", true}, {"3.6.40487.1", true},
                          {"3.7", true},        {"4", true},         {"3.5.99999", false},
                          {"2.9.99999", false}, {"3.6", false},      {"3", false},
                          {"", false},          {"x.y.z", false},    {"3.10.0", true}};
    for (const Case &c : cases) {
        desktop.workspace->bundles.clear();
        givenTheClient(c.version);
        EXPECT_EQ(features.isSupportedVelaClientVersion(), c.open) << c.version;
        EXPECT_EQ(features.isVelaClientSupportPACAndNoVideo(), c.open) << c.version;
    }
}

TEST_F(Discovery, TheClientIsLookedForInOrder) {
    EXPECT_EQ(helper.getVelaClientInstallPath(),
              "~/Library/Application Support/Parlo Meetings/Parlo Meetings.app");
    EXPECT_FALSE(helper.isVelausInstalled());
    const QString perUser =
        desktop.workspace->home + "/Library/Application Support/Parlo Meetings/Parlo Meetings.app";
    EXPECT_EQ(helper.getVelaClientBundlePath(), perUser);
    givenABundle("per user", perUser, {});
    EXPECT_TRUE(helper.isVelausInstalled()); // one user's own installation counts
    givenABundle(kVelausIdentify, usualPath, {});
    EXPECT_EQ(helper.getVelaClientInstallPath(), usualPath);
    desktop.userDefaults->domains[kVelausIdentify] = {{"installPath", ownPath}};
    EXPECT_EQ(helper.getVelaClientInstallPath(), usualPath); // its own path leads nowhere
    givenABundle("other", ownPath, {});
    EXPECT_EQ(helper.getVelaClientInstallPath(), ownPath);
    EXPECT_TRUE(helper.isVelausInstalled());
}

TEST_F(Discovery, ALaunchStartsTheClientOrWakesTheRunningOne) {
    EXPECT_FALSE(helper.LaunchVelaClient());
    givenABundle(kVelausIdentify, usualPath, {}, QString()); // no executable
    EXPECT_TRUE(helper.isVelausInstalled());
    EXPECT_FALSE(helper.LaunchVelaClient());
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

TEST_F(Discovery, OtherApplicationsAreFoundByIdentifier) {
    EXPECT_FALSE(helper.isOutlookInstalled());
    EXPECT_TRUE(helper.getVlPluginVersion().isNull());
    givenTheHost("15.9");
    givenABundle("com.parlo.vOutlookPluginAgent", kPathVlPluginAgent,
                 {{"CFBundleShortVersionString", "1.2"}});
    EXPECT_TRUE(helper.isOutlookInstalled());
    EXPECT_FALSE(helper.isOutlookRunning());
    helper.launchOutlookApp();
    EXPECT_EQ(desktop.workspace->launched, QStringList{"com.microsoft.Outlook"});
    EXPECT_EQ(helper.getVlPluginVersion(), "1.2");
    desktop.workspace->home = "/home/me";
    EXPECT_EQ(helper.getOutlookSandboxContainerVelaPluginPath(),
              "/home/me/Library/Containers/com.microsoft.Outlook/Data/Documents/ParloMeetingsOutlookPlugin");
}

TEST_F(Discovery, TheAgentTellsTheVersionForTimesWhenTheClientCannotBeRead) {
    vlGetClientVersionHelper::sharedInstance().getClientVersion();
    EXPECT_EQ(posted("vOutlookPluginToVOutlookPluginAgent"),
              (QList<platform::TextMap>{{{"actionId", "1"}, {"content", "1"}}}));
    EXPECT_TRUE(vlGetClientVersionHelper::getVelaClientVersion().isEmpty());
    agentAnswers({{"actionId", "2"}, {"content", "9.9.9"}});
    agentAnswers({{"content", "9.9.9"}});
    agentAnswers({{"actionId", "1"}});
    EXPECT_EQ(siteConfigText(), "");
    agentAnswers({{"actionId", "1"}, {"content", "3.7.1"}});
    EXPECT_EQ(vlGetClientVersionHelper::getVelaClientVersion(), "3.7.1");
    EXPECT_TRUE(features.isSupportedVelaClientVersion());
    givenTheClient("3.5.0"); // what is installed counts first
    EXPECT_EQ(vlGetClientVersionHelper::getVelaClientVersion(), "3.5.0");
}
