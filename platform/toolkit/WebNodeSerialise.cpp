#include "platform/toolkit/WebNode.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

template<std::size_t size>
using Names = std::array<std::string_view, size>;

constexpr Names<18> voidTags = {"area",  "base",  "basefont", "bgsound", "br",    "col",
                                "embed", "frame", "hr",       "img",     "input", "keygen",
                                "link",  "meta",  "param",    "source",  "track", "wbr"};
constexpr Names<7> rawTextTags = {"style", "script", "xmp", "iframe", "noembed", "noframes", "plaintext"};
// The parser drops a newline that comes first in these.
constexpr Names<3> newlineTags = {"pre", "textarea", "listing"};

template<std::size_t size>
bool isOneOf(const WebNode &element, const Names<size> &names) {
    return !element.foreign && std::find(names.begin(), names.end(), element.name) != names.end();
}

constexpr std::string_view noBreakSpace = "\xC2\xA0";

// The entity for the character that begins the text, and how many bytes that character has.
std::pair<std::string_view, std::size_t> entityAt(std::string_view text, bool inAttribute) {
    switch (text.front()) {
    case '&':
        return {"&amp;", 1};
    case '"':
        return inAttribute ? std::pair("&quot;", 1) : std::pair("\"", 1);
    case '<':
        return inAttribute ? std::pair("<", 1) : std::pair("&lt;", 1);
    case '>':
        return inAttribute ? std::pair(">", 1) : std::pair("&gt;", 1);
    default:
        break;
    }
    if (text.starts_with(noBreakSpace))
        return {"&nbsp;", noBreakSpace.size()};
    return {text.substr(0, 1), 1};
}

void appendEscaped(std::string &out, std::string_view text, bool inAttribute) {
    constexpr std::string_view special = "&\"<>\xC2";
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of(special), text.size());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            return;
        const auto [entity, length] = entityAt(text, inAttribute);
        out += entity;
        text.remove_prefix(length);
    }
}

bool beginsWithNewline(const WebNode &element) {
    return !element.children.empty() && element.children.front()->kind == WebNode::Kind::Text &&
           element.children.front()->text.starts_with('\n');
}

void appendStartTag(std::string &out, const WebNode &element) {
    out += '<';
    out += element.name;
    for (const WebAttribute &attribute : element.attributes) {
        out += ' ';
        out += attribute.name;
        out += "=\"";
        appendEscaped(out, attribute.value, true);
        out += '"';
    }
    out += '>';
    if (isOneOf(element, newlineTags) && beginsWithNewline(element))
        out += '\n';
}

// A quote of the other kind when the identifier has one; it never has both.
void appendIdentifier(std::string &out, const std::string &identifier) {
    const char quote = identifier.find('"') == std::string::npos ? '"' : '\'';
    out += ' ';
    out += quote;
    out += identifier;
    out += quote;
}

void appendDoctype(std::string &out, const WebNode &doctype) {
    out += "<!DOCTYPE " + doctype.name;
    if (!doctype.publicId.empty()) {
        out += " PUBLIC";
        appendIdentifier(out, doctype.publicId);
    } else if (!doctype.systemId.empty()) {
        out += " SYSTEM";
    }
    if (!doctype.systemId.empty())
        appendIdentifier(out, doctype.systemId);
    out += '>';
}

// What stands before the node's children.
void appendOpening(std::string &out, const WebNode &node, const WebNode *parent) {
    switch (node.kind) {
    case WebNode::Kind::Document:
        break;
    case WebNode::Kind::Doctype:
        appendDoctype(out, node);
        break;
    case WebNode::Kind::Element:
        appendStartTag(out, node);
        break;
    case WebNode::Kind::Comment:
        out += "<!--" + node.text + "-->";
        break;
    case WebNode::Kind::Text:
        if (parent && isOneOf(*parent, rawTextTags))
            out += node.text;
        else
            appendEscaped(out, node.text, false);
        break;
    }
}

void appendClosing(std::string &out, const WebNode &node) {
    if (node.kind == WebNode::Kind::Element && !isOneOf(node, voidTags))
        out += "</" + node.name + '>';
}

void appendContent(std::string &out, const WebNode &root) {
    struct Level {
        const WebNode *node;
        std::size_t next;
    };
    std::vector<Level> open{{&root, 0}};
    while (!open.empty()) {
        Level &level = open.back();
        if (level.next < level.node->children.size()) {
            const WebNode *parent = level.node;
            const WebNode *child = parent->children[level.next++].get();
            appendOpening(out, *child, parent);
            open.push_back({child, 0});
            continue;
        }
        const WebNode *ended = level.node;
        open.pop_back();
        if (!open.empty())
            appendClosing(out, *ended);
    }
}

} // namespace

std::string outerHtmlOf(const WebNode &node) {
    std::string out;
    appendOpening(out, node, nullptr);
    appendContent(out, node);
    appendClosing(out, node);
    return out;
}

std::string innerHtmlOf(const WebNode &node) {
    std::string out;
    appendContent(out, node);
    return out;
}

} // namespace platform
