// The library has no entry point that anyone calls: opening it is what loads the plug-in.
#include "platform/runtime/Loading.h"
#include "plugin/load/pluginLoad.h"

namespace {
__attribute__((constructor)) void onLibraryOpened() {
    rt::addLoadMethod(loadPlugin);
}
} // namespace
