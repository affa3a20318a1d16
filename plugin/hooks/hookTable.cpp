#include "plugin/hooks/hookTable.h"

#include "plugin/hooks/classSwizzle.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/host/adapters/hostNames.h"

namespace {

constexpr HookKind instance = HookKind::Instance;
constexpr HookKind classSide = HookKind::Class;
using enum HookRowName;

// For rows that only give the plug-in access to the host's implementation.
template<HookRowName Row>
rt::Value passThrough(rt::Object *self, rt::Selector, rt::Args arguments) {
    return callHost(Row, self, arguments);
}

// clang-format off
constexpr HookRow table[] = {
    // The editor's header.
    {OlderHeaderDraw, "OLCalendarHeaderContainerView", "drawRect:", instance,
     "vl_OLCalendarHeaderContainerView_drawRect:", "B@:ffff", hooks::olderHeaderDrawRect},
    {NewerHeaderInit, "OLAutoLayoutAttachmentsAcceptingView", "initWithFrame:", instance,
     "vlOLAutoLayoutAttachmentsAcceptingView_initWithFrame:", "@@:ffff", hooks::newerHeaderInit},
    {NewerHeaderDraw, "OLAutoLayoutAttachmentsAcceptingView", "drawRect:", instance,
     "vlOLAutoLayoutAttachmentsAcceptingView_drawRect:", "B@:ffff", hooks::newerHeaderDrawRect},
    // Opening an editor's window.
    {ShowMeeting, "ERCalendarEventEditorWindowController", "showWindowForMeeting:", classSide,
     "vl_ERCalendarEventEditorWindowController_showWindowForMeeting:", "@@:@", hooks::editorShown<ShowMeeting>},
    {ShowNewMeeting, "ERCalendarEventEditorWindowController", "showWindowForNewMeeting", classSide,
     "vl_ERCalendarEventEditorWindowController_showWindowForNewMeeting", "@@:", passThrough<ShowNewMeeting>},
    {ShowEvent, "ERCalendarEventEditorWindowController", "showWindowForEvent:", classSide,
     "vl_ERCalendarEventEditorWindowController_showWindowForEvent:", "@@:@", hooks::editorShown<ShowEvent>},
    {ShowNewEvent, "ERCalendarEventEditorWindowController", "showWindowForNewEvent", classSide,
     "vl_ERCalendarEventEditorWindowController_showWindowForNewEvent", "@@:@", passThrough<ShowNewEvent>},
    {ShowCancellation, "ERCalendarEventEditorWindowController", "showCancellationWindowForMeeting:", classSide,
     "vl_ERCalendarEventEditorWindowController_showCancellationWindowForMeeting:", "@@:@", hooks::editorShown<ShowCancellation>},
    // Changes on the calendar grid.
    {GridResize, "OLCalendarGridViewWrapper", "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:", instance,
     "vl_OLCalendarGridViewWrapper_dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
     "B@:@@@d^cBB", hooks::gridResize},
    {GridMove, "OLCalendarGridViewWrapper", "performDragFrom:to:forDate:inProgress:", instance,
     "vl_OLCalendarGridViewWrapper_performDragFrom:to:forDate:inProgress:", "B@:@@@^c", hooks::gridMove},
    {GridRename, "OLCalendarGridViewWrapper", "subjectChanged:forEvent:andTileView:", instance,
     "vl_OLCalendarGridViewWrapper_subjectChanged:forEvent:andTileView:", "B@:@@@", hooks::gridRename},
    {TileInit, "CCEventTileView", "initWithFrame:andController:andFillColor:isGhost:", instance,
     "vl_CCEventTileView_initWithFrame2:andController:andFillColor:isGhost:", "@@:ffff@@B", passThrough<TileInit>},
    // The superclass initialises the header of the older generation.
    {OlderHeaderInit, "OLAttachmentsAcceptingView", "initWithFrame:", instance,
     "vlOLAttachmentsAcceptingView_initWithFrame:", "@@:ffff", hooks::olderHeaderInit},
    // Deleting and cancelling without an editor.
    {EventDelete, "ECCalendarEvent", "deleteEventNow", instance,
     "vl_ECCalendarEvent_deleteEventNow", "B@:", hooks::eventDelete},
    {EventCancel, "ECCalendarEvent", "cancelMeetingInWindow:", instance,
     "vl_ECCalendarEvent_cancelMeetingInWindow:", "v@:@", hooks::eventCancel},
    {HeaderRowDraw, "OLAutoLayoutView", "drawRect:", instance,
     "vl_OLAutoLayoutView_drawRect:", "B@:ffff", hooks::headerRowDrawRect},
    {SwitchToSeries, "OLCalendarEventViewResponder", "switchToRecurringSeries:", instance,
     "vl_OLCalendarEventViewResponder_switchToRecurringSeries:", "v@:@", hooks::switchToSeries},
    // The main window's tool-bar.
    {ToolbarItem, "ERageMainWindowController", "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", instance,
     "vl_ERageMainWindowController_toolbarItem:itemForItemIdentifier:willBeInsertedIntoToolbar:", "@@:@@B", hooks::toolbarItem},
    {ToolbarDefaultItems, "ERageMainWindowController", "toolbarDefaultItemIdentifiers:", instance,
     "vl_ERageMainWindowController_toolbarDefaultItemIdentifiers:", "@@:@", passThrough<ToolbarDefaultItems>},
    {ToolbarAllowedItems, "ERageMainWindowController", "toolbarAllowedItemIdentifiers:", instance,
     "vl_ERageMainWindowController_toolbarAllowedItemIdentifiers:", "@@:@", passThrough<ToolbarAllowedItems>},
    // Saving, sending and closing an editor.
    {EditorSaveAndClose, "ERCalendarEventEditorViewController", "saveAndClose:", instance,
     "vl_ERCalendarEventEditorViewController_saveAndClose:", "v@:@", hooks::editorPassThrough<EditorSaveAndClose>},
    {EditorSaveAndCloseWindow, "ERCalendarEventEditorViewController", "saveAndCloseWindow:", instance,
     olItem_hostSaveAndCloseWindow, "i@:B", hooks::editorSaveAndCloseWindow},
    {EditorSave, "ERCalendarEventEditorViewController", "save", instance,
     olItem_hostSave, "B@:", hooks::editorPassThrough<EditorSave>},
    {EditorSaveFromSender, "ERCalendarEventEditorViewController", "save:", instance,
     olItem_hostSaveFromSender, "v@:@", hooks::editorSave},
    {EditorSetIsCancelMode, "ERCalendarEventEditorViewController", "setIsCancelMode:", instance,
     "vl_ERCalendarEventEditorViewController_setIsCancelMode:", "v@:B", passThrough<EditorSetIsCancelMode>},
    {EditorSend, "ERCalendarEventEditorViewController", "sendMeetingPostValidate", instance,
     olItem_hostSendMeeting, "v@:", hooks::editorSend},
    {EditorFromFieldModified, "ERCalendarEventEditorViewController", "fromFieldModified:", instance,
     "vl_ERCalendarEventEditorViewController_fromFieldModified:", "v@:@", hooks::editorFromFieldModified},
    {EditorRecurrenceEnded, "ERCalendarEventEditorViewController", "switchToRecurrenceDidEnd:returnCode:contextInfo:", instance,
     "vl_ERCalendarEventEditorViewController_switchToRecurrenceDidEnd:returnCode:contextInfo:", "v@:@i^v", hooks::editorRecurrenceEnded},
    {EditorSaveAndCloseWithError, "ERCalendarEventEditorViewController", "saveAndCloseWindow:andReturnError:", instance,
     olItem_hostSaveAndCloseWindowAndReturnError, "i@:B@", hooks::editorSaveAndCloseWithError},
    {EditorHostWordMailEditor, "ERCalendarEventEditorViewController", "hostWordMailEditor:", instance,
     "vl_ERCalendarEventEditorViewController_hostWordMailEditor:", "v@:@", hooks::editorHostWordMailEditor},
    // The record that is being stored in the calendar.
    {RecordSetCapabilities, "ECMutableCalendarEvent", "setOlmUCCapabilities:", instance,
     "vl_ECMutableCalendarEvent_setOlmUCCapabilities:", "v@:@", passThrough<RecordSetCapabilities>},
    {RecordSave, "ECMutableCalendarEvent", "saveRecord", instance,
     "vl_ECMutableCalendarEvent_saveRecord", "l@:", hooks::recordSave},
};
// clang-format on

constexpr bool isInTheOrderOfTheNames() {
    for (std::size_t place = 0; place < std::size(table); ++place)
        if (std::size_t(table[place].name) != place)
            return false;
    return true;
}
static_assert(isInTheOrderOfTheNames());

// Under which selector a host class has its own implementation now; the null selector before the exchange.
constinit rt::Selector exchanged[std::size(table)];

} // namespace

std::span<const HookRow> hookTable() {
    return table;
}

const HookRow &hookRow(HookRowName name) {
    return table[std::size_t(name)];
}

bool installHook(const HookRow &row) {
    const auto hostClass = QString::fromLatin1(row.hostClass);
    rt::Class *cls = rt::classNamed(hostClass);
    const rt::Selector original(row.hostSelector);
    const rt::Selector replacement(row.replacementSelector);
    const bool isOfClass = row.kind == HookKind::Class;
    rt::addMethod(isOfClass ? rt::metaclassNamed(hostClass) : cls, replacement, row.replacement,
                  row.signature);
    if (!(isOfClass ? classSwizzle::method_ClassSwizzle(cls, original, replacement)
                    : classSwizzle::method_InstanceSwizzle(cls, original, replacement)))
        return false;
    exchanged[std::size_t(row.name)] = replacement;
    return true;
}

rt::Value callHost(HookRowName row, rt::Object *self, rt::Args arguments) {
    const rt::Selector selector = exchanged[std::size_t(row)];
    const rt::Method *method = self ? self->isa()->lookup(selector) : nullptr;
    return method ? method->implementation(self, selector, arguments) : rt::Value();
}
