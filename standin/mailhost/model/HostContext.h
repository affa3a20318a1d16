// What class methods of the host's object model, which have no object to ask, need to know.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"

#include <QDateTime>
#include <QPointer>
#include <functional>

namespace mailhost {

// Where a new appointment is put.
struct NewPlace {
    QDateTime start; // midnight for a whole day
    bool allDay = false;
};

// Filled by the application object; with an empty one nothing new can be made.
struct HostContext {
    QPointer<CalendarSession> session;
    std::function<NewPlace()> placeOfNew;
    static HostContext &instance() {
        static auto *context = new HostContext;
        return *context;
    }
};

} // namespace mailhost
