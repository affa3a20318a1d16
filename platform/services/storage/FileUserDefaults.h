// The user's defaults as one XML property list for each domain.
#pragma once

#include "platform/services/storage/UserDefaults.h"

#include <QVariantMap>

namespace platform {

// Files are `<folder>/<domain>.plist`. Reads its own domain once, at construction, and other domains on each
// access. An unreadable file of its own domain is renamed (to "….broken-N") and logged before the first
// write; if the renaming fails, nothing is written.
class FileUserDefaults : public UserDefaults {
public:
    // With an empty domain the values are lost when the process ends.
    FileUserDefaults(const QString &folder, const QString &domain);
    [[nodiscard]] rt::Value value(const QString &key) const override { return m_values.value(key); }
    void setValue(const QString &key, const rt::Value &value) override;
    bool synchronize() override;
    [[nodiscard]] rt::Value valueInDomain(const QString &domain, const QString &key) const override;

private:
    void load();
    [[nodiscard]] QString pathOf(const QString &domain) const;

    QString m_folder;
    QString m_domain;
    QVariantMap m_values;
    bool m_isChanged = false;
    bool m_isWritable = false;
};

} // namespace platform
