// The site configuration as the workflow sees it. Questions about windows are answered in the workflow.
#pragma once

#include <QString>

class vlMeetingCommon {
public:
    [[nodiscard]] static QString getLocalVlSiteConfigPath();
    // Notes whether the user has audio-conference accounts now.
    static void savePACConfigToLocal();
};
