// Data for class methods of the host's object model, which have no object.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"

#include <QDateTime>
#include <QPointer>
#include <functional>

namespace mailhost {

// The start of a new appointment.
struct NewPlace {
    QDateTime start; // midnight for a whole day
    bool allDay = false;
};

// Set by the application object; without it no new appointment can be made.
struct HostContext {
    QPointer<CalendarSession> session;
    std::function<NewPlace()> placeOfNew;
    static HostContext &instance() {
        static auto *context = new HostContext;
        return *context;
    }
};

} // namespace mailhost
