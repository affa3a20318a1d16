// Writes nodes of a parsed HTML text as HTML again. Texts are UTF-8.
#pragma once

#include <gumbo.h>
#include <string>

namespace platform {

// What is written in place of what an element holds.
struct ReplacedContent {
    const GumboNode *element = nullptr;
    std::string html;
};

[[nodiscard]] std::string outerHtmlOf(const GumboNode &node);
// What the node holds, written as the content of `parent`; of a document with its type.
[[nodiscard]] std::string contentOf(const GumboNode &node, const GumboNode &parent,
                                    const ReplacedContent &replaced = {});

// The name as it is written, in lower case but for names of svg that have upper case letters.
[[nodiscard]] std::string elementName(const GumboElement &element);
[[nodiscard]] const GumboVector *childrenOf(const GumboNode &node); // nullptr: it can have none

} // namespace platform
