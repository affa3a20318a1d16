// Meetings that are changed or deleted on the calendar, where no editor need be open.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/workflow/MeetingContext.h"

#include <QVariantMap>
#include <memory>
#include <vector>

// Each change has a context of its own, from the command until the meeting work is done. One that is not
// answered, or refused, waits for a late answer until the next change of the same meeting takes its place.
class CalendarChanges {
public:
    static CalendarChanges &sharedInstance();

    // Asks the client to read the meeting, for an update, or to delete it. `data` is {"apptInfo",
    // "keyEventOwnerWindow", "keyApptWindowID", "keyDragAndMoveOnCalendar"}; the window is used within this
    // call only. 0: asked, or no such command; 1: the client could not be asked. An editor in the window of
    // that identifier takes the change for its own.
    int send(MeetingCommand command, const QVariantMap &data);
    // The work of the context at hand is done.
    void finish();
    // The appointment at hand is saved or deleted in its editor: an unanswered change of its meeting must not
    // come after that. The editor has what the change has made of the appointment.
    void supersede();

private:
    [[nodiscard]] std::shared_ptr<MeetingContext> contextFor(const QString &meetingKey);

    std::vector<std::shared_ptr<MeetingContext>> m_changes; // each of another meeting
};
