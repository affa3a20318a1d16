// Owning handles for objects of libical.
#pragma once

#include <libical/ical.h>
#include <memory>

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
    icalerror_set_errors_are_fatal(0);
}

} // namespace mailhost
