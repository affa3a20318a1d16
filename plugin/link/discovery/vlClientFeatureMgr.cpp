#include "plugin/link/discovery/vlClientFeatureMgr.h"

#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/util/versionRule.h"

namespace {
constexpr DottedVersion oldestSupportedClient{3, 6, 40487};
} // namespace

bool vlClientFeatureMgr::isSupportedVelaClientVersion() const {
    return isVersionAtLeast(vlGetClientVersionHelper::getVelaClientVersion(), oldestSupportedClient);
}

bool vlClientFeatureMgr::isVelaClientSupportPACAndNoVideo() const {
    return isVersionAtLeast(vlGetClientVersionHelper::getVelaClientVersion(),
                            parseDottedVersion(kVelaClientSupportPACAndNoVideoVersion));
}
