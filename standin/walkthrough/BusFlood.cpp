#include "standin/walkthrough/BusFlood.h"

#include "platform/services/Services.h"
#include "standin/support/BusNames.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTimer>
#include <sys/resource.h>

namespace walkthrough {

namespace names = standin::names;

namespace {

constexpr int pause = 2; // milliseconds between two bursts
constexpr int burst = 4;
constexpr int leastUrgent = 19; // of the system's niceness
constexpr int hugeText = 1'000'000;
constexpr quint32 seed = 20261124; // the same messages every time

const QString channels[] = {names::answersOfClient, names::requestsToClient,
                            u"VelaOutlookPluginToVelaVideoClient"_s};
// No text is a valid request or answer with any number before it.
const QString texts[] = {u"{\"unclosed\": ["_s, u";;;;;;;;;;;;;;;"_s,   QString(),
                         u"%%%not base64%%%"_s, u"9;no such command"_s, QString(QChar(0xd800))};

template<typename T, std::size_t Size>
const T &oneOf(const T (&all)[Size], QRandomGenerator &random) {
    return all[random.bounded(int(Size))];
}

platform::TextMap uselessMessage(QRandomGenerator &random) {
    // Numbers that stand for nothing: 0, and from 200 on.
    const quint32 action = random.bounded(2) ? 0 : 200 + random.bounded(100000u);
    const QString number = QString::number(action);
    const platform::TextMap rare[] = {
        {{names::actionIdKey, number}, {names::contentKey, QString(hugeText, u'x')}},
        {{names::actionIdKey, u"not a number"_s}},
        {{names::actionIdKey, number}},
        {}};
    if (random.bounded(10) == 0)
        return oneOf(rare, random);
    return {{names::actionIdKey, number}, {names::contentKey, oneOf(texts, random)}};
}

} // namespace

int floodBus() {
    platform::setServices(platform::makeDesktopServices({}));
    // Sends as much as the bus carries, but uses only processor time that the other programs leave.
    ::setpriority(PRIO_PROCESS, 0, leastUrgent);
    platform::DistributedNotificationCenter &bus = *platform::services().distributedNotifications;
    QRandomGenerator random(seed);
    int onTheirWay = 0;
    for (const QString &channel : channels)
        static_cast<void>(bus.addObserver(
            channel, [&onTheirWay](const QString &, const platform::TextMap &) { --onTheirWay; }));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (onTheirWay > 0)
            return;
        onTheirWay = burst;
        for (int i = 0; i < burst; ++i)
            bus.post(oneOf(channels, random), QString(), uselessMessage(random), true);
    });
    timer.start(pause);
    return QCoreApplication::exec();
}

} // namespace walkthrough
