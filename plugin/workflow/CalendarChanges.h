// Meetings that are changed or deleted on the calendar, where no editor need be open.
#pragma once

#include "plugin/workflow/MeetingContext.h"

#include <QString>
#include <memory>
#include <vector>

// Each change has a context of its own, from the command until the meeting work is done. One that is not
// answered, or refused, waits for a late answer until the next change of the same meeting takes its place.
class CalendarChanges {
public:
    static CalendarChanges &sharedInstance();

    // The context of a change that begins. It takes the place of an earlier one of the same meeting.
    [[nodiscard]] std::shared_ptr<MeetingContext> contextFor(const QString &meetingKey);
    // The work of the context at hand is done.
    void finish();
    // The appointment at hand is saved or deleted in its editor: an unanswered change of its meeting must not
    // come after that. The editor has what the change has made of the appointment.
    void supersede();
    // The meeting is changed now: what an editor has sent before, or sends of it while the client still has
    // the change to come, does not hold any more when its work ends.
    static void noteInEditorsThatSave(const QString &meetingKey);

private:
    std::vector<std::shared_ptr<MeetingContext>> m_changes; // each of another meeting
};
