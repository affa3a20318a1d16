// The edition that schedules for others, in place of the one that is being built.
#include "plugin/util/vlPluginBuildMgr.h"

bool vlPluginBuildMgr::isBuildForPRL() {
    return false;
}

bool vlPluginBuildMgr::isBuildForVela() {
    return true;
}

bool vlPluginBuildMgr::supportScheduleFor() {
    return true;
}

bool vlPluginBuildMgr::supportStartWithoutVideo() {
    return true;
}
