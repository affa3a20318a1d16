// The replacement of the host method that supplies the main window's tool-bar items.
#include "platform/Guarded.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/ui/toolbar/vlToolbarItemMgr.h"

namespace hooks {

rt::Value toolbarItem(rt::Object *self, rt::Selector, rt::Args arguments) {
    rt::Object *own =
        platform::guarded("toolbarItem", static_cast<rt::Object *>(nullptr), [&arguments]() -> rt::Object * {
            return vlToolbarItemMgr::sharedInstance().itemFor(rt::textValue(arguments[1]));
        });
    return own ? rt::fromObject(own) : callHost(HookRowName::ToolbarItem, self, arguments);
}

} // namespace hooks
