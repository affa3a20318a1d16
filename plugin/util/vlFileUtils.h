// Basic file-system operations. A null path counts as a missing file. The functions never throw or log.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Whether the file or folder exists; follows links.
[[nodiscard]] bool vlIsFileExist(const QString &path);
[[nodiscard]] bool vlIsDirection(const QString &path);
// Removes the file, the link (not its target), or the folder with its content. Returns false if it does not
// exist or cannot be removed.
bool vlDeleteFile(const QString &path);
// The names of the entries, including hidden ones, in no particular order; no value unless the path is a
// readable folder.
[[nodiscard]] std::optional<QStringList> vlGetDirectoryItems(const QString &path);
// Creates the folder and its missing parents. Returns false if the path already exists.
bool vlCreateDirection(const QString &path);
// Moves the item and replaces an existing target. Returns false and deletes nothing if the source is missing,
// or if one path equals or contains the other.
bool vlMoveFile(const QString &from, const QString &to);
// "CFBundleVersion" of the bundle folder (an absolute path, with or without the root folder); "" if it has
// none.
[[nodiscard]] QString vlGetFileVersion(const QString &path);
// The size in bytes, limited to the largest qint32; 0 if the item does not exist.
[[nodiscard]] qint32 vlGetFileSizeFromPath(const QString &path);
// Writes the text as UTF-8 into a new file, which replaces an existing file but not a folder. Returns whether
// it was written.
bool vlCreateFile(const QString &path, const QString &text);
