// Tells for whom the user schedules the appointment in an editor.
#pragma once

#include "plugin/util/sharedObject.h"

#include <QString>

// Editors are identified by their appointment window identifier. Without a strip it schedules for the user.
class vlOnbehalfData : public SharedObject<vlOnbehalfData> {
public:
    [[nodiscard]] bool isOnbehalf(const QString &apptWindowID) const;
    [[nodiscard]] QString onbehalfEmail(const QString &apptWindowID) const; // "" if it is for the user
    // The name of the person with that address (case is ignored) for whom the user may schedule; "" if there
    // is none.
    [[nodiscard]] QString getDisplayNameWithOnbehalfEmail(const QString &email) const;
    [[nodiscard]] bool hasSchedulePermission(const QString &email) const;
    // Whether the appointment is for another person for whom the user may schedule.
    [[nodiscard]] bool isCurrentScheduleVelaForOther(const QString &apptWindowID) const;
};
