// The brand edition, chosen at build time, and its features.
#pragma once

class vlPluginBuildMgr {
public:
    // Exactly one of these is true.
    [[nodiscard]] static bool isBuildForPRL();  // Parlo Meetings
    [[nodiscard]] static bool isBuildForVela(); // unbranded

    // Whether meetings may be scheduled on behalf of another calendar's owner.
    [[nodiscard]] static bool supportScheduleFor();
    // Whether an instant meeting may be started without video.
    [[nodiscard]] static bool supportStartWithoutVideo();
};
