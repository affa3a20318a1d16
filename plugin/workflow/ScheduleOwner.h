// Whether a meeting was made for the organiser who now sends its appointment.
#pragma once

#include <QString>

struct ScheduleOwner {
    bool isOnBehalf = false;
    QString onbehalfEmail;            // empty when on nobody's behalf
    QString currentEmail;             // of the From field
    bool mayScheduleForOther = false; // for onbehalfEmail
    QString scheduleForEmail;         // for whom the meeting was made; empty: for the user
};

// Addresses are compared in any case. On behalf of someone for whom the user may not schedule, no meeting was
// made for that person, and the meeting goes out as it is.
[[nodiscard]] bool isScheduleOwnerMatched(const ScheduleOwner &owner);
