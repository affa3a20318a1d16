#include "standin/walkthrough/OwnRoot.h"

#include "platform/Literals.h"

#include <QDir>
#include <QFile>

namespace walkthrough {

void makeRoot(const QString &folder, const QString &installed) {
    const QString applications = u"Applications"_s;
    const QDir from(installed);
    const QDir to(folder);
    to.mkpath(applications);
    QStringList linked;
    for (const QString &entry : from.entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        if (entry != applications)
            linked << entry;
    for (const QString &bundle : QDir(from.filePath(applications)).entryList({u"*.app"_s}))
        if (bundle != u"Parlo Host.app"_s)
            linked << applications + u'/' + bundle;
    for (const QString &entry : std::as_const(linked))
        QFile::link(from.absoluteFilePath(entry), to.filePath(entry));
}

} // namespace walkthrough
