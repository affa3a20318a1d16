// What the installed meeting client can do, by its version.
#pragma once

#include "platform/Literals.h"
#include "plugin/util/sharedObject.h"

#include <QString>

inline const QString kVelaClientSupportPACAndNoVideoVersion = u"3.6.40487"_s;

// Both look at the version anew each time. An unknown version can do nothing.
class vlClientFeatureMgr : public SharedObject<vlClientFeatureMgr> {
public:
    [[nodiscard]] bool isSupportedVelaClientVersion() const; // at least 3.6.40487
    [[nodiscard]] bool isVelaClientSupportPACAndNoVideo() const;
};
