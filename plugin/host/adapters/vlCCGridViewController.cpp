#include "plugin/host/adapters/vlCCGridViewController.h"

#include "plugin/host/adapters/hostNames.h"

#include <QWidget>

vlCCGridViewController::vlCCGridViewController(rt::Object *controller)
    : vlDelegateBase(key_vlCCGridViewController, controller) {}

QWidget *vlCCGridViewController::view() const {
    return rt::widgetValue(getOLItemID(olItem_view));
}

QWidget *vlCCGridViewController::gridWindow() const {
    const QWidget *gridView = view();
    return gridView ? gridView->window() : nullptr;
}

rt::Object *vlCCGridViewController::ecCalendarEvent() const {
    return rt::objectValue(getOLItemID(olItem_selectedEvent));
}
