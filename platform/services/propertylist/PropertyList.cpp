#include "platform/services/propertylist/PropertyList.h"

#include "platform/services/storage/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace platform {

namespace {

// No more than a list may have: null for a longer file, and for one that cannot be read.
QByteArray contentOf(const QString &path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    // One more than is parsed: the file may be growing. Not simply that much: the memory is taken beforehand.
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
