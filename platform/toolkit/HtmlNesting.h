// A limit on how deeply the elements of an HTML text nest.
#pragma once

#include <string>

namespace platform {

// The HTML without the tags of the elements that lie deeper than `limit`; what these hold stays, at that
// depth. The depth is that of the open tags as the parser will see them, but for elements that cannot nest
// without another kind between (p, a, parts of a table): the parsed tree may be a few times as deep. Linear
// in the text for a given limit.
[[nodiscard]] std::string withNestingLimited(std::string html, int limit);

} // namespace platform
