// Plain file-system operations. A null path is a missing path; nothing throws or logs.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Whether a file or a folder is there; links are followed.
[[nodiscard]] bool vlIsFileExist(const QString &path);
[[nodiscard]] bool vlIsDirection(const QString &path);
// Removes the file, the link (not what it leads to), or the folder with all that is in it. False when there
// is nothing or it cannot be removed.
bool vlDeleteFile(const QString &path);
// The names of the entries, hidden ones included, in no order; none unless the path is a folder that can be
// listed.
[[nodiscard]] std::optional<QStringList> vlGetDirectoryItems(const QString &path);
// Makes the folder and its missing parents. False when anything is there already.
bool vlCreateDirection(const QString &path);
// Moves the item; an existing target is deleted first. False, and nothing deleted, when the source is
// missing, or when one of the two is the other or lies in it.
bool vlMoveFile(const QString &from, const QString &to);
// "CFBundleVersion" of the bundle folder (an absolute path of the system or of this machine); "" when it has
// none.
[[nodiscard]] QString vlGetFileVersion(const QString &path);
// Bytes, at most the largest qint32; 0 when there is no such item.
[[nodiscard]] qint32 vlGetFileSizeFromPath(const QString &path);
// A new file with the UTF-8 of the text, in place of an existing one; whether it was made. A folder is left
// alone.
bool vlCreateFile(const QString &path, const QString &text);
