// Exchanges the methods that a host class has under two selectors.
#pragma once

#include "platform/runtime/Runtime.h"

class classSwizzle {
public:
    // Exchanges the instance methods of the two selectors. Returns false and exchanges nothing if the class
    // is nullptr or either method is missing.
    static bool method_InstanceSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL);
    // Does the same with class methods.
    static bool method_ClassSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL);
};
