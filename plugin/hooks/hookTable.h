// The table of host methods that the plug-in intercepts, and the installation of its rows.
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
    // Added to the host class; after the exchange it calls the host's implementation.
    const char *replacementSelector;
    const char *signature;
    rt::Implementation replacement;
};

// All rows; static data.
[[nodiscard]] std::span<const HookRow> hookTable();
[[nodiscard]] const HookRow &hookRow(HookRowName name);
// Adds the replacement to the host class and exchanges it with the host's method. Returns false if the host
// lacks the class or the method; then the host is unchanged.
bool installHook(const HookRow &row);
// Calls the host's implementation of a row's method; no value if the host has none.
rt::Value callHost(HookRowName row, rt::Object *self, rt::Args arguments);
