#include "plugin/link/siteConfiguration.h"

#include "plugin/link/vlCommon.h"
#include "plugin/util/vlOLUtils.h"

namespace {
const QString fileName = QStringLiteral("vlConfig.txt");
}

QString siteConfiguration::path() {
    return vlCommon::getDocumentOutlookPluginRootPath() + u'/' + fileName;
}

QString siteConfiguration::text() {
    return vlOLUtils::readStrFromFile(path());
}

rt::Value siteConfiguration::member(const QString &key) {
    return rt::mapValue(vlOLUtils::toArrayOrNSDictionary(text())).value(key);
}

void siteConfiguration::setMember(const QString &key, const rt::Value &value) {
    vlCommon::createDocumentOutlookPluginRootPath();
    QVariantMap members = rt::mapValue(vlOLUtils::toArrayOrNSDictionary(text()));
    members.insert(key, value);
    vlOLUtils::saveStrToFile(vlOLUtils::toJSONString(members), path());
}
