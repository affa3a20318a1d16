#include "platform/toolkit/GumboSerialiser.h"

#include "platform/services/html/HtmlElement.h"

#include <vector>

namespace platform {

namespace {

constexpr std::string_view noBreakSpace = "\xC2\xA0";

bool isElement(const GumboNode &node) {
    return node.type == GUMBO_NODE_ELEMENT || node.type == GUMBO_NODE_TEMPLATE;
}

bool isAny(const GumboElement &element, std::uint32_t traits) {
    return element.tag_namespace == GUMBO_NAMESPACE_HTML && element.tag != GUMBO_TAG_UNKNOWN &&
           HtmlElement::named(gumbo_normalized_tagname(element.tag)).element.isAny(traits);
}

bool hasRawText(const GumboNode &node) {
    return isElement(node) && isAny(node.v.element, HtmlElement::RawText) &&
           !isAny(node.v.element, HtmlElement::References);
}

const GumboNode *childOf(const GumboNode &node, unsigned index) {
    const GumboVector *children = childrenOf(node);
    return children && index < children->length ? static_cast<const GumboNode *>(children->data[index])
                                                : nullptr;
}

// In lower case, except names of svg with upper-case letters. The parser knows only standard names; other
// names exist only in the source text.
std::string elementName(const GumboElement &element) {
    GumboStringPiece original = element.original_tag;
    gumbo_tag_from_original_text(&original);
    if (element.tag_namespace == GUMBO_NAMESPACE_SVG && original.length > 0)
        if (const char *name = gumbo_normalize_svg_tagname(&original))
            return name;
    if (element.tag != GUMBO_TAG_UNKNOWN)
        return gumbo_normalized_tagname(element.tag);
    std::string name(original.data, original.length);
    for (char &c : name)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    return name;
}

std::string attributeName(const GumboAttribute &attribute) {
    const std::string name = attribute.name;
    switch (attribute.attr_namespace) {
    case GUMBO_ATTR_NAMESPACE_XLINK:
        return "xlink:" + name;
    case GUMBO_ATTR_NAMESPACE_XML:
        return "xml:" + name;
    case GUMBO_ATTR_NAMESPACE_XMLNS:
        return name == "xmlns" ? name : "xmlns:" + name;
    case GUMBO_ATTR_NAMESPACE_NONE:
        break;
    }
    return name;
}

void appendEscaped(std::string &out, std::string_view text, bool inAttribute) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&') {
            out += "&amp;";
        } else if (text[i] == '"' && inAttribute) {
            out += "&quot;";
        } else if (text[i] == '<' && !inAttribute) {
            out += "&lt;";
        } else if (text[i] == '>' && !inAttribute) {
            out += "&gt;";
        } else if (text.substr(i, noBreakSpace.size()) == noBreakSpace) {
            out += "&nbsp;";
            i += noBreakSpace.size() - 1;
        } else {
            out += text[i];
        }
    }
}

// Uses the other kind of quote if the identifier contains one; an identifier never contains both.
void appendIdentifier(std::string &out, const std::string &identifier) {
    const char quote = identifier.find('"') == std::string::npos ? '"' : '\'';
    out += ' ';
    out += quote;
    out += identifier;
    out += quote;
}

void appendDoctype(std::string &out, const GumboDocument &document) {
    const std::string publicId = document.public_identifier;
    const std::string systemId = document.system_identifier;
    out += "<!DOCTYPE ";
    out += document.name;
    if (!publicId.empty()) {
        out += " PUBLIC";
        appendIdentifier(out, publicId);
    } else if (!systemId.empty()) {
        out += " SYSTEM";
    }
    if (!systemId.empty())
        appendIdentifier(out, systemId);
    out += '>';
}

class Serialiser {
public:
    explicit Serialiser(const ReplacedContent &replaced)
        : m_replaced(replaced) {}

    // Writes the node's part before its children.
    void open(const GumboNode &node, const GumboNode *parent) {
        switch (node.type) {
        case GUMBO_NODE_DOCUMENT:
            break;
        case GUMBO_NODE_ELEMENT:
        case GUMBO_NODE_TEMPLATE:
            appendStartTag(node);
            break;
        case GUMBO_NODE_COMMENT:
            m_out += "<!--";
            m_out += node.v.text.text;
            m_out += "-->";
            break;
        case GUMBO_NODE_TEXT:
        case GUMBO_NODE_CDATA:
        case GUMBO_NODE_WHITESPACE:
            if (parent && hasRawText(*parent))
                m_out += node.v.text.text;
            else
                appendEscaped(m_out, node.v.text.text, false);
            break;
        }
    }

    void close(const GumboNode &node) {
        if (isElement(node) && !isAny(node.v.element, HtmlElement::Void))
            m_out += "</" + elementName(node.v.element) + '>';
    }

    void appendContent(const GumboNode &root) {
        struct Level {
            const GumboNode *node;
            unsigned next;
        };
        if (root.type == GUMBO_NODE_DOCUMENT && root.v.document.has_doctype)
            appendDoctype(m_out, root.v.document);
        std::vector<Level> open{{&root, 0}};
        while (!open.empty()) {
            Level &level = open.back();
            const bool isReplaced = level.node == m_replaced.element;
            if (isReplaced)
                m_out += m_replaced.html;
            if (const GumboNode *child = isReplaced ? nullptr : childOf(*level.node, level.next++)) {
                this->open(*child, level.node);
                open.push_back({child, 0});
                continue;
            }
            const GumboNode *ended = level.node;
            open.pop_back();
            if (!open.empty())
                close(*ended);
        }
    }

    std::string take() { return std::move(m_out); }

private:
    void appendStartTag(const GumboNode &node) {
        const GumboElement &element = node.v.element;
        m_out += '<' + elementName(element);
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const auto *attribute = static_cast<const GumboAttribute *>(element.attributes.data[i]);
            m_out += ' ' + attributeName(*attribute) + "=\"";
            appendEscaped(m_out, attribute->value, true);
            m_out += '"';
        }
        m_out += '>';
        // A parser would drop a newline at the beginning.
        if (isAny(element, HtmlElement::FirstNewline) && beginsWithNewline(node))
            m_out += '\n';
    }

    [[nodiscard]] static bool beginsWithNewline(const GumboNode &node) {
        const GumboNode *first = childOf(node, 0);
        return first && !isElement(*first) && first->type != GUMBO_NODE_COMMENT &&
               first->v.text.text[0] == '\n';
    }

    const ReplacedContent &m_replaced;
    std::string m_out;
};

} // namespace

const GumboVector *childrenOf(const GumboNode &node) {
    if (node.type == GUMBO_NODE_DOCUMENT)
        return &node.v.document.children;
    return isElement(node) ? &node.v.element.children : nullptr;
}

std::string outerHtmlOf(const GumboNode &node) {
    const ReplacedContent nothing;
    Serialiser serialiser(nothing);
    serialiser.open(node, nullptr);
    serialiser.appendContent(node);
    serialiser.close(node);
    return serialiser.take();
}

std::string contentOf(const GumboNode &node, const ReplacedContent &replaced) {
    Serialiser serialiser(replaced);
    serialiser.appendContent(node);
    return serialiser.take();
}

} // namespace platform
