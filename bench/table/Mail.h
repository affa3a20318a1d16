// HTML such as mail has it, made up.
#pragma once

#include <QString>

namespace bench {

// The beginning of a mail program's document, paragraphs with fonts, links, lists, tables, entities and
// letters of other alphabets, and the end: about so many bytes of UTF-8.
[[nodiscard]] QString mailOf(qsizetype bytes);
// So many elements, each inside the one before.
[[nodiscard]] QString nestedElements(int depth);

} // namespace bench
