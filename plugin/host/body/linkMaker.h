// Makes HTML of a plain text: links of its addresses, and breaks of its line ends.
#pragma once

#include <QString>
#include <QStringView>

// The text with "<a href=..." around every address that qualifies and "<br>" in place of every "\n". Nothing
// else is changed. Never null. Linear, but for addresses made of thousands of addresses (n times the root of
// n).
[[nodiscard]] QString withLinksAndBreaks(QStringView text);
