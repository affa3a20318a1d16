// The same claims about the bus double and about the session bus; then what only a real bus can do.
#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"
#include "standin/support/PrivateBus.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/TestServices.h"
#include "tests/support/WaitFor.h"
#include "tests/support/Warnings.h"

#include <QCoreApplication>
#include <stdexcept>

namespace {

using platform::DistributedNotificationCenter;
using platform::MemoryNotificationBus;
using platform::ObserverId;
using platform::Services;
using platform::TextMap;
using platform::VirtualRunLoop;

const QString channel = u"channel"_s;
const QString endMark = u"end"_s;
const QString thisProgram = u"com.parlo.test"_s;
const QString otherProgram = u"com.parlo.test.other"_s;

class DistributedContract : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        if (!GetParam()) {
            center = std::make_unique<MemoryNotificationBus>(runLoop);
            return;
        }
        bus = std::make_unique<standin::PrivateBus>();
        ASSERT_TRUE(bus->start());
        center = std::move(platform::makeDesktopServices({}).distributedNotifications);
    }

    DistributedNotificationCenter::Handler note() {
        return [this](const QString &name, const TextMap &userInfo) { heard.append({name, userInfo}); };
    }

    // Returns when everything that was posted before has arrived.
    void deliver() {
        bool isOver = false;
        const ObserverId observer =
            center->addObserver(endMark, [&isOver](const QString &, const TextMap &) { isOver = true; });
        center->post(endMark, {}, {}, true);
        runLoop.advance(0);
        ASSERT_TRUE(waitFor([&isOver] { return isOver; }));
        center->removeObserver(observer);
    }

    VirtualRunLoop runLoop;
    std::unique_ptr<standin::PrivateBus> bus;
    std::unique_ptr<DistributedNotificationCenter> center;
    QList<QPair<QString, TextMap>> heard;
};

INSTANTIATE_TEST_SUITE_P(Double, DistributedContract, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Desktop, DistributedContract, testing::Values(true));

TEST_P(DistributedContract, NotificationsOfAnyNameArriveInTheOrderOfTheirSender) {
    QStringList names{u"it's"_s, u"back\\slash"_s, u"a,b='c'"_s, u"Größe"_s, u" "_s, u""_s, channel};
    for (const QString &name : std::as_const(names))
        std::ignore = center->addObserver(name, note()); // their matches must not double anything
    const TextMap odd{{u"text"_s, u"Grüße, 会議 😀\n"_s}, {u""_s, u"no key"_s}, {u"null"_s, QString()}};
    center->post(u"not observed"_s, {}, {}, true);
    center->post(channel, u"somebody"_s, odd, false);
    for (int i = 0; i < 500; ++i)
        names.append(channel);
    for (int i = 0; i < names.size(); ++i)
        center->post(names[i], {}, {{u"i"_s, QString::number(i)}}, true);
    EXPECT_TRUE(heard.isEmpty()) << "delivered from inside post()";
    deliver();
    ASSERT_EQ(heard.size(), names.size() + 1);
    EXPECT_EQ(heard[0], qMakePair(channel, odd));
    EXPECT_FALSE(heard[0].second.value(u"null"_s).isNull()) << "the bus cannot carry a null text";
    for (int i = 0; i < names.size(); ++i)
        EXPECT_EQ(heard[i + 1], qMakePair(names[i], TextMap{{u"i"_s, QString::number(i)}}));
}

TEST_P(DistributedContract, ADeliveryReachesObserversThatWereThereAndStillAre) {
    expectWarning(u"notification: on purpose"_s);
    ObserverId second = 0;
    ObserverId first = center->addObserver(channel, [&](const QString &name, const TextMap &userInfo) {
        note()(name, userInfo);
        std::ignore = center->addObserver(channel, note());
        center->removeObserver(first);
        center->removeObserver(second);
        throw std::runtime_error("on purpose");
    });
    second = center->addObserver(channel, note());
    std::ignore = center->addObserver(channel, note());
    center->removeObserver(0);
    center->removeObserver(999);
    center->post(channel, {}, {}, true);
    deliver();
    EXPECT_EQ(heard.size(), 2) << "the first and the third";
    center->post(channel, {}, {}, true);
    deliver();
    EXPECT_EQ(heard.size(), 4) << "the third and the one that the first added";
}

TEST_P(DistributedContract, WhatCannotBeSentIsDroppedAndTheNextOneArrives) {
    expectWarning(u"\"channel\" dropped: it contains a NUL"_s);
    expectWarning(u"\"channel\" dropped: it is too large"_s);
    std::ignore = center->addObserver(channel, note());
    const QString nul(QChar(u'\0'));
    center->post(channel, nul, {}, true);
    center->post(channel, {}, {{nul, u"value"_s}}, true);
    center->post(channel, {}, {{u"key"_s, nul}}, true);
    const QString half(DistributedNotificationCenter::maximumSize / 4 + 1, u'ä'); // two bytes each
    center->post(channel, {}, {{u"a"_s, half}, {u"b"_s, half}}, true);
    const QString large(DistributedNotificationCenter::maximumSize - channel.size() - 1, u'x');
    center->post(channel, {}, {{u"k"_s, large}}, true);
    deliver();
    ASSERT_EQ(heard.size(), 1);
    EXPECT_EQ(heard[0].second.value(u"k"_s), large);
}

