// What class methods of the host's object model, which have no object to ask, need to know.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"

#include <QDateTime>
#include <QPointer>
#include <functional>

namespace mailhost {

// Filled by the application object; with an empty one nothing new can be made.
struct HostContext {
    QPointer<CalendarSession> session;
    std::function<QDateTime()> startOfNew; // where a new appointment begins
    static HostContext &instance() {
        static auto *context = new HostContext;
        return *context;
    }
};

} // namespace mailhost
