#include "platform/services/storage/FileUserDefaults.h"

#include "platform/services/propertylist/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace platform {

namespace {

// Domains must be identifiers; other texts could name a file in another folder.
bool isDomainName(const QString &domain) {
    return !domain.isEmpty() && !domain.startsWith(u'.') && !domain.contains(u'/') &&
           !domain.contains(QChar(u'\0'));
}

// The new path of the file; null if it could not be moved.
QString moveAside(const QString &path) {
    constexpr int attempts = 1000;
    for (int number = 1; number <= attempts; ++number) {
        const QString aside = path + u".broken-%1"_s.arg(number);
        if (!QFileInfo::exists(aside))
            return QFile::rename(path, aside) ? aside : QString();
    }
    return {};
}

} // namespace

FileUserDefaults::FileUserDefaults(const QString &folder, const QString &domain)
    : m_folder(folder)
    , m_domain(domain)
    , m_isWritable(isDomainName(domain)) {
    if (m_isWritable)
        load();
}

QString FileUserDefaults::pathOf(const QString &domain) const {
    return m_folder + QLatin1Char('/') + domain + QLatin1String(".plist");
}

void FileUserDefaults::load() {
    const QString path = pathOf(m_domain);
    if (!QFileInfo::exists(path))
        return;
    const rt::Value root = PropertyList::read(path);
    if (root.typeId() == QMetaType::QVariantMap) {
        m_values = root.toMap();
        return;
    }
    const QString aside = moveAside(path);
    m_isWritable = !aside.isNull();
    if (m_isWritable)
        qWarning("the defaults %s cannot be read and were moved to %s", qPrintable(path), qPrintable(aside));
    else
        qWarning("the defaults %s can be neither read nor moved: they are left as they are",
                 qPrintable(path));
}

void FileUserDefaults::setValue(const QString &key, const rt::Value &value) {
    if (changeDefault(&m_values, key, value))
        m_isChanged = true;
}

bool FileUserDefaults::synchronize() {
    if (!m_isChanged)
        return true;
    if (!m_isWritable || !QDir().mkpath(m_folder) || !PropertyList::write(pathOf(m_domain), m_values))
        return false;
    m_isChanged = false;
    return true;
}

rt::Value FileUserDefaults::valueInDomain(const QString &domain, const QString &key) const {
    if (domain == m_domain)
        return value(key);
    return isDomainName(domain) ? rt::mapValue(PropertyList::read(pathOf(domain))).value(key) : rt::Value();
}

} // namespace platform
