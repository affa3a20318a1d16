// One view of the calendar grid.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

#include <QWidget>

class vlCCGridViewController : public vlDelegateBase {
public:
    explicit vlCCGridViewController(rt::Object *controller)
        : vlDelegateBase(key_vlCCGridViewController, controller) {}

    [[nodiscard]] QWidget *view() const { return rt::widgetValue(getOLItemID(olItem_view)); }
    // The window of the view, or the view itself if it is its own window; nullptr without a view.
    [[nodiscard]] QWidget *gridWindow() const { return view() ? view()->window() : nullptr; }
    // The selected event, or nullptr.
    [[nodiscard]] rt::Object *ecCalendarEvent() const { return object(olItem_selectedEvent); }
};
