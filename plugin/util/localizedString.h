// The localised texts of the user interface.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The localisation table of all these texts.
inline const QString vl_LocalizableTable = u"Localizable_prl"_s;

// The plug-in's text for the key; "" if there is none.
[[nodiscard]] QString vlLocalizedString(const QString &key);
