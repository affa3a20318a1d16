// Character data sections of svg and math in an HTML text.
#pragma once

#include <string>

namespace platform {

// The HTML with each "<![CDATA[...]]>" inside svg or math written as escaped text, which means the same, and
// each one elsewhere, where it is only an odd comment, kept from being taken for one. The parser ends the
// process on such a section inside a table.
[[nodiscard]] std::string withoutCdataSections(std::string html);

} // namespace platform
