// The link's memory as a whole.
#pragma once

// Forgets all that the link keeps: requests under way, the profile, the last meeting, the accounts. For a
// test or a simulation that has just put other services in place; the shared objects are made anew, on those
// services, when they are next asked for. References to the old ones end here. A plug-in never calls it.
// Ports are left as they are.
void startLinkAfresh();
