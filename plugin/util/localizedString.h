// The texts that a user sees.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The localisation table of every text that a user sees.
inline const QString vl_LocalizableTable = u"Localizable_prl"_s;

// The plug-in's text behind the key; "" when there is none.
[[nodiscard]] QString vlLocalizedString(const QString &key);
