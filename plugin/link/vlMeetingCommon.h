// The site configuration: the small file of what the plug-in learnt from the client, for times when the
// client cannot be asked. Questions about windows are answered in the workflow.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>

class vlMeetingCommon {
public:
    [[nodiscard]] static QString getLocalVlSiteConfigPath();
    // The file's text; "" when there is no such file.
    [[nodiscard]] static QString siteConfigText();
    // One member; no value when the file does not hold it.
    [[nodiscard]] static rt::Value siteConfigMember(const QString &key);
    // Changes one member and leaves the others as they are. Errors are not reported.
    static void setSiteConfigMember(const QString &key, const rt::Value &value);
    // Notes whether the user has audio-conference accounts, of which there are that many.
    static void savePACConfigToLocal(int accounts);
};
