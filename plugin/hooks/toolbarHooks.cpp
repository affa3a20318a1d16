#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"

namespace hooks {

namespace {
constexpr int rowItemForIdentifier = 18;
} // namespace

// The plug-in has no items of its own in the main window's tool-bar yet: every identifier is the host's.
rt::Value toolbarItem(rt::Object *self, rt::Selector, rt::Args arguments) {
    return callHost(rowItemForIdentifier, self, arguments);
}

} // namespace hooks
