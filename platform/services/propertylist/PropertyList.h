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
    // The largest readable file; a larger one counts as unreadable.
    static constexpr qint64 maximumSize = qint64(32) * 1024 * 1024;
    // The limit of nested containers for reading and writing.
    static constexpr int maximumDepth = 256;

    // No value if the file is missing, too large, or not exactly one well-formed property list.
    [[nodiscard]] static rt::Value read(const QString &path);
    [[nodiscard]] static rt::Value parse(const QByteArray &bytes);
    // An XML property list in UTF-8; empty if the value contains a type that a property list cannot have or
    // is nested too deep. Entries without a value, null markers, null texts and characters that XML cannot
    // carry are left out; dates keep whole seconds. The same value always gives the same bytes.
    [[nodiscard]] static QByteArray toXml(const rt::Value &value);
    // Writes atomically: into a temporary file beside the target, then moves it over the target. Does not
    // touch a file that already has the same bytes. Returns whether the file has them.
    static bool write(const QString &path, const rt::Value &value);
};

} // namespace platform
