// The settings that the signed-in user last confirmed.
#pragma once

#include <QVariantMap>

// The object in the user's local profile file; empty without a profile, without a file, and for a file that
// is no JSON.
[[nodiscard]] QVariantMap savedSettings();
