// A root folder and user folders for the programs of one test or walk-through alone.
#pragma once

#include <QProcessEnvironment>

namespace standin {

// Makes `folder` a root below which the programs are found, with links to those installed below `installed`
// but none to the host: each host writes its version there, and one of another generation would change it
// under this one.
void makeRoot(const QString &folder, const QString &installed);

// The folders that programs keep for their user, made below `folder`: values for the environment.
[[nodiscard]] QProcessEnvironment userFolders(const QString &folder);

} // namespace standin
