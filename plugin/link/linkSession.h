// Resets the state of the link.
#pragma once

// Drops the link's state: pending requests, the profile, the last meeting and the accounts. Only for a test
// or a simulation that has just replaced the services. The singletons are created again on next use, with the
// new services; existing references become invalid. The ports stay unchanged.
void startLinkAfresh();