// --- what only a real bus can do

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

    static bool awaitRunning(const Services &desktop, const QStringList &programs) {
        return waitFor([&] {
            QStringList running = desktop.workspace->runningApplications();
            running.sort();
            return running == programs;
        });
    }

    TestFolder folder;
    standin::PrivateBus bus;
    QStringList heard;
};

TEST_F(SessionBusTest, ProgramsHearEachOtherAndSeeEachOtherRunning) {
    ASSERT_TRUE(bus.start());
    Services one = desktopOf(thisProgram);
    EXPECT_TRUE(one.workspace->runningApplications().isEmpty()) << "it does not hear anything yet";
    observe(one);
    EXPECT_TRUE(awaitRunning(one, {thisProgram}));
    {
        Services two = desktopOf(otherProgram);
        EXPECT_TRUE(awaitRunning(one, {thisProgram, otherProgram}));
        const Services late = desktopOf(otherProgram); // does not take the name from its owner
        post(two, u"1"_s);
        post(two, u"2"_s);
    }
    std::ignore = one.workspace->runningApplications(); // receives both before its answer
    ASSERT_TRUE(waitFor([this] { return heard.size() == 2; })) << "a poster that ends at once must be heard";
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s}));
    EXPECT_TRUE(awaitRunning(one, {thisProgram}));
}

TEST_F(SessionBusTest, WhatIsPostedAfterALaunchReachesTheLaunchedProgram) {
    ASSERT_TRUE(bus.start());
    Services one = desktopOf({});
    const QString contents = folder.path(u"Applications/Other.app/Contents"_s);
    ASSERT_TRUE(QDir().mkpath(contents + u"/MacOS"_s));
    ASSERT_TRUE(platform::PropertyList::write(
        contents + u"/Info.plist"_s,
        QVariantMap{{u"CFBundleIdentifier"_s, otherProgram}, {u"CFBundleExecutable"_s, u"true"_s}}));
    ASSERT_TRUE(QFile::link(u"/bin/true"_s, contents + u"/MacOS/true"_s));
    ASSERT_TRUE(one.workspace->launchApplication(otherProgram));
    post(one, u"1"_s);
    post(one, u"2"_s);
    QCoreApplication::processEvents();
    Services two = desktopOf(otherProgram); // in place of the program, which is slow to start
    observe(two);
    EXPECT_TRUE(waitFor([this] { return heard.size() == 2; }));
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s}));
}

TEST_F(SessionBusTest, ABusThatStartsLateOrAgainIsUsed) {
    expectWarning(u"there is no session bus"_s);
    Services desktop = desktopOf(thisProgram);
    observe(desktop);
    for (int round = 0; round < 2; ++round) {
        if (round > 0)
            expectWarning(u"the session bus went away"_s);
        bus.kill();
        ASSERT_TRUE(awaitRunning(desktop, {}));
        expectWarning(u"\"channel\" dropped: there is no session bus"_s);
        post(desktop, u"lost"_s);
        ASSERT_TRUE(bus.start());
        ASSERT_TRUE(awaitRunning(desktop, {thisProgram})) << "the name is claimed again";
        post(desktop, QString::number(round));
        ASSERT_TRUE(waitFor([this, round] { return heard.size() == round + 1; }));
    }
    EXPECT_EQ(heard, (QStringList{u"0"_s, u"1"_s}));
}

TEST_F(SessionBusTest, AnObserverThatRunsAnEventLoopStillHearsTheRest) {
    ASSERT_TRUE(bus.start());
    Services desktop = desktopOf(thisProgram);
    const auto handler = [this, &desktop](const QString &, const TextMap &info) {
        heard.append(info.value(u"n"_s));
        if (heard.size() > 1)
            return;
        // As a dialog would. The question to the bus must neither block nor lose what arrives meanwhile.
        EXPECT_TRUE(desktop.workspace->runningApplications().contains(thisProgram));
        post(desktop, u"3"_s);
        EXPECT_TRUE(waitFor([this] { return heard.size() == 3; }));
        heard.append(u"closed"_s);
    };
    std::ignore = desktop.distributedNotifications->addObserver(channel, handler);
    Services other = desktopOf(otherProgram);
    post(other, u"1"_s);
    post(other, u"2"_s);
    std::ignore = other.workspace->runningApplications(); // its answer comes after both have been delivered
    ASSERT_TRUE(waitFor([this] { return heard.contains(u"closed"_s); }));
    EXPECT_EQ(heard, (QStringList{u"1"_s, u"2"_s, u"3"_s, u"closed"_s}));
}

} // namespace
