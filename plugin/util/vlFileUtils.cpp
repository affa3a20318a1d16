#include "plugin/util/vlFileUtils.h"

#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <limits>

namespace {

const QString infoPlistOfBundle = u"/Contents/Info.plist"_s;
const QString bundleVersionKey = u"CFBundleVersion"_s;

bool isDeletable(const QFileInfo &item) {
    return QFileInfo(item.absolutePath()).isWritable();
}

// Whether `path` is `folder` or is inside it, after links are resolved.
bool isSameOrInside(const QString &path, const QString &folder) {
    const QString inner = QFileInfo(path).canonicalFilePath();
    const QString outer = QFileInfo(folder).canonicalFilePath();
    return !outer.isEmpty() && (inner == outer || inner.startsWith(outer + u'/'));
}

} // namespace

bool vlIsFileExist(const QString &path) {
    return !path.isEmpty() && QFileInfo::exists(path);
}

bool vlIsDirection(const QString &path) {
    return !path.isEmpty() && QFileInfo(path).isDir();
}

bool vlDeleteFile(const QString &path) {
    const QFileInfo item(path);
    if (path.isEmpty() || !(item.exists() || item.isSymLink()) || !isDeletable(item))
        return false;
    if (item.isDir() && !item.isSymLink())
        return QDir(path).removeRecursively();
    return QFile::remove(path);
}

std::optional<QStringList> vlGetDirectoryItems(const QString &path) {
    if (!vlIsDirection(path) || !QFileInfo(path).isReadable())
        return std::nullopt;
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                QDir::Unsorted);
}

bool vlCreateDirection(const QString &path) {
    return !path.isEmpty() && !vlIsFileExist(path) && QDir().mkpath(path);
}

bool vlMoveFile(const QString &from, const QString &to) {
    if (to.isEmpty() || !vlIsFileExist(from) || isSameOrInside(from, to) || isSameOrInside(to, from))
        return false;
    if (vlIsFileExist(to))
        vlDeleteFile(to);
    return QFile::rename(from, to);
}

QString vlGetFileVersion(const QString &path) {
    const platform::Services &services = platform::services();
    const rt::Value list =
        platform::PropertyList::read(services.workspace->resolve(path + infoPlistOfBundle));
    return rt::orEmpty(rt::textValue(rt::mapValue(list).value(bundleVersionKey)));
}

qint32 vlGetFileSizeFromPath(const QString &path) {
    return qint32(qMin<qint64>(QFileInfo(path).size(), std::numeric_limits<qint32>::max()));
}

bool vlCreateFile(const QString &path, const QString &text) {
    if (path.isEmpty() || vlIsDirection(path))
        return false;
    if (vlIsFileExist(path))
        vlDeleteFile(path);
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.write(bytes) == bytes.size() &&
           file.flush();
}
