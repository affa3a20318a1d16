// Applications as folders, without a bus.
#include "platform/services/bus/SessionBus.h"
#include "platform/services/propertylist/PropertyList.h"
#include "platform/services/workspace/DesktopWorkspace.h"
#include "standin/support/PrivateBus.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/WaitFor.h"
#include "tests/support/Warnings.h"

namespace {

class WorkspaceTest : public testing::Test {
protected:
    static std::shared_ptr<platform::SessionBus> noBus() {
        expectWarning(u"there is no session bus"_s);
        return std::make_shared<platform::SessionBus>(QString(), nullptr);
    }

    void putBundle(const QString &path, const QString &identifier, const QString &executable) const {
        const QString contents = folder.path() + path + u"/Contents"_s;
        ASSERT_TRUE(QDir().mkpath(contents + u"/MacOS"_s));
        ASSERT_TRUE(platform::PropertyList::write(
            contents + u"/Info.plist"_s,
            QVariantMap{{u"CFBundleIdentifier"_s, identifier}, {u"CFBundleExecutable"_s, executable}}));
    }

    standin::PrivateBus bus; // never started: the address leads nowhere
    TestFolder folder;
    QString own = folder.path(u"own"_s);
    platform::DesktopWorkspace workspace{noBus(), {own + u'/', folder.path()}, {}};
};

TEST_F(WorkspaceTest, PathsOfTheSystemAreBelowTheFirstRootThatHasThem) {
    putBundle(u"/own/Applications/Both.app"_s, u"com.parlo.both"_s, u"run"_s);
    putBundle(u"/Applications/Both.app"_s, u"com.parlo.both"_s, u"run"_s);
    putBundle(u"/Users/Shared/Product/Agent.app"_s, u"com.parlo.agent"_s, u"run"_s);
    EXPECT_EQ(workspace.resolve(u"/Applications/Both.app"_s), own + u"/Applications/Both.app"_s);
    EXPECT_EQ(workspace.resolve(u"/Users/Shared/Product"_s), folder.path() + u"/Users/Shared/Product"_s);
    EXPECT_EQ(workspace.resolve(u"/Applications/New.app"_s), own + u"/Applications/New.app"_s);
    for (const QString &path : {u"/Users/me/Applications/A.app"_s, u"~/Applications/A.app"_s,
                                u"/ApplicationsOf"_s, u"Applications/"_s, QString()})
        EXPECT_EQ(workspace.resolve(path), path);
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.both"_s), u"/Applications/Both.app"_s);
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.agent"_s), u"/Users/Shared/Product/Agent.app"_s);
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo"_s).isNull());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(QString()).isNull());
    EXPECT_TRUE(workspace.isFilePackage(u"/Applications/Both.app"_s));
    EXPECT_FALSE(workspace.isFilePackage(u"/Users/Shared/Product"_s));
    ASSERT_TRUE(QDir(folder.path() + u"/Users/Shared/Product"_s).removeRecursively());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo.agent"_s).isNull()) << "every call looks again";
}

TEST_F(WorkspaceTest, AnExecutableIsAFileInItsBundleThatMayBeRun) {
    const QString bundle = u"/Applications/A.app"_s;
    putBundle(bundle, u"com.parlo.a"_s, u"run"_s);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "there is none";
    const QString program = folder.path() + bundle + u"/Contents/MacOS/run"_s;
    folder.put(bundle.mid(1) + u"/Contents/MacOS/run"_s, "");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(workspace.executablePath(bundle), program);
    QFile::setPermissions(program, QFile::ReadOwner);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "it may not be run";
    for (const QString &name : {u"../../../../../../../../bin/sh"_s, u".."_s, QString()}) {
        putBundle(bundle, u"com.parlo.a"_s, name);
        EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << qPrintable(name);
    }
}

TEST_F(WorkspaceTest, AProcessGetsItsArguments) {
    const QString made = folder.path(u"a $HOME'"_s);
    EXPECT_TRUE(workspace.startProcess(u"/bin/touch"_s, {made}));
    EXPECT_TRUE(waitFor([&made] { return QFile::exists(made); }));
    EXPECT_FALSE(workspace.startProcess(folder.path(u"missing"_s), {}));
}

} // namespace
