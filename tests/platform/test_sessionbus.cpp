// What only a real bus can do to the desktop's services.
#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"
#include "standin/support/PrivateBus.h"
#include "tests/support/WaitFor.h"
#include "tests/support/Warnings.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

using platform::Services;
using platform::TextMap;

const QString channel = u"channel"_s;
const QString posted = u"com.parlo.DistributedNotifications.Posted"_s;
const QString thisProgram = u"com.parlo.test"_s;
const QString otherProgram = u"com.parlo.test.other"_s;

class SessionBusTest : public testing::Test {
protected:
    Services desktopOf(const QString &identifier) {
        platform::DesktopOptions options;
        options.bundleIdentifier = identifier;
        options.rootFolder = folder.path();
        options.defaultsFolder = folder.path();
        return platform::makeDesktopServices(options);
    }

    void observe(Services &desktop) {
        std::ignore = desktop.distributedNotifications->addObserver(
            channel,
            [this](const QString &, const TextMap &userInfo) { heard.append(userInfo.value(u"n"_s)); });
    }

    static void post(Services &desktop, const QString &n) {
        desktop.distributedNotifications->post(channel, {}, {{u"n"_s, n}}, true);
    }

    QTemporaryDir folder;
    standin::PrivateBus bus;
    QStringList heard;
};

TEST_F(SessionBusTest, ProgramsHearEachOtherAndSeeEachOtherRunning) {
    ASSERT_TRUE(bus.start());
    Services one = desktopOf(thisProgram);
    EXPECT_TRUE(one.workspace->runningApplications().isEmpty()) << "it does not hear anything yet";
    observe(one);
    EXPECT_TRUE(waitFor([&one] { return one.workspace->runningApplications() == QStringList{thisProgram}; }));
    {
        Services two = desktopOf(otherProgram);
        EXPECT_TRUE(waitFor([&one] { return one.workspace->runningApplications().contains(otherProgram); }));
        const Services late = desktopOf(otherProgram); // a name that another one holds is left to it
        post(two, u"1"_s);
        post(two, u"2"_s);
    }
    ASSERT_TRUE(waitFor([this] { return heard.size() == 2; })) << "a poster that ends at once must be heard";
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s}));
    EXPECT_TRUE(waitFor([&one] { return one.workspace->runningApplications() == QStringList{thisProgram}; }));
}

TEST_F(SessionBusTest, WhatIsPostedAfterALaunchReachesTheLaunchedProgram) {
    ASSERT_TRUE(bus.start());
    Services one = desktopOf({});
    const QString contents = folder.path() + u"/Applications/Other.app/Contents"_s;
    ASSERT_TRUE(QDir().mkpath(contents + u"/MacOS"_s));
    ASSERT_TRUE(platform::PropertyList::write(
        contents + u"/Info.plist"_s,
        QVariantMap{{u"CFBundleIdentifier"_s, otherProgram}, {u"CFBundleExecutable"_s, u"true"_s}}));
    ASSERT_TRUE(QFile::link(u"/bin/true"_s, contents + u"/MacOS/true"_s));
    ASSERT_TRUE(one.workspace->launchApplication(otherProgram));
    post(one, u"1"_s);
    post(one, u"2"_s);
    Services two = desktopOf(otherProgram); // in the place of the program, which is slow to start
    observe(two);
    EXPECT_TRUE(waitFor([this] { return heard.size() == 2; }));
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s}));
}

TEST_F(SessionBusTest, ABusThatComesLateOrAgainIsUsed) {
    expectWarning(u"there is no session bus"_s);
    Services desktop = desktopOf(thisProgram);
    observe(desktop);
    EXPECT_TRUE(desktop.workspace->pathForBundleIdentifier(otherProgram).isNull());
    for (int round = 0; round < 2; ++round) {
        if (round > 0)
            expectWarning(u"the session bus went away"_s);
        bus.kill();
        ASSERT_TRUE(waitFor([&desktop] { return desktop.workspace->runningApplications().isEmpty(); }));
        expectWarning(u"\"channel\" dropped: there is no session bus"_s);
        post(desktop, u"lost"_s);
        ASSERT_TRUE(bus.start());
        ASSERT_TRUE(waitFor([&desktop] {
            return desktop.workspace->runningApplications().contains(thisProgram);
        })) << "the name is claimed again";
        post(desktop, QString::number(round));
        ASSERT_TRUE(waitFor([this, round] { return heard.size() == round + 1; }));
    }
    EXPECT_EQ(heard, (QStringList{u"0"_s, u"1"_s}));
}

TEST_F(SessionBusTest, SignalsOfAnotherFormAreIgnored) {
    ASSERT_TRUE(bus.start());
    Services desktop = desktopOf(thisProgram);
    observe(desktop);
    const QString name = u"string:"_s + channel;
    const QString sender = u"string:"_s;
    EXPECT_TRUE(bus.sendSignal(posted, {name}));
    EXPECT_TRUE(bus.sendSignal(posted, {name, u"int32:7"_s, u"dict:string:string:n,wrong"_s}));
    EXPECT_TRUE(bus.sendSignal(posted, {name, sender, u"dict:string:int32:n,7"_s}));
    EXPECT_TRUE(bus.sendSignal(posted, {name, sender, u"dict:string:string:n,wrong"_s, u"byte:1"_s}));
    EXPECT_TRUE(bus.sendSignal(u"com.parlo.DistributedNotifications.Other"_s,
                               {name, sender, u"dict:string:string:n,wrong"_s}));
    EXPECT_TRUE(bus.sendSignal(posted, {name, sender, u"dict:string:string:n,right"_s}));
    ASSERT_TRUE(waitFor([this] { return !heard.isEmpty(); }));
    EXPECT_EQ(heard, QStringList{u"right"_s});
}

TEST_F(SessionBusTest, AnObserverThatRunsAnEventLoopStillHearsTheRest) {
    ASSERT_TRUE(bus.start());
    Services desktop = desktopOf(thisProgram);
    bool isInside = false;
    std::ignore =
        desktop.distributedNotifications->addObserver(channel, [&](const QString &, const TextMap &info) {
            heard.append(info.value(u"n"_s));
            if (isInside)
                return;
            isInside = true;
            // As a dialog would; and asks the bus something, which must neither block nor lose what comes
            // meanwhile.
            EXPECT_TRUE(desktop.workspace->runningApplications().contains(thisProgram));
            post(desktop, u"3"_s);
            EXPECT_TRUE(waitFor([this] { return heard.size() == 3; }));
            heard.append(u"closed"_s);
        });
    Services other = desktopOf(otherProgram);
    post(other, u"1"_s);
    post(other, u"2"_s);
    std::ignore = other.workspace->runningApplications(); // its answer comes after both have been delivered
    ASSERT_TRUE(waitFor([this] { return heard.contains(u"closed"_s); }));
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s, u"3"_s, u"closed"_s}));
}

} // namespace
