#include "standin/support/OwnRoot.h"

#include "platform/Literals.h"

#include <QDir>
#include <QFile>

namespace standin {

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

QProcessEnvironment userFolders(const QString &folder) {
    QProcessEnvironment folders;
    for (const char *name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const QString path = QDir(folder).filePath(QString::fromLatin1(name));
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        folders.insert(QString::fromLatin1(name), path);
    }
    return folders;
}

} // namespace standin
