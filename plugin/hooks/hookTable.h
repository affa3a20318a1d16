// The host methods that the plug-in puts itself in front of: one table, and what installs a row of it.
#pragma once

#include "platform/runtime/Runtime.h"
#include "plugin/hooks/HookRowName.h"

#include <span>

enum class HookKind { Instance, Class };

// One intercepted host method.
struct HookRow {
    HookRowName name;
    const char *hostClass;
    const char *hostSelector;
    HookKind kind;
    // The selector that is added to the host class; after the exchange it runs the host's own implementation.
    const char *replacementSelector;
    const char *signature;
    rt::Implementation replacement;
};

// All rows; never empty, lives as long as the process.
[[nodiscard]] std::span<const HookRow> hookTable();
[[nodiscard]] const HookRow &hookRow(HookRowName name);
// Adds the replacement to the host class and exchanges it with the host's method. False when the host lacks
// the class or the method; then the host works on as it did.
bool installHook(const HookRow &row);
// Calls the host's own implementation of a row's method; no value when the host has none.
rt::Value callHost(HookRowName row, rt::Object *self, rt::Args arguments);
