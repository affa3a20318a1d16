// Replaces files as a whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

// Creates or replaces the file at the path; the folder must exist. On failure it returns false, sets the
// reason in `error` if given, keeps the old file and removes the temporary one. The old file also survives a
// full disk and a killed process.
bool writeWholeFile(const QString &path, const QByteArray &content, QString *error = nullptr);

} // namespace platform
