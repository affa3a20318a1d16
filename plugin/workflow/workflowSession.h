// The workflow's memory as a whole.
#pragma once

// Forgets all that the workflow keeps. For a test or a simulation that puts other services in place; the
// shared objects are made anew, on the services of then, when they are next asked for. References to the old
// ones end here, and the ports of lower floors that lead to them are emptied. A plug-in never calls it.
void startWorkflowAfresh();
