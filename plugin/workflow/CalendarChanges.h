// Meetings that are changed or deleted on the calendar, where no editor need be open.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>
#include <memory>
#include <vector>

// Each change has its own context, from the command until the meeting work is done. A change that was refused
// or got no answer waits for a late answer until the next change of the same meeting replaces it.
class CalendarChanges : public SharedObject<CalendarChanges> {
public:
    // Makes the context of a new change. It replaces an earlier change of the same meeting.
    [[nodiscard]] std::shared_ptr<MeetingContext> contextFor(const QString &meetingKey);
    // Drops the current context, whose work is done.
    void finish();
    // Drops an unanswered change of the current meeting, because the meeting's editor now saves or deletes
    // it. The change must not reach the client afterwards; the editor already shows its effect.
    void supersede();
    // Tells the editors that are saving the meeting that the calendar is changing it. The change may overtake
    // the data that they have sent, so they compare again before their work ends.
    static void noteInEditorsThatSave(const QString &meetingKey);

private:
    std::vector<std::shared_ptr<MeetingContext>> m_changes; // at most one for each meeting
};
