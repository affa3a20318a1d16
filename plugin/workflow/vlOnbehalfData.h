// For whom the appointment in an editor is scheduled.
#pragma once

#include "plugin/util/sharedObject.h"

#include <QString>

// Editors are named by their appointment window identifier; one that has no strip is on nobody's behalf.
class vlOnbehalfData : public SharedObject<vlOnbehalfData> {
public:
    [[nodiscard]] bool isOnbehalf(const QString &apptWindowID) const;
    [[nodiscard]] QString onbehalfEmail(const QString &apptWindowID) const; // "" when on nobody's behalf
    // The name of the person for whom the user may schedule, found by address in any case; "" when there is
    // none.
    [[nodiscard]] QString getDisplayNameWithOnbehalfEmail(const QString &email) const;
    [[nodiscard]] bool hasSchedulePermission(const QString &email) const;
    // On behalf of someone for whom the user may schedule.
    [[nodiscard]] bool isCurrentScheduleVelaForOther(const QString &apptWindowID) const;
};
