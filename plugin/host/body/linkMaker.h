// Converts plain text to HTML: addresses become links, line ends become break tags.
#pragma once

#include <QString>

// Returns the text with a link around every address that qualifies and lineBreakTag for every "\n", otherwise
// unchanged. Never null. It reads the text once for each address.
[[nodiscard]] QString withLinksAndBreaks(const QString &text);
