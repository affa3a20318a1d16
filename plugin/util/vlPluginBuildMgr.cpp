#include "plugin/util/vlPluginBuildMgr.h"

#if defined(PARLO_EDITION_PRL) == defined(PARLO_EDITION_Vela)
#error "Exactly one brand edition must be chosen."
#endif

bool vlPluginBuildMgr::isBuildForPRL() {
#ifdef PARLO_EDITION_PRL
    return true;
#else
    return false;
#endif
}

bool vlPluginBuildMgr::isBuildForVela() {
#ifdef PARLO_EDITION_Vela
    return true;
#else
    return false;
#endif
}

bool vlPluginBuildMgr::supportScheduleFor() {
    return isBuildForVela();
}

bool vlPluginBuildMgr::supportStartWithoutVideo() {
    return isBuildForPRL() || isBuildForVela();
}
