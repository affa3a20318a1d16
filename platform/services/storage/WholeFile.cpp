#include "platform/services/storage/WholeFile.h"

#include <QSaveFile>

namespace platform {

bool writeWholeFile(const QString &path, const QByteArray &content, QString *error) {
    QSaveFile file(path);
    // The explicit flush is needed: commit() does not notice if the disk is full for the last buffer, and
    // would replace the file with a truncated one.
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        file.commit())
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

} // namespace platform
