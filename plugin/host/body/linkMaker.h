// Makes HTML of a plain text: links of its addresses, and breaks of its line ends.
#pragma once

#include <QString>
#include <QStringView>

// The text with "<a href=..." around every address that qualifies and "<br>" in place of every "\n". Nothing
// else is changed. Never null. One pass: a link holds no line end.
[[nodiscard]] QString withLinksAndBreaks(QStringView text);
