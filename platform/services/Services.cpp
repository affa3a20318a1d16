#include "platform/services/Services.h"

#include <utility>

namespace platform {

Services &services() {
    static auto *current = new Services;
    return *current;
}

void setServices(Services replacement) {
    // The old ones die with the new ones in place: what is released with them may call a service.
    const Services old = std::exchange(services(), std::move(replacement));
}

} // namespace platform
