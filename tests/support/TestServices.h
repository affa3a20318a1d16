// In-memory doubles of the services, with the same contracts, for tests and for the simulation of a whole
// desktop.
#pragma once

#include "platform/services/Services.h"

#include <QMap>
#include <algorithm>
#include <map>

namespace platform {

// Its time changes only when a test advances it.
class VirtualRunLoop : public RunLoop {
public:
    TimerId callAfter(double seconds, Callback callback) override;
    void cancel(TimerId timer) override;

    // Runs all calls that are due within the next `seconds`, in order, including calls added meanwhile.
    // advance(0) repeats turns of the loop until no call is due.
    void advance(double seconds);
    [[nodiscard]] double now() const { return m_now; }
    [[nodiscard]] int pendingCount() const { return int(m_pending.size()); }

private:
    struct Pending {
        TimerId id;
        Callback callback;
    };
    std::multimap<double, Pending> m_pending; // by the time when it is due
    TimerId m_lastId = 0;
    double m_now = 0;
};

// A bus inside the process. Notifications are delivered on the run loop's next turn.
class MemoryNotificationBus : public DistributedNotificationCenter {
public:
    struct Posted {
        QString name;
        QString sender;
        TextMap userInfo;
        bool deliverImmediately;
    };

    explicit MemoryNotificationBus(RunLoop &runLoop)
        : m_runLoop(runLoop) {}
    void post(const QString &name, const QString &sender, const TextMap &userInfo,
              bool deliverImmediately) override;
    [[nodiscard]] ObserverId addObserver(const QString &name, Handler handler) override {
        return m_observers.addObserver(name, std::move(handler));
    }
    void removeObserver(ObserverId observer) override { m_observers.removeObserver(observer); }

    // All accepted notifications so far, in order, including unobserved ones.
    [[nodiscard]] const QList<Posted> &posted() const { return m_posted; }
    void clearPosted() { m_posted.clear(); }

private:
    RunLoop &m_runLoop;
    ObserverList<TextMap> m_observers;
    QList<Posted> m_posted;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

// A table of bundles and running applications.
class TableWorkspace : public Workspace {
public:
    struct BundleEntry {
        QString identifier;
        QString path;
        QString executable; // null: the bundle has none
    };
    struct Started {
        QString executable;
        QStringList arguments;
    };

    QString root; // prefixed to absolute bundle paths by resolve(); empty: nothing is prefixed
    QString home = u"/home/test"_s;
    QString documents = u"/nonexistent"_s;
    int version = 0x1068;
    QList<BundleEntry> bundles;
    QStringList running;
    QList<Started> started;
    QStringList launched;
    QStringList opened;
    int activations = 0;

    [[nodiscard]] QString resolve(const QString &path) const override { return belowRoot(root, path); }
    [[nodiscard]] QString pathForBundleIdentifier(const QString &identifier) const override;
    [[nodiscard]] bool isFilePackage(const QString &path) const override {
        return std::ranges::count(bundles, path, &BundleEntry::path) > 0;
    }
    [[nodiscard]] QString executablePath(const QString &bundlePath) const override;
    [[nodiscard]] QStringList runningApplications() const override { return running; }
    bool launchApplication(const QString &identifier) override;
    bool startProcess(const QString &executable, const QStringList &arguments) override;
    [[nodiscard]] int systemVersion() const override { return version; }
    [[nodiscard]] QString homeFolder() const override { return home; }
    [[nodiscard]] QString documentsFolder() const override { return documents; }
    bool openInFileBrowser(const QString &folder) override {
        opened.append(folder);
        return true;
    }
    void activateThisApplication() override { ++activations; }
};

class MemoryUserDefaults : public UserDefaults {
public:
    QVariantMap values;
    QMap<QString, QVariantMap> domains;
    int synchronizations = 0;

    [[nodiscard]] rt::Value value(const QString &key) const override { return values.value(key); }
    void setValue(const QString &key, const rt::Value &value) override { changeDefault(&values, key, value); }
    bool synchronize() override { return ++synchronizations > 0; }
    [[nodiscard]] rt::Value valueInDomain(const QString &domain, const QString &key) const override {
        return domains.value(domain).value(key);
    }
};

// A bundle that answers each key with the key in brackets ("[NoVelaClient]") and has a small image of every
// name, which is darker for high ratios. Interface descriptions come from `interfaceFolder`.
class EchoBundle : public Bundle {
public:
    QString interfaceFolder;

    [[nodiscard]] QString localizedString(const QString &key, const QString &,
                                          const QString &) const override {
        return u'[' + key + u']';
    }
    [[nodiscard]] QImage image(const QString &name, qreal devicePixelRatio) const override;
    [[nodiscard]] std::unique_ptr<QWidget> loadInterface(const QString &name) const override;
};

// The doubles of one test.
struct TestDesktop {
    VirtualRunLoop *runLoop;
    MemoryNotificationBus *bus;
    TableWorkspace *workspace;
    MemoryUserDefaults *userDefaults;
    EchoBundle *bundle;
};
// Fills services() with new doubles and returns pointers to them, valid until the next setServices().
TestDesktop installTestServices();

} // namespace platform
