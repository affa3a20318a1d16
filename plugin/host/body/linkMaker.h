// Makes HTML of a plain text: links of its addresses, and breaks of its line ends.
#pragma once

#include <QString>

// The text with "<a href=..." around every address that qualifies and lineBreakTag in place of every "\n".
// Nothing else is changed. Never null. Walks over the text once for each address.
[[nodiscard]] QString withLinksAndBreaks(const QString &text);
