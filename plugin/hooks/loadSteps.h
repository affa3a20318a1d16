// The steps of loading the plug-in: twelve hook classes, each with its condition and its rows of the hook
// table.
#pragma once

#include "plugin/hooks/HookRowName.h"

#include <span>

struct LoadStep {
    const char *hookClass;
    HookRowName firstRow;
    HookRowName lastRow;
    // Runs first; if it returns false, the rows are not installed. nullptr: no condition.
    bool (*before)();
    // Runs after the installation; may be nullptr.
    void (*after)();
};

// The steps in the order in which they run.
[[nodiscard]] std::span<const LoadStep> loadSteps();
// Runs all steps. Call it once per process, when the host's classes exist and services and ports are filled.
void runLoadSteps();
