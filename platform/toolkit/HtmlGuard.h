// Prepares HTML for the parser of the web document.
#pragma once

#include <string>

namespace platform {

// Returns the HTML without input that the parser cannot handle. Elements nested deeper than `limit` lose
// their tags but keep their content. The depth counts the open tags as the parser will see them, except
// elements that cannot nest directly (p, a, parts of a table), so the parsed tree may be a few times deeper.
// CDATA sections inside svg or math become escaped text, which is equivalent. Elsewhere they are rewritten as
// the comment that browsers read, because the parser aborts the process on a section inside a table. Linear
// in the text for a given limit.
[[nodiscard]] std::string guardedHtml(std::string html, int limit);

} // namespace platform
