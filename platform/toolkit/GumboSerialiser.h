// Serialises nodes of parsed HTML. Texts are UTF-8.
#pragma once

#include <gumbo.h>
#include <string>

namespace platform {

// Replaces the content of an element in the output.
struct ReplacedContent {
    const GumboNode *element = nullptr;
    std::string html;
};

[[nodiscard]] std::string outerHtmlOf(const GumboNode &node);
// The serialised content of the node; for a document including its type.
[[nodiscard]] std::string contentOf(const GumboNode &node, const ReplacedContent &replaced = {});

[[nodiscard]] const GumboVector *childrenOf(const GumboNode &node); // nullptr if it cannot have children

} // namespace platform
