// Tables of localised texts.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace platform {

// The entries of a `.strings` file: UTF-8 lines of `"key" = "text";` with C comments and the escapes \" \\ \n
// \t \r and \Uxxxx. What is malformed is left out from there to the next ";" on; `isWhole` (may be null) says
// whether nothing was.
[[nodiscard]] QHash<QString, QString> parseStringsTable(const QByteArray &bytes, bool *isWhole = nullptr);

} // namespace platform
