// Owning handles for objects of libical, and conversion of its times to seconds.
#pragma once

#include "standin/mailhost/store/ClockTime.h"

#include <libical/ical.h>
#include <memory>
#include <optional>

namespace mailhost {

struct IcalDeleter {
    void operator()(icalcomponent *component) const { icalcomponent_free(component); }
    void operator()(icaltimezone *zone) const { icaltimezone_free(zone, 1); }
    void operator()(icalrecur_iterator *iterator) const { icalrecur_iterator_free(iterator); }
};
using IcalComponent = std::unique_ptr<icalcomponent, IcalDeleter>;
using IcalTimezone = std::unique_ptr<icaltimezone, IcalDeleter>;
using IcalIterator = std::unique_ptr<icalrecur_iterator, IcalDeleter>;

// Call it before the first use: libical then returns errors in the data and does not abort the process.
inline void prepareIcal() {
    static const bool prepared = [] {
        icalerror_set_errors_are_fatal(0);
        return true;
    }();
    (void)prepared;
}

// Without a zone: a clock time, or an instant where libical takes UTC.
[[nodiscard]] inline icaltimetype icalTime(Seconds seconds) {
    const QDate date = dateOf(seconds);
    const int second = int(seconds - midnightOf(seconds));
    icaltimetype time = icaltime_null_time();
    time.year = date.year();
    time.month = date.month();
    time.day = date.day();
    time.hour = second / 3600;
    time.minute = second / 60 % 60;
    time.second = second % 60;
    return time;
}

// No value for a day that does not exist, which a rule in a damaged file may give.
[[nodiscard]] inline std::optional<Seconds> secondsOf(const icaltimetype &time) {
    const QDate date(time.year, time.month, time.day);
    if (!date.isValid())
        return std::nullopt;
    return secondsOf(date) + time.hour * 3600 + time.minute * 60 + time.second;
}

} // namespace mailhost
