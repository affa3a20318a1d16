// A hook for diagnostics of host objects.
#pragma once

namespace rt {
class Object;
}

class vlDebugHelper {
public:
    // Debug hook, called with each wrapped host object. Empty in this build.
    static void displayClassFuncs(const rt::Object *) {}
};
