#include "plugin/link/vlMeetingCommon.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlCommon.h"
#include "plugin/util/vlOLUtils.h"

#include <QVariantMap>

namespace {
const QString fileName = u"vlConfig.txt"_s;
}

QString vlMeetingCommon::getLocalVlSiteConfigPath() {
    return vlCommon::getDocumentOutlookPluginRootPath() + u'/' + fileName;
}

QString vlMeetingCommon::siteConfigText() {
    return vlOLUtils::readStrFromFile(getLocalVlSiteConfigPath());
}

rt::Value vlMeetingCommon::siteConfigMember(const QString &key) {
    return vlOLUtils::toNSDictionary(siteConfigText()).value(key);
}

void vlMeetingCommon::setSiteConfigMember(const QString &key, const rt::Value &value) {
    vlCommon::createDocumentOutlookPluginRootPath();
    QVariantMap members = vlOLUtils::toNSDictionary(siteConfigText());
    members.insert(key, value);
    vlOLUtils::saveStrToFile(vlOLUtils::toJSONString(members), getLocalVlSiteConfigPath());
}

void vlMeetingCommon::savePACConfigToLocal(int accounts) {
    setSiteConfigMember(vl_LocalProfile_EnablePAC, accounts != 0);
}
