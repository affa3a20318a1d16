#include "platform/services/propertylist/PropertyList.h"

#include "platform/services/storage/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace platform {

namespace {

// The content of the file; null if it is longer than allowed or unreadable.
QByteArray contentOf(const QString &path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    // Reads one byte more than allowed, because the file may be growing. Bounded by the file's size, because
    // read() allocates the memory first.
    const QByteArray content = file.read(std::min(file.size(), PropertyList::maximumSize) + 1);
    return content.size() > PropertyList::maximumSize ? QByteArray() : content;
}

} // namespace

rt::Value PropertyList::read(const QString &path) {
    return parse(contentOf(path));
}

bool PropertyList::write(const QString &path, const rt::Value &value) {
    const QByteArray xml = toXml(value);
    if (xml.isEmpty() || xml.size() > maximumSize)
        return false;
    return contentOf(path) == xml || writeWholeFile(path, xml);
}

} // namespace platform
