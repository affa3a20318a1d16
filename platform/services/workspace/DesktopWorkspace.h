// Applications as folders below the root folders and as names on the session bus.
#pragma once

#include "platform/services/workspace/Workspace.h"

#include <QVariantMap>
#include <memory>

namespace platform {

class SessionBus;

class DesktopWorkspace : public Workspace {
public:
    // REQUIRES: `roots` is not empty. Earlier roots take precedence. An empty `documents` stands for the
    // desktop's Documents folder.
    DesktopWorkspace(std::shared_ptr<SessionBus> bus, const QStringList &roots, const QString &documents);
    [[nodiscard]] QString resolve(const QString &path) const override;
    [[nodiscard]] QString pathForBundleIdentifier(const QString &identifier) const override;
    [[nodiscard]] bool isFilePackage(const QString &path) const override;
    [[nodiscard]] QString executablePath(const QString &bundlePath) const override;
    [[nodiscard]] QStringList runningApplications() const override;
    bool launchApplication(const QString &identifier) override;
    bool startProcess(const QString &executable, const QStringList &arguments) override;
    [[nodiscard]] int systemVersion() const override;
    [[nodiscard]] QString homeFolder() const override;
    [[nodiscard]] QString documentsFolder() const override;
    bool openInFileBrowser(const QString &folder) override;
    void activateThisApplication() override;

private:
    [[nodiscard]] QVariantMap infoOf(const QString &bundlePath) const;
    [[nodiscard]] QStringList everyPlaceOf(const QString &path) const;
    [[nodiscard]] QString bundleOfProcess(qint64 process, const QString &identifier) const;
    [[nodiscard]] QString bundleBelow(const QString &folder, const QString &identifier, int depth) const;

    std::shared_ptr<SessionBus> m_bus;
    QStringList m_roots; // without a trailing "/"
    QString m_documents;
};

} // namespace platform
