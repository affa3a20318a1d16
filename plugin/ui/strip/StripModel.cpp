#include "plugin/ui/strip/StripModel.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"

bool StripModel::needHideVlView(const vlERCalendarEventEditorViewController *editor, bool hasEvent) const {
    return editor ? editor->needHideVlButton() : !hasEvent || !m_bSupportVela;
}

std::optional<ShownButtons> StripModel::shownButtons(bool isHidden, bool hasAudioConferences) const {
    if (isHidden)
        return ShownButtons{};
    switch (m_vlUIStatus) {
    case StripState::Hidden:
        return ShownButtons{};
    case StripState::NoMeeting:
        return ShownButtons{.add = true, .audioConference = hasAudioConferences};
    case StripState::MeetingAttached:
        return ShownButtons{.remove = true, .settings = true};
    }
    return {};
}

DataStatus StripModel::getVlDataStatus(const vlERCalendarEventEditorViewController *editor, bool hasMeeting) {
    if (!editor || !editor->ecCalendarEvent()->isSupportVela())
        return DataStatus::NothingToDo; // not stored
    m_vlMeetingDataStatus = statusOf(*editor, hasMeeting);
    return m_vlMeetingDataStatus;
}

DataStatus StripModel::statusOf(const vlERCalendarEventEditorViewController &editor, bool hasMeeting) const {
    if (!hasMeeting && m_vlUIStatus == StripState::NoMeeting)
        return DataStatus::NothingToDo;
    if (!hasMeeting) // the strip shows a meeting that no longer exists
        return m_vlUIStatus == StripState::MeetingAttached ? DataStatus::NothingToSend
                                                           : m_vlMeetingDataStatus;
    if (m_vlUIStatus == StripState::NoMeeting || editor.isCancelMode())
        return DataStatus::DeleteMeeting;
    return editor.isVlMeetingItemsChanged() ? DataStatus::UpdateMeeting : DataStatus::NothingToDo;
}
