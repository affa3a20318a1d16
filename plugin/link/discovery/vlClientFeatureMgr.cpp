#include "plugin/link/discovery/vlClientFeatureMgr.h"

#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/util/sharedObject.h"
#include "plugin/util/versionRule.h"

namespace {

constexpr DottedVersion oldestSupportedClient{3, 6, 40487};

bool clientIsAtLeast(const DottedVersion &reference) {
    const QString version = vlGetClientVersionHelper::getVelaClientVersion();
    return !version.isEmpty() && parseDottedVersion(version) >= reference;
}

} // namespace

vlClientFeatureMgr &vlClientFeatureMgr::sharedInstance() {
    return SharedObject<vlClientFeatureMgr>::get();
}

bool vlClientFeatureMgr::isSupportedVelaClientVersion() const {
    return clientIsAtLeast(oldestSupportedClient);
}

bool vlClientFeatureMgr::isVelaClientSupportPACAndNoVideo() const {
    return clientIsAtLeast(parseDottedVersion(kVelaClientSupportPACAndNoVideoVersion));
}
