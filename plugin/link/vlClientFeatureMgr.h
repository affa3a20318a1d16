// What the installed meeting client can do, by its version.
#pragma once

#include <QString>

inline const QString kVelaClientSupportPACAndNoVideoVersion = QStringLiteral("3.6.40487");

// Both look at the version anew each time. An unknown version can do nothing.
class vlClientFeatureMgr {
public:
    static vlClientFeatureMgr &sharedInstance();
    [[nodiscard]] bool isSupportedVelaClientVersion() const; // at least 3.6.40487
    [[nodiscard]] bool isVelaClientSupportPACAndNoVideo() const;
};
