// The names of the hook table's rows.
#pragma once

// In the order of the table; a load step installs the rows from one name to another.
enum class HookRowName {
    OlderHeaderDraw,
    NewerHeaderInit,
    NewerHeaderDraw,
    ShowMeeting,
    ShowNewMeeting,
    ShowEvent,
    ShowNewEvent,
    ShowCancellation,
    GridResize,
    GridMove,
    GridRename,
    TileInit,
    OlderHeaderInit,
    EventDelete,
    EventCancel,
    HeaderRowDraw,
    SwitchToSeries,
    ToolbarItem,
    ToolbarDefaultItems,
    ToolbarAllowedItems,
    EditorSaveAndClose,
    EditorSaveAndCloseWindow,
    EditorSave,
    EditorSaveFromSender, // "save:", which the button and the shortcut send
    EditorSetIsCancelMode,
    EditorSend,
    EditorFromFieldModified,
    EditorRecurrenceEnded,
    EditorSaveAndCloseWithError,
    EditorHostWordMailEditor,
    RecordSetCapabilities,
    RecordSave,
};
