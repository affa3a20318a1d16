#include "plugin/workflow/workflowPorts.h"

WorkflowPorts &WorkflowPorts::instance() {
    static WorkflowPorts ports;
    return ports;
}
