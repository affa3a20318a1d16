// Exchanging what a host class does under one selector with what it does under another.
#pragma once

#include "platform/runtime/Runtime.h"

class classSwizzle {
public:
    // Exchanges the implementations that instances of the class have under the two selectors. False, and
    // nothing exchanged, when the class is nullptr or either method is missing.
    static bool method_InstanceSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL);
    // The same for class methods.
    static bool method_ClassSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL);
};
