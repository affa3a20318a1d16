// Property lists and the user's defaults.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace platform {

// Property lists in XML. Dictionaries are QVariantMap, arrays QVariantList, texts QString, integers qint64,
// reals double, booleans bool, data QByteArray, dates QDateTime (UTC).
class PropertyLists {
public:
    // The largest file that is read; anything larger reads as unreadable.
    static constexpr qint64 maximumSize = qint64(32) * 1024 * 1024;
    // How deep containers may lie in one another, in what is read and in what is written.
    static constexpr int maximumDepth = 256;

    virtual ~PropertyLists() = default;
    // No value when the file is missing, too large, or not a property list.
    [[nodiscard]] virtual rt::Value read(const QString &path) const = 0;
    [[nodiscard]] virtual rt::Value parse(const QByteArray &bytes) const = 0;
    // An XML property list in UTF-8; empty when the value holds something that a property list cannot.
    // Entries without a value, null markers, null texts and characters that XML cannot carry are left out;
    // dates keep whole seconds. The same value always gives the same bytes.
    [[nodiscard]] virtual QByteArray toXml(const rt::Value &value) const = 0;
    // Writes atomically: to a temporary file beside the target, then moved over it. A file that has the same
    // bytes already is left as it is. Whether the file is there and has them.
    virtual bool write(const QString &path, const rt::Value &value) const = 0;
};

[[nodiscard]] std::unique_ptr<PropertyLists> makePropertyLists();

// The user's defaults of this process (its standard domain), and reading those of another application.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    [[nodiscard]] virtual rt::Value value(const QString &key) const = 0; // no value when absent
    // No value, and a null text, removes the key. A value that a property list cannot hold is refused with
    // one line in the log.
    virtual void setValue(const QString &key, const rt::Value &value) = 0;
    // Writes what changed since the last call; nothing when nothing did. Whether the store is on disk now.
    virtual bool synchronize() = 0;
    // One value from another domain, named by a bundle identifier; no value when either is absent.
    [[nodiscard]] virtual rt::Value valueInDomain(const QString &domain, const QString &key) const = 0;
};

} // namespace platform
