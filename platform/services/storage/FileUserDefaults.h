// The user's defaults as one XML property list for each domain.
#pragma once

#include "platform/services/storage/UserDefaults.h"

#include <QVariantMap>

namespace platform {

// Files are `<folder>/<domain>.plist`. The own domain is read once, at construction; other domains whenever
// they are asked. A file of the own domain that cannot be read is moved aside (to "….broken-N"), with a line
// in the log, before anything is written; when even that fails nothing is written at all.
class FileUserDefaults : public UserDefaults {
public:
    // With an empty domain nothing is kept beyond the process.
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
