// Tables of localised texts.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace platform {

// The entries of a `.strings` file: UTF-8 lines of `"key" = "text";` with C comments and the escapes \" \\ \n
// \t \r and \Uxxxx. Skips malformed input up to the next ";"; sets `isWhole` (may be null) to whether it
// skipped nothing.
[[nodiscard]] QHash<QString, QString> parseStringsTable(const QByteArray &bytes, bool *isWhole = nullptr);

} // namespace platform
