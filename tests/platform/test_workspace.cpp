// Applications as folders, without a bus.
#include "platform/services/Services.h"
#include "platform/services/TestServices.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/Warnings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class WorkspaceTest : public testing::Test {
protected:
    WorkspaceTest() {
        expectWarning(QStringLiteral("there is no session bus"));
        platform::DesktopOptions options;
        options.rootFolder = folder.path() + u'/';
        options.defaultsFolder = folder.path();
        options.documentsFolder = QStringLiteral("/somewhere/Documents");
        desktop = platform::makeDesktopServices(options);
    }

    void putBundle(const QString &path, const QString &identifier, const QString &executable) const {
        const QString contents = folder.path() + path + QStringLiteral("/Contents");
        ASSERT_TRUE(QDir().mkpath(contents + QStringLiteral("/MacOS")));
        ASSERT_TRUE(
            desktop.propertyLists->write(contents + QStringLiteral("/Info.plist"),
                                         QVariantMap{{QStringLiteral("CFBundleIdentifier"), identifier},
                                                     {QStringLiteral("CFBundleExecutable"), executable}}));
    }

    // Writes its arguments to a file, one a line.
    QString putProgram(const QString &path) const {
        const QString program = folder.path() + path;
        QFile file(program);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nprintf '%s\\n' \"started\" \"$@\" > '" + outcome().toUtf8() + ".new'\nmv '" +
                   outcome().toUtf8() + ".new' '" + outcome().toUtf8() + "'\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return program;
    }
    [[nodiscard]] QString outcome() const { return folder.filePath(QStringLiteral("outcome")); }
    [[nodiscard]] QByteArray awaitOutcome() const {
        EXPECT_TRUE(waitFor([this] { return QFile::exists(outcome()); }));
        QFile file(outcome());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    PrivateBus bus; // never started: the address leads nowhere
    QTemporaryDir folder;
    platform::Services desktop;
};

TEST_F(WorkspaceTest, OnlyPathsOfTheSystemLieBelowTheRoot) {
    const platform::Workspace &workspace = *desktop.workspace;
    EXPECT_EQ(workspace.resolve(u"/Applications/A.app"_qs), folder.path() + u"/Applications/A.app"_qs);
    EXPECT_EQ(workspace.resolve(u"/Users/Shared/x"_qs), folder.path() + u"/Users/Shared/x"_qs);
    for (const QString &path : {u"/Users/me/Applications/A.app"_qs, u"~/Applications/A.app"_qs,
                                u"/ApplicationsOf"_qs, u"Applications/"_qs, QString()})
        EXPECT_EQ(workspace.resolve(path), path);
    platform::TableWorkspace doubled;
    doubled.root = folder.path();
    EXPECT_EQ(doubled.resolve(u"/Applications/A.app"_qs), workspace.resolve(u"/Applications/A.app"_qs));
    EXPECT_EQ(workspace.documentsFolder(), u"/somewhere/Documents"_qs);
}

TEST_F(WorkspaceTest, BundlesAreFoundByIdentifierAlsoInAProductsFolder) {
    putBundle(u"/Applications/Some App.app"_qs, u"com.parlo.some"_qs, u"some"_qs);
    putBundle(u"/Users/Shared/Product/Agent.app"_qs, u"com.parlo.agent"_qs, u"agent"_qs);
    ASSERT_TRUE(QDir().mkpath(folder.path() + u"/Applications/Empty.app"_qs));
    const platform::Workspace &workspace = *desktop.workspace;
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.some"_qs), u"/Applications/Some App.app"_qs);
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.agent"_qs),
              u"/Users/Shared/Product/Agent.app"_qs);
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo"_qs).isNull());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(QString()).isNull());
    EXPECT_TRUE(workspace.isFilePackage(u"/Applications/Some App.app"_qs));
    EXPECT_FALSE(workspace.isFilePackage(u"/Applications/Empty.app"_qs));
    EXPECT_FALSE(workspace.isFilePackage(u"/Applications"_qs));
    ASSERT_TRUE(QDir(folder.path() + u"/Applications/Some App.app"_qs).removeRecursively());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo.some"_qs).isNull()) << "every call looks again";
}

TEST_F(WorkspaceTest, AnExecutableIsAFileInItsBundleThatMayBeRun) {
    const QString bundle = u"/Applications/A.app"_qs;
    const platform::Workspace &workspace = *desktop.workspace;
    EXPECT_TRUE(workspace.executablePath(bundle).isNull());
    putBundle(bundle, u"com.parlo.a"_qs, u"run"_qs);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "there is none";
    const QString program = putProgram(bundle + u"/Contents/MacOS/run"_qs);
    EXPECT_EQ(workspace.executablePath(bundle), program);
    QFile::setPermissions(program, QFile::ReadOwner);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "it may not be run";
    for (const QString &name : {u"../../../../../bin/sh"_qs, u".."_qs, QString()}) {
        putBundle(bundle, u"com.parlo.a"_qs, name);
        EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << qPrintable(name);
    }
}

TEST_F(WorkspaceTest, AnApplicationIsStartedByItsIdentifier) {
    putBundle(u"/Applications/A.app"_qs, u"com.parlo.a"_qs, u"run"_qs);
    EXPECT_FALSE(desktop.workspace->launchApplication(u"com.parlo.a"_qs)) << "its executable is missing";
    EXPECT_FALSE(desktop.workspace->launchApplication(u"com.parlo.nobody"_qs));
    putProgram(u"/Applications/A.app/Contents/MacOS/run"_qs);
    EXPECT_TRUE(desktop.workspace->launchApplication(u"com.parlo.a"_qs));
    EXPECT_EQ(awaitOutcome(), "started\n");
}

TEST_F(WorkspaceTest, AProcessGetsItsArgumentsAsTheyAre) {
    const QString program = putProgram(u"/program"_qs);
    EXPECT_FALSE(desktop.workspace->startProcess(folder.filePath(u"missing"_qs), {}));
    EXPECT_FALSE(desktop.workspace->startProcess(QString(), {}));
    EXPECT_TRUE(
        desktop.workspace->startProcess(program, {u"a b"_qs, u"velamtg://host/start?x=$HOME&y='"_qs}));
    EXPECT_EQ(awaitOutcome(), "started\na b\nvelamtg://host/start?x=$HOME&y='\n");
}

TEST_F(WorkspaceTest, AFolderThatIsNotThereCannotBeShown) {
    EXPECT_FALSE(desktop.workspace->openInFileBrowser(folder.filePath(u"missing"_qs)));
}

TEST_F(WorkspaceTest, TheSystemIsNewEnoughForItsCallers) {
    constexpr int oldestSupported = 0x1060; // which itself is not
    EXPECT_GT(desktop.workspace->systemVersion(), oldestSupported);
}

} // namespace
