// The site configuration: a small file with values that the plug-in got from the client, for times when the
// client is not available.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>

class vlMeetingCommon {
public:
    [[nodiscard]] static QString getLocalVlSiteConfigPath();
    // The file's text; "" if the file does not exist.
    [[nodiscard]] static QString siteConfigText();
    // One member; no value if the file lacks it.
    [[nodiscard]] static rt::Value siteConfigMember(const QString &key);
    // Changes one member and keeps the others. Errors are not reported.
    static void setSiteConfigMember(const QString &key, const rt::Value &value);
    // Stores whether the user has audio-conference accounts; `accounts` is their number.
    static void savePACConfigToLocal(int accounts);
};
