// The calendar's side of the meeting work: meetings that are moved, resized, renamed or deleted on the grid.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/vlActionResultMgr.h"
#include "plugin/workflow/vlMeetingState.h"

#include <QString>
#include <QVariantMap>
#include <optional>

class QWidget;

// `grid` is the host's grid wrapper, dates and events are host objects; none is kept. Operations answer 0
// when the request was sent or none was needed, 1 when the client could not be asked. The action result tells
// of the last answer that has arrived, never of the request just sent.
class vlCalendarActionMgr : public SharedObject<vlCalendarActionMgr>, public vlActionResultMgr {
public:
    // Whether the appointment's stored record names a meeting.
    [[nodiscard]] bool isCurVelaMeeting(rt::Object *event) const;

    int updateSubject(rt::Object *grid, const QString &subject);
    int updateDuration(rt::Object *grid, rt::Object *startDate, double seconds);
    int updateStartTime(rt::Object *grid, rt::Object *startDate);
    // What is null or not given stays as it is. Without a duration in seconds a moved event keeps its length.
    int updateMeeting(rt::Object *grid, const QString &newSubject, rt::Object *newStartDate,
                      std::optional<double> newDuration);
    int deleteMeeting(rt::Object *event);
    // `command` is CmdUpdateMeeting or CmdDeleteMeeting. Nothing is sent for an event that is not supported.
    int updateAppointmentOnCalendar(const QVariantMap &snapshot, QWidget *ownWindow, bool isSupportVela,
                                    MeetingCommand command);
    // The host's main window; nullptr when there is none.
    [[nodiscard]] QWidget *mainWindow() const;
};
