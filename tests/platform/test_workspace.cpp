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
        expectWarning(u"there is no session bus"_s);
        platform::DesktopOptions options;
        options.rootFolder = folder.path() + u'/';
        options.defaultsFolder = folder.path();
        options.documentsFolder = u"/somewhere/Documents"_s;
        desktop = platform::makeDesktopServices(options);
    }

    void putBundle(const QString &path, const QString &identifier, const QString &executable) const {
        const QString contents = folder.path() + path + u"/Contents"_s;
        ASSERT_TRUE(QDir().mkpath(contents + u"/MacOS"_s));
        ASSERT_TRUE(desktop.propertyLists->write(
            contents + u"/Info.plist"_s,
            QVariantMap{{u"CFBundleIdentifier"_s, identifier}, {u"CFBundleExecutable"_s, executable}}));
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
    [[nodiscard]] QString outcome() const { return folder.filePath(u"outcome"_s); }
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
    EXPECT_EQ(workspace.resolve(u"/Applications/A.app"_s), folder.path() + u"/Applications/A.app"_s);
    EXPECT_EQ(workspace.resolve(u"/Users/Shared/x"_s), folder.path() + u"/Users/Shared/x"_s);
    for (const QString &path : {u"/Users/me/Applications/A.app"_s, u"~/Applications/A.app"_s,
                                u"/ApplicationsOf"_s, u"Applications/"_s, QString()})
        EXPECT_EQ(workspace.resolve(path), path);
    platform::TableWorkspace doubled;
    doubled.root = folder.path();
    EXPECT_EQ(doubled.resolve(u"/Applications/A.app"_s), workspace.resolve(u"/Applications/A.app"_s));
    EXPECT_EQ(workspace.documentsFolder(), u"/somewhere/Documents"_s);
}

TEST_F(WorkspaceTest, BundlesAreFoundByIdentifierAlsoInAProductsFolder) {
    putBundle(u"/Applications/Some App.app"_s, u"com.parlo.some"_s, u"some"_s);
    putBundle(u"/Users/Shared/Product/Agent.app"_s, u"com.parlo.agent"_s, u"agent"_s);
    ASSERT_TRUE(QDir().mkpath(folder.path() + u"/Applications/Empty.app"_s));
    const platform::Workspace &workspace = *desktop.workspace;
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.some"_s), u"/Applications/Some App.app"_s);
    EXPECT_EQ(workspace.pathForBundleIdentifier(u"com.parlo.agent"_s), u"/Users/Shared/Product/Agent.app"_s);
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo"_s).isNull());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(QString()).isNull());
    EXPECT_TRUE(workspace.isFilePackage(u"/Applications/Some App.app"_s));
    EXPECT_FALSE(workspace.isFilePackage(u"/Applications/Empty.app"_s));
    EXPECT_FALSE(workspace.isFilePackage(u"/Applications"_s));
    ASSERT_TRUE(QDir(folder.path() + u"/Applications/Some App.app"_s).removeRecursively());
    EXPECT_TRUE(workspace.pathForBundleIdentifier(u"com.parlo.some"_s).isNull()) << "every call looks again";
}

TEST_F(WorkspaceTest, AnExecutableIsAFileInItsBundleThatMayBeRun) {
    const QString bundle = u"/Applications/A.app"_s;
    const platform::Workspace &workspace = *desktop.workspace;
    EXPECT_TRUE(workspace.executablePath(bundle).isNull());
    putBundle(bundle, u"com.parlo.a"_s, u"run"_s);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "there is none";
    const QString program = putProgram(bundle + u"/Contents/MacOS/run"_s);
    EXPECT_EQ(workspace.executablePath(bundle), program);
    QFile::setPermissions(program, QFile::ReadOwner);
    EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << "it may not be run";
    for (const QString &name : {u"../../../../../bin/sh"_s, u".."_s, QString()}) {
        putBundle(bundle, u"com.parlo.a"_s, name);
        EXPECT_TRUE(workspace.executablePath(bundle).isNull()) << qPrintable(name);
    }
}

TEST_F(WorkspaceTest, AnApplicationIsStartedByItsIdentifier) {
    putBundle(u"/Applications/A.app"_s, u"com.parlo.a"_s, u"run"_s);
    EXPECT_FALSE(desktop.workspace->launchApplication(u"com.parlo.a"_s)) << "its executable is missing";
    EXPECT_FALSE(desktop.workspace->launchApplication(u"com.parlo.nobody"_s));
    putProgram(u"/Applications/A.app/Contents/MacOS/run"_s);
    EXPECT_TRUE(desktop.workspace->launchApplication(u"com.parlo.a"_s));
    EXPECT_EQ(awaitOutcome(), "started\n");
}

TEST_F(WorkspaceTest, AProcessGetsItsArgumentsAsTheyAre) {
    const QString program = putProgram(u"/program"_s);
    EXPECT_FALSE(desktop.workspace->startProcess(folder.filePath(u"missing"_s), {}));
    EXPECT_FALSE(desktop.workspace->startProcess(QString(), {}));
    EXPECT_TRUE(desktop.workspace->startProcess(program, {u"a b"_s, u"velamtg://host/start?x=$HOME&y='"_s}));
    EXPECT_EQ(awaitOutcome(), "started\na b\nvelamtg://host/start?x=$HOME&y='\n");
}

} // namespace
