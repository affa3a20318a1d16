#include "plugin/link/vlCommon.h"

#include "platform/services/Services.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/util/vlFileUtils.h"

QString vlCommon::getDocumentOutlookPluginRootPath() {
    return platform::services().workspace->documentsFolder() + u'/' + kvlOutlookPluginFolder;
}

void vlCommon::createDocumentOutlookPluginRootPath() {
    vlCreateDirection(getDocumentOutlookPluginRootPath());
}

QString vlCommon::getUID() {
    const vlUserProfileHelper &helper = vlUserProfileHelper::sharedInstance();
    return helper.hasUserProfile() ? helper.getUID() : QString();
}

QString vlCommon::getVlUserProfilePath(const QString &userId) {
    if (userId.isNull())
        return u""_s;
    // The id comes from the client and is not trusted: it must name one file in this folder.
    QString name = userId;
    name.replace(u'/', u"%2F"_s);
    return getDocumentOutlookPluginRootPath() + u'/' + name + u".txt"_s;
}
