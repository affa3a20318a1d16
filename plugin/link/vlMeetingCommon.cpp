#include "plugin/link/vlMeetingCommon.h"

#include "plugin/link/siteConfiguration.h"
#include "plugin/link/vlGetPACHelper.h"

QString vlMeetingCommon::getLocalVlSiteConfigPath() {
    return siteConfiguration::path();
}

void vlMeetingCommon::savePACConfigToLocal() {
    vlGetPACHelper::sharedInstance().savePACConfigToLocal();
}
