#include "plugin/host/body/bodyPorts.h"

BodyPorts &BodyPorts::instance() {
    static auto *ports = new BodyPorts;
    return *ports;
}
