#include "plugin/hooks/classSwizzle.h"

bool classSwizzle::method_InstanceSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL) {
    return rt::exchangeImplementations(rt::instanceMethod(cls, origSEL), rt::instanceMethod(cls, altSEL));
}

bool classSwizzle::method_ClassSwizzle(rt::Class *cls, rt::Selector origSEL, rt::Selector altSEL) {
    return rt::exchangeImplementations(rt::classMethod(cls, origSEL), rt::classMethod(cls, altSEL));
}
