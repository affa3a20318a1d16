// The host's container of the calendar grid's views.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLCalendarGridViewWrapper : public vlDelegateBase {
public:
    explicit vlOLCalendarGridViewWrapper(rt::Object *wrapper)
        : vlDelegateBase(key_vlOLCalendarGridViewWrapper, wrapper) {}

    // The host's current grid controller. If it has several: the first with a selected event, else the last.
    // nullptr if it has none.
    [[nodiscard]] rt::Object *gridViewController() const;
};
