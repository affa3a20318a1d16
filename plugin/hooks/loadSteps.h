// What happens when the plug-in is loaded: twelve hook classes, each with its condition and its rows of the
// hook table.
#pragma once

#include "plugin/hooks/HookRowName.h"

#include <span>

struct LoadStep {
    const char *hookClass;
    HookRowName firstRow;
    HookRowName lastRow;
    // Runs first; false leaves the rows uninstalled. nullptr: nothing runs and the rows are installed.
    bool (*before)();
    // Runs after the rows were installed; may be nullptr.
    void (*after)();
};

// The steps in the order in which they run.
[[nodiscard]] std::span<const LoadStep> loadSteps();
// Runs them all. Once per process; the host's classes must exist, and services and ports must be filled.
void runLoadSteps();
