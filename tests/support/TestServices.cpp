#include "tests/support/TestServices.h"

#include "platform/services/bundle/InterfaceLoader.h"

#include <QFileInfo>
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
    const double due = m_now + (seconds > 0 ? seconds : 0.0);
    const auto place =
        std::upper_bound(m_pending.begin(), m_pending.end(), due,
                         [](double time, const Pending &pending) { return time < pending.due; });
    m_pending.insert(place, {due, ++m_lastId, std::move(callback)});
    return m_lastId;
}

void VirtualRunLoop::cancel(TimerId timer) {
    std::erase_if(m_pending, [timer](const Pending &pending) { return pending.id == timer; });
}

void VirtualRunLoop::advance(double seconds) {
    const double end = m_now + seconds;
    while (!m_pending.empty() && m_pending.front().due <= end + timeTolerance) {
        const Pending next = std::move(m_pending.front());
        m_pending.erase(m_pending.begin());
        m_now = std::max(m_now, next.due);
        if (next.callback)
            guarded("run loop", next.callback);
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

QString TableWorkspace::resolve(const QString &path) const {
    return belowRoot(root, path);
}

QString TableWorkspace::pathForBundleIdentifier(const QString &identifier) const {
    for (const BundleEntry &bundle : bundles) {
        if (bundle.identifier == identifier)
            return bundle.path;
    }
    return {};
}

bool TableWorkspace::isFilePackage(const QString &path) const {
    return std::any_of(bundles.cbegin(), bundles.cend(),
                       [&path](const BundleEntry &bundle) { return bundle.path == path; });
}

QString TableWorkspace::executablePath(const QString &bundlePath) const {
    for (const BundleEntry &bundle : bundles) {
        if (bundle.path == bundlePath)
            return bundle.executable;
    }
    return {};
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

bool TableWorkspace::openInFileBrowser(const QString &folder) {
    opened.append(folder);
    return true;
}

// User defaults

void MemoryUserDefaults::setValue(const QString &key, const rt::Value &value) {
    changeDefault(&values, key, value);
}

bool MemoryUserDefaults::synchronize() {
    ++synchronizations;
    return true;
}

// Bundle

QString EchoBundle::localizedString(const QString &key, const QString &, const QString &) const {
    return QLatin1Char('[') + key + QLatin1Char(']');
}

QImage EchoBundle::image(const QString &name, qreal devicePixelRatio) const {
    if (missingImages.contains(name))
        return {};
    constexpr int points = 16;
    const int pixels = int(std::lround(points * devicePixelRatio));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::blue);
    return image;
}

std::unique_ptr<QWidget> EchoBundle::loadInterface(const QString &name) const {
    const QString path = interfaceFolder + u'/' + name + QLatin1String(".ui");
    return QFileInfo(path).isFile() ? InterfaceLoader(interfaceFolder).load(path) : nullptr;
}

TestDesktop installTestServices() {
    auto runLoop = std::make_unique<VirtualRunLoop>();
    auto bus = std::make_unique<MemoryNotificationBus>(*runLoop);
    auto workspace = std::make_unique<TableWorkspace>();
    auto userDefaults = std::make_unique<MemoryUserDefaults>();
    auto bundle = std::make_unique<EchoBundle>();
    const TestDesktop desktop{runLoop.get(), bus.get(), workspace.get(), userDefaults.get(), bundle.get()};
    Services fresh;
    fresh.distributedNotifications = std::move(bus);
    fresh.notifications = std::make_unique<NotificationCenter>();
    fresh.runLoop = std::move(runLoop);
    fresh.workspace = std::move(workspace);
    fresh.userDefaults = std::move(userDefaults);
    fresh.pluginBundle = std::move(bundle);
    setServices(std::move(fresh));
    return desktop;
}

} // namespace platform
