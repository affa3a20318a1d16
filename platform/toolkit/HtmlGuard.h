// What is taken out of an HTML text before the parser of the web document gets it.
#pragma once

#include <string>

namespace platform {

// The HTML without what the parser cannot bear. Elements that lie deeper than `limit` lose their tags; what
// they hold stays, at that depth. The depth is that of the open tags as the parser will see them, but for
// elements that cannot nest without another kind between (p, a, parts of a table): the parsed tree may be a
// few times as deep. CDATA sections inside svg or math become escaped text, which means the same; elsewhere
// they are written so that the parser reads the odd comment that browsers do: it ends the process on a
// section inside a table. Linear in the text for a given limit.
[[nodiscard]] std::string guardedHtml(std::string html, int limit);

} // namespace platform
