// Property lists in files.
#include "platform/services/propertylist/XmlPropertyList.h"
#include "platform/services/storage/Storage.h"
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
    const QByteArray content = file.read(std::min(file.size(), PropertyLists::maximumSize) + 1);
    return content.size() > PropertyLists::maximumSize ? QByteArray() : content;
}

class FilePropertyLists : public PropertyLists {
public:
    rt::Value read(const QString &path) const override { return parse(contentOf(path)); }

    rt::Value parse(const QByteArray &bytes) const override {
        return bytes.size() > maximumSize ? rt::Value() : fromXmlPropertyList(bytes);
    }

    QByteArray toXml(const rt::Value &value) const override { return toXmlPropertyList(value); }

    bool write(const QString &path, const rt::Value &value) const override {
        const QByteArray xml = toXml(value);
        if (xml.isEmpty() || xml.size() > maximumSize)
            return false;
        return contentOf(path) == xml || writeWholeFile(path, xml);
    }
};

} // namespace

std::unique_ptr<PropertyLists> makePropertyLists() {
    return std::make_unique<FilePropertyLists>();
}

} // namespace platform
