#include "standin/walkthrough/OwnRoot.h"

#include <QDir>
#include <QFile>

namespace walkthrough {

void makeRoot(const QString &folder, const QString &installed) {
    const QString applications = QStringLiteral("Applications");
    const QDir from(installed);
    const QDir to(folder);
    to.mkpath(applications);
    QStringList linked;
    for (const QString &entry : from.entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        if (entry != applications)
            linked << entry;
    for (const QString &bundle : QDir(from.filePath(applications)).entryList({QStringLiteral("*.app")}))
        if (bundle != QStringLiteral("Parlo Host.app"))
            linked << applications + u'/' + bundle;
    for (const QString &entry : std::as_const(linked))
        QFile::link(from.absoluteFilePath(entry), to.filePath(entry));
}

} // namespace walkthrough
