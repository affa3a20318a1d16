// A fixed place for diagnostics of host objects.
#pragma once

namespace rt {
class Object;
}

class vlDebugHelper {
public:
    // Told of every host object that an adapter wraps. Does nothing in this build.
    static void displayClassFuncs(const rt::Object *) {}
};
