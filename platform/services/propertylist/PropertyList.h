// Property lists: in bytes and in files.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>
#include <QString>

namespace platform {

// Property lists in XML. Dictionaries are QVariantMap, arrays QVariantList, texts QString, integers qint64,
// reals double, booleans bool, data QByteArray, dates QDateTime (UTC).
class PropertyList {
public:
    // The largest file that is read; anything larger reads as unreadable.
    static constexpr qint64 maximumSize = qint64(32) * 1024 * 1024;
    // How deep containers may lie in one another, in what is read and in what is written.
    static constexpr int maximumDepth = 256;

    // No value when the file is missing, too large, or not one whole well-formed property list.
    [[nodiscard]] static rt::Value read(const QString &path);
    [[nodiscard]] static rt::Value parse(const QByteArray &bytes);
    // An XML property list in UTF-8; empty when the value holds something that a property list cannot, or too
    // deep.
    // Entries without a value, null markers, null texts and characters that XML cannot carry are left out;
    // dates keep whole seconds. The same value always gives the same bytes.
    [[nodiscard]] static QByteArray toXml(const rt::Value &value);
    // Writes atomically: to a temporary file beside the target, then moved over it. A file that has the same
    // bytes already is left as it is. Whether the file is there and has them.
    static bool write(const QString &path, const rt::Value &value);
};

} // namespace platform
