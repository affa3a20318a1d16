// The replacements of host methods, by subject. Each has the signature of a runtime method: the receiver, the
// selector that was called, the arguments. No exception leaves them.
#pragma once

#include "platform/runtime/Runtime.h"
#include "plugin/hooks/HookRowName.h"

namespace hooks {

// headerHooks.cpp: the editor's header and window.
rt::Value olderHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value newerHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value olderHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value newerHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value headerRowDrawRect(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorShownRow(HookRowName row, rt::Object *self, rt::Args arguments);
template<HookRowName Row>
rt::Value editorShown(rt::Object *self, rt::Selector, rt::Args arguments) {
    return editorShownRow(Row, self, arguments);
}

// editorHooks.cpp: saving, sending, the From field, recurrence, the body editor, the stored record. Calls the
// host's method with the context of the editor as the current one, because the method may store the record.
rt::Value editorPassThroughRow(HookRowName row, rt::Object *self, rt::Args arguments);
template<HookRowName Row>
rt::Value editorPassThrough(rt::Object *self, rt::Selector, rt::Args arguments) {
    return editorPassThroughRow(Row, self, arguments);
}
rt::Value editorSaveAndCloseWindow(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorSave(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorSaveAndCloseWithError(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorSend(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorFromFieldModified(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorRecurrenceEnded(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value editorHostWordMailEditor(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value recordSave(rt::Object *self, rt::Selector, rt::Args arguments);

// calendarHooks.cpp: changes without an editor.
rt::Value gridResize(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value gridMove(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value gridRename(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value eventDelete(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value eventCancel(rt::Object *self, rt::Selector, rt::Args arguments);
rt::Value switchToSeries(rt::Object *self, rt::Selector, rt::Args arguments);

// toolbarHooks.cpp: the main window.
rt::Value toolbarItem(rt::Object *self, rt::Selector, rt::Args arguments);

} // namespace hooks
