#include "plugin/hooks/hookTable.h"

#include "plugin/hooks/classSwizzle.h"
#include "plugin/hooks/hookReplacements.h"

#include <vector>

namespace {

constexpr HookKind instance = HookKind::Instance;
constexpr HookKind classSide = HookKind::Class;

// A row that only gives the plug-in a way to the host's own implementation.
template<int Row>
rt::Value passThrough(rt::Object *self, rt::Selector, rt::Args arguments) {
    return callHost(Row, self, arguments);
}

// clang-format off
const HookRow table[] = {
    // The editor's header.
    /*  1 */ {"OLCalendarHeaderContainerView", "drawRect:", instance,
              "vl_OLCalendarHeaderContainerView_drawRect:", "B@:ffff", hooks::olderHeaderDrawRect},
    /*  2 */ {"OLAutoLayoutAttachmentsAcceptingView", "initWithFrame:", instance,
              "vlOLAutoLayoutAttachmentsAcceptingView_initWithFrame:", "@@:ffff", hooks::newerHeaderInit},
    /*  3 */ {"OLAutoLayoutAttachmentsAcceptingView", "drawRect:", instance,
              "vlOLAutoLayoutAttachmentsAcceptingView_drawRect:", "B@:ffff", hooks::newerHeaderDrawRect},
    // Opening an editor's window.
    /*  4 */ {"ERCalendarEventEditorWindowController", "showWindowForMeeting:", classSide,
              "vl_ERCalendarEventEditorWindowController_showWindowForMeeting:", "@@:@", hooks::editorShown<4>},
    /*  5 */ {"ERCalendarEventEditorWindowController", "showWindowForNewMeeting", classSide,
              "vl_ERCalendarEventEditorWindowController_showWindowForNewMeeting", "@@:", passThrough<5>},
    /*  6 */ {"ERCalendarEventEditorWindowController", "showWindowForEvent:", classSide,
              "vl_ERCalendarEventEditorWindowController_showWindowForEvent:", "@@:@", hooks::editorShown<6>},
    /*  7 */ {"ERCalendarEventEditorWindowController", "showWindowForNewEvent", classSide,
              "vl_ERCalendarEventEditorWindowController_showWindowForNewEvent", "@@:@", passThrough<7>},
    /*  8 */ {"ERCalendarEventEditorWindowController", "showCancellationWindowForMeeting:", classSide,
              "vl_ERCalendarEventEditorWindowController_showCancellationWindowForMeeting:", "@@:@", hooks::editorShown<8>},
    // Changes on the calendar grid.
    /*  9 */ {"OLCalendarGridViewWrapper", "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:", instance,
              "vl_OLCalendarGridViewWrapper_dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
              "B@:@@@d^cBB", hooks::gridResize},
    /* 10 */ {"OLCalendarGridViewWrapper", "performDragFrom:to:forDate:inProgress:", instance,
              "vl_OLCalendarGridViewWrapper_performDragFrom:to:forDate:inProgress:", "B@:@@@^c", hooks::gridMove},
    /* 11 */ {"OLCalendarGridViewWrapper", "subjectChanged:forEvent:andTileView:", instance,
              "vl_OLCalendarGridViewWrapper_subjectChanged:forEvent:andTileView:", "B@:@@@", hooks::gridRename},
    /* 12 */ {"CCEventTileView", "initWithFrame:andController:andFillColor:isGhost:", instance,
              "vl_CCEventTileView_initWithFrame2:andController:andFillColor:isGhost:", "@@:ffff@@B", passThrough<12>},
    // The header of the older generation is made by its superclass.
    /* 13 */ {"OLAttachmentsAcceptingView", "initWithFrame:", instance,
              "vlOLAttachmentsAcceptingView_initWithFrame:", "@@:ffff", hooks::olderHeaderInit},
    // Deleting and cancelling without an editor.
    /* 14 */ {"ECCalendarEvent", "deleteEventNow", instance,
              "vl_ECCalendarEvent_deleteEventNow", "B@:", hooks::eventDelete},
    /* 15 */ {"ECCalendarEvent", "cancelMeetingInWindow:", instance,
              "vl_ECCalendarEvent_cancelMeetingInWindow:", "v@:@", hooks::eventCancel},
    /* 16 */ {"OLAutoLayoutView", "drawRect:", instance,
              "vl_OLAutoLayoutView_drawRect:", "B@:ffff", hooks::headerRowDrawRect},
    /* 17 */ {"OLCalendarEventViewResponder", "switchToRecurringSeries:", instance,
              "vl_OLCalendarEventViewResponder_switchToRecurringSeries:", "v@:@", hooks::switchToSeries},
    // The main window's tool-bar.
    /* 18 */ {"ERageMainWindowController", "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", instance,
              "vl_ERageMainWindowController_toolbarItem:itemForItemIdentifier:willBeInsertedIntoToolbar:", "@@:@@B", hooks::toolbarItem},
    /* 19 */ {"ERageMainWindowController", "toolbarDefaultItemIdentifiers:", instance,
              "vl_ERageMainWindowController_toolbarDefaultItemIdentifiers:", "@@:@", passThrough<19>},
    /* 20 */ {"ERageMainWindowController", "toolbarAllowedItemIdentifiers:", instance,
              "vl_ERageMainWindowController_toolbarAllowedItemIdentifiers:", "@@:@", passThrough<20>},
    // Saving, sending and closing an editor.
    /* 21 */ {"ERCalendarEventEditorViewController", "saveAndClose:", instance,
              "vl_ERCalendarEventEditorViewController_saveAndClose:", "v@:@", hooks::editorPassThrough<21>},
    /* 22 */ {"ERCalendarEventEditorViewController", "saveAndCloseWindow:", instance,
              "vl_ERCalendarEventEditorViewController_saveAndCloseWindow:", "i@:B", hooks::editorSaveAndCloseWindow},
    /* 23 */ {"ERCalendarEventEditorViewController", "save", instance,
              "vl_ERCalendarEventEditorViewController_save", "B@:", hooks::editorPassThrough<23>},
    /* 24 */ {"ERCalendarEventEditorViewController", "save:", instance,
              "vl_ERCalendarEventEditorViewController_saveArg:", "v@:@", hooks::editorSave},
    /* 25 */ {"ERCalendarEventEditorViewController", "setIsCancelMode:", instance,
              "vl_ERCalendarEventEditorViewController_setIsCancelMode:", "v@:B", passThrough<25>},
    /* 26 */ {"ERCalendarEventEditorViewController", "sendMeetingPostValidate", instance,
              "vl_ERCalendarEventEditorViewController_sendMeetingPostValidate", "v@:", hooks::editorSend},
    /* 27 */ {"ERCalendarEventEditorViewController", "fromFieldModified:", instance,
              "vl_ERCalendarEventEditorViewController_fromFieldModified:", "v@:@", hooks::editorFromFieldModified},
    /* 28 */ {"ERCalendarEventEditorViewController", "switchToRecurrenceDidEnd:returnCode:contextInfo:", instance,
              "vl_ERCalendarEventEditorViewController_switchToRecurrenceDidEnd:returnCode:contextInfo:", "v@:@i^v", hooks::editorRecurrenceEnded},
    /* 29 */ {"ERCalendarEventEditorViewController", "saveAndCloseWindow:andReturnError:", instance,
              "vl_ERCalendarEventEditorViewController_saveAndCloseWindowAndReturnError:andReturnError:", "i@:B@", hooks::editorSaveAndCloseWithError},
    /* 30 */ {"ERCalendarEventEditorViewController", "hostWordMailEditor:", instance,
              "vl_ERCalendarEventEditorViewController_hostWordMailEditor:", "v@:@", hooks::editorHostWordMailEditor},
    // The record on its way into the calendar.
    /* 31 */ {"ECMutableCalendarEvent", "setOlmUCCapabilities:", instance,
              "vl_ECMutableCalendarEvent_setOlmUCCapabilities:", "v@:@", passThrough<31>},
    /* 32 */ {"ECMutableCalendarEvent", "saveRecord", instance,
              "vl_ECMutableCalendarEvent_saveRecord", "l@:", hooks::recordSave},
};
// clang-format on

const std::vector<rt::Selector> &replacementSelectors() {
    static const auto *selectors = [] {
        auto *list = new std::vector<rt::Selector>;
        for (const HookRow &row : table)
            list->emplace_back(row.replacementSelector);
        return list;
    }();
    return *selectors;
}

} // namespace

std::span<const HookRow> hookTable() {
    return table;
}

bool installHook(const HookRow &row) {
    rt::Class *cls = rt::classNamed(QString::fromLatin1(row.hostClass));
    if (!cls)
        return false;
    const rt::Selector original(row.hostSelector);
    const rt::Selector replacement(row.replacementSelector);
    if (row.kind == HookKind::Class) {
        rt::addMethod(rt::metaclassNamed(QString::fromLatin1(row.hostClass)), replacement, row.replacement,
                      row.signature);
        return classSwizzle::method_ClassSwizzle(cls, original, replacement);
    }
    rt::addMethod(cls, replacement, row.replacement, row.signature);
    return classSwizzle::method_InstanceSwizzle(cls, original, replacement);
}

rt::Value callHost(int row, rt::Object *self, rt::Args arguments) {
    return rt::sendArgs(self, replacementSelectors()[std::size_t(row) - 1], arguments);
}
