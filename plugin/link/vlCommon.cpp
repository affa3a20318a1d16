#include "plugin/link/vlCommon.h"

#include "platform/services/Services.h"
#include "plugin/link/vlAppHelper.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/util/vlFileUtils.h"

QString vlCommon::getDocumentOutlookPluginRootPath() {
    return platform::services().workspace->documentsFolder() + u'/' + kvlOutlookPluginFolder;
}

void vlCommon::createDocumentOutlookPluginRootPath() {
    const QString path = getDocumentOutlookPluginRootPath();
    if (!vlIsFileExist(path))
        vlCreateDirection(path);
}

QString vlCommon::getUID() {
    const vlUserProfileHelper &helper = vlUserProfileHelper::sharedInstance();
    return helper.hasUserProfile() ? helper.getUID() : QString();
}

QString vlCommon::getVlUserProfilePath(const QString &userId) {
    if (userId.isNull())
        return QStringLiteral("");
    // The id is the client's; whatever it is, it names one file in this folder.
    QString name = userId;
    name.replace(u'/', QStringLiteral("%2F"));
    return getDocumentOutlookPluginRootPath() + u'/' + name + QStringLiteral(".txt");
}
