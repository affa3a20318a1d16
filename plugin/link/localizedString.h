// The texts that a user sees.
#pragma once

#include <QString>

// The plug-in's text behind the key; "" when there is none.
[[nodiscard]] QString vlLocalizedString(const QString &key);
