// The features of the installed meeting client, derived from its version.
#pragma once

#include "platform/Literals.h"
#include "plugin/util/sharedObject.h"

#include <QString>

inline const QString kVelaClientSupportPACAndNoVideoVersion = u"3.6.40487"_s;

// Both functions read the version again on each call. An unknown version supports no feature.
class vlClientFeatureMgr : public SharedObject<vlClientFeatureMgr> {
public:
    [[nodiscard]] bool isSupportedVelaClientVersion() const; // at least 3.6.40487
    [[nodiscard]] bool isVelaClientSupportPACAndNoVideo() const;
};
