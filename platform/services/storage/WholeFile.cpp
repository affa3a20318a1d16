#include "platform/services/storage/WholeFile.h"

#include <QSaveFile>

namespace platform {

bool writeWholeFile(const QString &path, const QByteArray &content, QString *error) {
    QSaveFile file(path);
    // Flushed by hand: commit() does not notice when the last buffer has no room on the disk, and would put
    // half a file in the place of the whole one.
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        file.commit())
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

} // namespace platform
