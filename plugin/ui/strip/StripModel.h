// The decisions of the strip of buttons, without a widget.
#pragma once

#include "plugin/workflow/workflowPorts.h"

#include <optional>

class vlERCalendarEventEditorViewController;

struct ShownButtons {
    bool add = false;
    bool audioConference = false;
    bool remove = false;
    bool settings = false;
};

// Belongs to one editor. `editor` is the adapter of the host's editor; nullptr before its first use.
class StripModel {
public:
    [[nodiscard]] StripState state() const { return m_vlUIStatus; }
    void setState(StripState state) { m_vlUIStatus = state; }
    void setIsSupportVela(bool supported) { m_bSupportVela = supported; }
    [[nodiscard]] bool isSupportVela() const { return m_bSupportVela; }

    // Whether all buttons are hidden in every state. `hasEvent`: the strip has got its editor.
    [[nodiscard]] bool needHideVlView(const vlERCalendarEventEditorViewController *editor,
                                      bool hasEvent) const;
    // No value for an unknown state; the buttons stay unchanged then.
    [[nodiscard]] std::optional<ShownButtons> shownButtons(bool isHidden, bool hasAudioConferences) const;
    // What a save has to do. The model stores the status and returns it again if the state alone does not
    // determine it.
    DataStatus getVlDataStatus(const vlERCalendarEventEditorViewController *editor, bool hasMeeting);

private:
    [[nodiscard]] DataStatus statusOf(const vlERCalendarEventEditorViewController &editor,
                                      bool hasMeeting) const;

    StripState m_vlUIStatus = StripState::NoMeeting;
    DataStatus m_vlMeetingDataStatus = DataStatus::None;
    bool m_bSupportVela = true;
};
