#include "tests/support/TestServices.h"

#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace platform {

// Run loop

namespace {

// Sums of decimal fractions must still reach the moment that they add up to.
constexpr double timeTolerance = 1e-9;

} // namespace

TimerId VirtualRunLoop::callAfter(double seconds, Callback callback) {
    m_pending.insert({m_now + std::max(0.0, seconds), {++m_lastId, std::move(callback)}}); // not a number: 0
    return m_lastId;
}

void VirtualRunLoop::cancel(TimerId timer) {
    std::erase_if(m_pending, [timer](const auto &pending) { return pending.second.id == timer; });
}

void VirtualRunLoop::advance(double seconds) {
    const double end = m_now + seconds;
    while (!m_pending.empty() && m_pending.begin()->first <= end + timeTolerance) {
        const auto next = m_pending.extract(m_pending.begin());
        m_now = std::max(m_now, next.key());
        if (next.mapped().callback)
            guarded("run loop", next.mapped().callback);
    }
    m_now = std::max(m_now, end);
}

// Distributed notifications

void MemoryNotificationBus::post(const QString &name, const QString &sender, const TextMap &userInfo,
                                 bool deliverImmediately) {
    const QString refusal = refusalOf(name, sender, userInfo);
    if (!refusal.isNull()) {
        qWarning("notification \"%s\" dropped: %s", qPrintable(name), qPrintable(refusal));
        return;
    }
    m_posted.append({name, sender, userInfo, deliverImmediately});
    TextMap arriving = userInfo;
    for (QString &value : arriving) {
        value = value.isNull() ? u""_s : carriedText(value); // the bus cannot carry a null text
    }
    m_runLoop.callAfter(0, [this, alive = std::weak_ptr<bool>(m_alive), name, arriving] {
        if (!alive.expired())
            m_observers.post(name, arriving);
    });
}

// Workspace

QString TableWorkspace::pathForBundleIdentifier(const QString &identifier) const {
    const auto found = std::ranges::find(bundles, identifier, &BundleEntry::identifier);
    return found == bundles.end() ? QString() : found->path;
}

QString TableWorkspace::executablePath(const QString &bundlePath) const {
    const auto found = std::ranges::find(bundles, bundlePath, &BundleEntry::path);
    return found == bundles.end() ? QString() : found->executable;
}

bool TableWorkspace::launchApplication(const QString &identifier) {
    if (pathForBundleIdentifier(identifier).isNull())
        return false;
    launched.append(identifier);
    return true;
}

bool TableWorkspace::startProcess(const QString &executable, const QStringList &arguments) {
    if (executable.isEmpty())
        return false;
    started.append({executable, arguments});
    return true;
}

// Bundle

QImage EchoBundle::image(const QString &, qreal devicePixelRatio) const {
    constexpr int points = 16;
    const int pixels = int(std::lround(points * devicePixelRatio));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(devicePixelRatio > 1 ? Qt::darkBlue : Qt::blue);
    return image;
}

std::unique_ptr<QWidget> EchoBundle::loadInterface(const QString &name) const {
    return interfaceFolder.isEmpty() ? nullptr : makeFolderBundle(interfaceFolder)->loadInterface(name);
}

namespace {

// Makes a service; returns a pointer to it.
template<typename Double, typename Service, typename... Arguments>
Double *fill(std::unique_ptr<Service> &service, Arguments &&...arguments) {
    auto *made = new Double(std::forward<Arguments>(arguments)...);
    service.reset(made);
    return made;
}

} // namespace

TestDesktop installTestServices() {
    Services fresh;
    TestDesktop desktop;
    desktop.runLoop = fill<VirtualRunLoop>(fresh.runLoop);
    desktop.bus = fill<MemoryNotificationBus>(fresh.distributedNotifications, *fresh.runLoop);
    desktop.workspace = fill<TableWorkspace>(fresh.workspace);
    desktop.userDefaults = fill<MemoryUserDefaults>(fresh.userDefaults);
    desktop.bundle = fill<EchoBundle>(fresh.pluginBundle);
    fresh.notifications = std::make_unique<NotificationCenter>();
    setServices(std::move(fresh));
    return desktop;
}

} // namespace platform
