// Checks whether a meeting was made for the organiser who now sends its appointment.
#pragma once

#include <QString>

struct ScheduleOwner {
    bool isOnBehalf = false;
    QString onbehalfEmail;            // empty: the user schedules for himself
    QString currentEmail;             // address in the From field
    bool mayScheduleForOther = false; // for onbehalfEmail
    QString scheduleForEmail;         // owner of the meeting; empty: the user
};

// The comparison of addresses ignores case. If the user may not schedule for the organiser, the plug-in has
// made no meeting for that organiser, and the meeting is sent unchanged.
[[nodiscard]] bool isScheduleOwnerMatched(const ScheduleOwner &owner);
