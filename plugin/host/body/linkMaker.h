// Makes HTML of a plain text: links of its addresses, and breaks of its line ends.
#pragma once

#include <QString>
#include <QStringView>

inline const QString lineBreakTag = QStringLiteral("<br>");

// The text with "<a href=..." around every address that qualifies and lineBreakTag in place of every "\n".
// Nothing else is changed. Never null. Linear, but for addresses made of thousands of addresses (n times the
// root of n).
[[nodiscard]] QString withLinksAndBreaks(QStringView text);
