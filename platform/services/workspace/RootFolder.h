// Maps the system's absolute bundle paths to paths below a root folder.
#pragma once

#include "platform/Literals.h"

#include <QString>
#include <QStringList>

namespace platform {

// The folders (with a trailing "/") that are mapped below the root folder.
inline const QStringList bundleFolders{u"/Applications/"_s, u"/Users/Shared/"_s};

// The path below `root` if it begins with one of those folders; otherwise, or with an empty root, the path
// itself.
inline QString belowRoot(const QString &root, const QString &path) {
    for (const QString &folder : bundleFolders) {
        if (path.startsWith(folder))
            return root + path;
    }
    return path;
}

} // namespace platform
