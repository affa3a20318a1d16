// Calendar files on disk, with sentences for the user about what goes wrong.
#pragma once

#include "standin/mailhost/store/ComponentTree.h"

namespace mailhost {

// Reads a whole file; none, with a sentence in `error`, if that is not possible.
[[nodiscard]] std::optional<QByteArray> readCalendarText(const QString &path, QString *error);
// None, with a sentence in `error`, if the text is not a calendar that can be changed without damage.
[[nodiscard]] std::optional<Document> readDocument(const QString &path, const QByteArray &text,
                                                   QString *error);
// Moves a complete new file into place. `expected` is the digest of what must be there now, empty if there
// must be no file.
[[nodiscard]] bool replaceCalendarText(const QString &path, const QByteArray &text,
                                       const QByteArray &expected, QString *error);
[[nodiscard]] QByteArray digestOf(const QByteArray &text);

} // namespace mailhost
