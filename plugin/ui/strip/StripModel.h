// What the strip of buttons decides, without a widget.
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

// Of one editor. `editor` is the adapter of the host's editor; nullptr before it is needed first.
class StripModel {
public:
    [[nodiscard]] StripState state() const { return m_vlUIStatus; }
    void setState(StripState state) { m_vlUIStatus = state; }
    void setIsSupportVela(bool supported) { m_bSupportVela = supported; }
    [[nodiscard]] bool isSupportVela() const { return m_bSupportVela; }

    // Whether the appointment shows no button at all, whatever its state. `hasEvent`: its editor is known.
    [[nodiscard]] bool needHideVlView(const vlERCalendarEventEditorViewController *editor,
                                      bool hasEvent) const;
    // No value for an unknown state: the buttons stay as they are.
    [[nodiscard]] std::optional<ShownButtons> shownButtons(bool isHidden, bool hasAudioConferences) const;
    // What a save has to do. The status is remembered, and answered again when the state does not decide it.
    DataStatus getVlDataStatus(const vlERCalendarEventEditorViewController *editor, bool hasMeeting);

private:
    [[nodiscard]] DataStatus statusOf(const vlERCalendarEventEditorViewController &editor,
                                      bool hasMeeting) const;

    StripState m_vlUIStatus = StripState::NoMeeting;
    DataStatus m_vlMeetingDataStatus = DataStatus::None;
    bool m_bSupportVela = true;
};
