// The names of the hook table's rows.
#pragma once

// In the order of the table. A load step installs a range of rows from one name to another.
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
    EditorSaveFromSender, // "save:", sent by the button and the shortcut
    EditorSetIsCancelMode,
    EditorSend,
    EditorFromFieldModified,
    EditorRecurrenceEnded,
    EditorSaveAndCloseWithError,
    EditorHostWordMailEditor,
    RecordSetCapabilities,
    RecordSave,
};
