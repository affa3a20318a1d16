// The tree behind a web document, its parser and its serialiser. Texts are UTF-8.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct WebAttribute {
    std::string name; // with its prefix, as it is written
    std::string value;
};

struct WebNode {
    enum class Kind { Document, Doctype, Element, Text, Comment };
    using Children = std::vector<std::unique_ptr<WebNode>>;

    explicit WebNode(Kind nodeKind)
        : kind(nodeKind) {}
    ~WebNode(); // not recursive
    WebNode(const WebNode &) = delete;
    WebNode &operator=(const WebNode &) = delete;

    Kind kind;
    std::string name;     // of an element or a document type
    std::string text;     // of a text or a comment
    std::string publicId; // of a document type
    std::string systemId;
    bool foreign = false; // an element of svg or math
    std::vector<WebAttribute> attributes;
    Children children;
};

[[nodiscard]] std::unique_ptr<WebNode> parseDocument(const std::string &html);
// What the text gives as the content of that element.
[[nodiscard]] WebNode::Children parseFragment(const std::string &html, const WebNode &element);

// The first element of that name, any case, in document order; nullptr for none. `root` may be nullptr.
[[nodiscard]] WebNode *firstElement(WebNode *root, std::string_view name);

[[nodiscard]] std::string outerHtmlOf(const WebNode &node);
[[nodiscard]] std::string innerHtmlOf(const WebNode &node);

} // namespace platform
