// Handles meetings that the user moves, resizes, renames or deletes on the calendar grid.
#pragma once

#include "plugin/link/meetingCommand.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/vlActionResultMgr.h"

#include <QString>
#include <QVariantMap>
#include <optional>

class QWidget;

// `grid` is the host's grid wrapper; dates and events are host objects. The class keeps no reference to them.
// Operations return 0 if the request was sent or was not needed, and 1 if the client could not be asked. The
// action result describes the last answer that has arrived, never the request just sent.
class vlCalendarActionMgr : public SharedObject<vlCalendarActionMgr>, public vlActionResultMgr {
public:
    // Whether the appointment's stored record names a meeting.
    [[nodiscard]] bool isCurVelaMeeting(rt::Object *event) const;

    int updateSubject(rt::Object *grid, const QString &subject);
    int updateDuration(rt::Object *grid, rt::Object *startDate, double seconds);
    int updateStartTime(rt::Object *grid, rt::Object *startDate);
    // Null and absent arguments leave the value unchanged. Without a duration (in seconds) a moved event
    // keeps its length.
    int updateMeeting(rt::Object *grid, const QString &newSubject, rt::Object *newStartDate,
                      std::optional<double> newDuration);
    int deleteMeeting(rt::Object *event);
    // `command` is CmdUpdateMeeting or CmdDeleteMeeting. Sends nothing for an unsupported event.
    int updateAppointmentOnCalendar(const QVariantMap &snapshot, QWidget *ownWindow, bool isSupportVela,
                                    MeetingCommand command);
    // The host's main window; nullptr without one.
    [[nodiscard]] QWidget *mainWindow() const;
};
