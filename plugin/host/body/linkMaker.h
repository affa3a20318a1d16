// Finds the addresses in a plain text and makes links of them.
#pragma once

#include <QString>
#include <QStringView>

// The text with "<a href=..." around every address that qualifies. Nothing else is changed. Never null.
[[nodiscard]] QString withLinks(QStringView text);
