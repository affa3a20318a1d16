// What holds the views of the calendar grid.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLCalendarGridViewWrapper : public vlDelegateBase {
public:
    explicit vlOLCalendarGridViewWrapper(rt::Object *wrapper)
        : vlDelegateBase(key_vlOLCalendarGridViewWrapper, wrapper) {}

    // The host's current grid controller; where it keeps several, the first with a selected event, else the
    // last. nullptr when there is none.
    [[nodiscard]] rt::Object *gridViewController() const;
};
