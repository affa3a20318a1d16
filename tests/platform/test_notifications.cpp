// The same claims about the bus double and about the session bus, and about notifications inside the process.
#include "platform/services/Services.h"
#include "standin/support/PrivateBus.h"
#include "tests/support/TestServices.h"
#include "tests/support/WaitFor.h"
#include "tests/support/Warnings.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using platform::DistributedNotificationCenter;
using platform::MemoryNotificationBus;
using platform::NotificationCenter;
using platform::ObserverId;
using platform::TextMap;
using platform::VirtualRunLoop;

const QString channel = u"channel"_s;
const QString endMark = u"end"_s;

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

    // Everything posted before has arrived when this comes back.
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

TEST_P(DistributedContract, APosterThatObservesHearsItselfAfterItHasPosted) {
    const TextMap userInfo{{u"text"_s, u"Grüße, 会議 😀\n"_s}, {u""_s, u"no key"_s}, {u"empty"_s, u""_s}};
    std::ignore = center->addObserver(channel, note());
    center->post(channel, QString(), userInfo, true);
    center->post(u"another"_s, u"somebody"_s, {}, true);
    center->post(channel, u"somebody"_s, {{u"null"_s, QString()}}, false);
    EXPECT_TRUE(heard.isEmpty()) << "delivered from inside post()";
    deliver();
    ASSERT_EQ(heard.size(), 2);
    EXPECT_EQ(heard[0], qMakePair(channel, userInfo));
    EXPECT_FALSE(heard[1].second.value(u"null"_s).isNull()) << "a null text cannot cross a wire";
}

TEST_P(DistributedContract, NotificationsOfAnyNameArriveInTheOrderOfTheirSender) {
    QStringList names{u"it's"_s, u"back\\slash"_s, u"a,b='c'"_s, u"Größe"_s, u" "_s, u""_s, channel};
    for (const QString &name : std::as_const(names))
        std::ignore = center->addObserver(name, note()); // their matches must not double anything
    for (int i = 0; i < 500; ++i)
        names.append(channel);
    for (int i = 0; i < names.size(); ++i)
        center->post(names[i], {}, {{u"i"_s, QString::number(i)}}, true);
    deliver();
    ASSERT_EQ(heard.size(), names.size());
    for (int i = 0; i < names.size(); ++i)
        EXPECT_EQ(heard[i], qMakePair(names[i], TextMap{{u"i"_s, QString::number(i)}}));
}

TEST_P(DistributedContract, WhoIsRemovedHearsNoMoreAndTheOthersStillDo) {
    expectWarning(u"notification: on purpose"_s);
    ObserverId second = 0;
    ObserverId first = center->addObserver(channel, [&](const QString &name, const TextMap &userInfo) {
        note()(name, userInfo);
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
    EXPECT_EQ(heard.size(), 3) << "the third";
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

TEST_P(DistributedContract, AnObserverMayDestroyTheCentre) {
    bool isOver = false;
    std::ignore = center->addObserver(channel, [&](const QString &, const TextMap &) {
        center.reset();
        isOver = true;
    });
    std::ignore = center->addObserver(channel, [](const QString &, const TextMap &) {
        ADD_FAILURE() << "called by a centre that is gone";
    });
    center->post(channel, {}, {}, true);
    center->post(channel, {}, {}, true);
    runLoop.advance(0);
    ASSERT_TRUE(waitFor([&isOver] { return isOver; }));
    QCoreApplication::processEvents();
}

TEST(NotificationCenter, DeliversAtOnceAndToThoseWhoWereThere) {
    NotificationCenter center;
    QStringList heard;
    const auto note = [&heard](const QString &name, const QVariantMap &userInfo) {
        heard.append(name + userInfo.value(u"n"_s).toString());
    };
    std::ignore = center.addObserver(u"inner"_s, note);
    std::ignore = center.addObserver(channel, [&](const QString &name, const QVariantMap &userInfo) {
        center.post(u"inner"_s, {});
        note(name, userInfo);
        std::ignore = center.addObserver(
            channel, [&heard](const QString &, const QVariantMap &) { heard.append(u"late"_s); });
    });
    center.post(channel, {{u"n"_s, 1}});
    EXPECT_EQ(heard, (QStringList{u"inner"_s, u"channel1"_s}));
    center.post(channel, {{u"n"_s, 2}});
    EXPECT_EQ(heard.mid(2), (QStringList{u"inner"_s, u"channel2"_s, u"late"_s}));
}

} // namespace
