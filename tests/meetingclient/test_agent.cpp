#include "platform/services/propertylist/PropertyList.h"
#include "standin/agent/PluginAgent.h"
#include "standin/support/BusNames.h"
#include "tests/support/TestServices.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace names = standin::names;

namespace {

const QString clientPath = u"/Applications/Parlo Meetings.app"_s;

class AgentTest : public testing::Test {
protected:
    void ask(const char *action) {
        desktop.bus->post(names::requestsToAgent, QString(), {{"actionId", QString::fromLatin1(action)}},
                          true);
        desktop.runLoop->advance(0);
    }
    void givenAClient(const QString &identifier, const QString &path, const QString &executable,
                      const QString &version) {
        desktop.workspace->root = folder.path();
        desktop.workspace->bundles.append({identifier, path, executable});
        const QString contents = desktop.workspace->resolve(path) + u"/Contents"_s;
        QDir().mkpath(contents);
        ASSERT_TRUE(platform::PropertyList::write(contents + u"/Info.plist"_s,
                                                  QVariantMap{{"CFBundleVersion", version}}));
    }
    QTemporaryDir folder;
    platform::TestDesktop desktop = platform::installTestServices();
    pluginagent::PluginAgent agent;
};

} // namespace

TEST_F(AgentTest, BringsARunningClientToTheFront) {
    givenAClient(names::client, clientPath, "/bin/client", "3.6.40500");
    desktop.workspace->running.append(names::client);
    ask("2");
    EXPECT_TRUE(desktop.workspace->started.isEmpty());
    EXPECT_EQ(desktop.bus->posted().last().name, names::activation);
}

// Each place that is filled takes precedence over those before it.
TEST_F(AgentTest, TellsTheVersionOfAndStartsTheClientThatThePlugInFinds) {
    const auto expectFound = [this](const char *version) {
        ask("1");
        EXPECT_EQ(desktop.bus->posted().last().name, names::answersOfAgent);
        EXPECT_EQ(desktop.bus->posted().last().userInfo,
                  (platform::TextMap{{"actionId", "1"}, {"content", version}}));
        ask("2");
        EXPECT_EQ(desktop.workspace->started.last().executable, u"/bin/"_s + QString::fromLatin1(version));
    };
    ask("1");
    EXPECT_EQ(desktop.bus->posted().size(), 1) << "without a client there is no answer";
    givenAClient(names::client, "/Users/Shared/Other.app", "/bin/1", "1");
    expectFound("1");
    givenAClient("everybody's", clientPath, "/bin/2", "2");
    expectFound("2");
    desktop.userDefaults->domains[names::client]["installPath"] = "/opt/Chosen.app";
    expectFound("2"); // nothing is there
    givenAClient("chosen", "/opt/Chosen.app", "/bin/3", "3");
    expectFound("3");
}
