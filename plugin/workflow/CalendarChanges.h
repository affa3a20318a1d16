// Meetings that are changed or deleted on the calendar, where no editor need be open.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>
#include <memory>
#include <vector>

// Each change has a context of its own, from the command until the meeting work is done. One that is not
// answered, or refused, waits for a late answer until the next change of the same meeting takes its place.
class CalendarChanges : public SharedObject<CalendarChanges> {
public:
    // The context of a change that begins. It takes the place of an earlier one of the same meeting.
    [[nodiscard]] std::shared_ptr<MeetingContext> contextFor(const QString &meetingKey);
    // The work of the context at hand is done.
    void finish();
    // Drops an unanswered change of the meeting at hand, which its editor now saves or deletes: it must not
    // reach the client after that, and the editor shows what it has made of the appointment.
    void supersede();
    // Tells editors that are saving the meeting that the calendar changes it meanwhile: what they have sent
    // may be overtaken by the change, so they compare once more before their work ends.
    static void noteInEditorsThatSave(const QString &meetingKey);

private:
    std::vector<std::shared_ptr<MeetingContext>> m_changes; // each of another meeting
};
