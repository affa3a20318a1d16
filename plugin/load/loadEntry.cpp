// The library exports no entry point: opening it registers the function that loads the plug-in.
#include "platform/runtime/Loading.h"
#include "plugin/load/pluginLoad.h"

namespace {
__attribute__((constructor)) void onLibraryOpened() {
    rt::addLoadMethod(loadPlugin);
}
} // namespace
