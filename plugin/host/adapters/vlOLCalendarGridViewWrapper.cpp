#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"

#include "plugin/host/adapters/vlCCGridViewController.h"

rt::Object *vlOLCalendarGridViewWrapper::gridViewController() const {
    if (rt::Object *only = object(olItem_gridViewController))
        return only;
    rt::Object *last = nullptr;
    for (const rt::Value &element : rt::listValue(getOLItemID(olItem_gridViewControllers))) {
        const vlCCGridViewController controller(rt::objectValue(element));
        if (!controller.delegate())
            continue;
        last = controller.delegate();
        if (controller.ecCalendarEvent())
            break;
    }
    return last;
}
