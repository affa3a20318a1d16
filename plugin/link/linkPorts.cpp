#include "plugin/link/linkPorts.h"

LinkPorts &LinkPorts::instance() {
    static LinkPorts ports;
    return ports;
}
