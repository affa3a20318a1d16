// One view of the calendar grid.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

class QWidget;

class vlCCGridViewController : public vlDelegateBase {
public:
    explicit vlCCGridViewController(rt::Object *controller);

    [[nodiscard]] QWidget *view() const;
    [[nodiscard]] QWidget *gridWindow() const; // the view itself when it is in none; nullptr without a view
    [[nodiscard]] rt::Object *ecCalendarEvent() const; // the selected event, or nullptr
};
