// The host's double with every method of the hook table, each call of which is recorded.
#pragma once

#include "plugin/hooks/HookRowName.h"
#include "tests/support/FakeHost.h"

#include <optional>

namespace hookedhost {

// What the host's own implementations were called with, as "<class> <selector>(<number of arguments>)".
QStringList &calls();
// What the host's own implementations answer, by "<class> <selector>"; no value when not set.
QHash<QString, rt::Value> &answers();

// Defines all classes, with every method of the table but the one of `without`. Once per process.
void define(std::optional<HookRowName> without = {});

} // namespace hookedhost
