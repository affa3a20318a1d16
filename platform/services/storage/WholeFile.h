// Files that are replaced as a whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

// Puts the content into the file at the path, which is made or replaced; its folder exists. False when that
// fails, with the reason in `error` when that is given: the file then is as it was, and nothing temporary is
// left beside it. That holds on a full disk and when the process is killed in the middle too.
bool writeWholeFile(const QString &path, const QByteArray &content, QString *error = nullptr);

} // namespace platform
