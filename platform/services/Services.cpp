#include "platform/services/Services.h"

#include <utility>

namespace platform {

Services &services() {
    static auto *current = new Services;
    return *current;
}

void setServices(Services replacement) {
    // The old services are destroyed after the new ones are set, because their destruction may call a
    // service.
    const Services old = std::exchange(services(), std::move(replacement));
}

} // namespace platform
