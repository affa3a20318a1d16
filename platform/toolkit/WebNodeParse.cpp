#include "platform/toolkit/WebNode.h"

#include <algorithm>
#include <gumbo.h>

namespace platform {

namespace {

std::string lowerCase(std::string_view text) {
    std::string result(text);
    for (char &c : result)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    return result;
}

class ParsedHtml {
public:
    ParsedHtml(const std::string &html, GumboTag context, GumboNamespaceEnum contextNamespace) {
        m_options.max_errors = 0;
        m_options.fragment_context = context;
        m_options.fragment_namespace = contextNamespace;
        m_output = gumbo_parse_with_options(&m_options, html.data(), html.size());
    }
    ~ParsedHtml() {
        if (m_output)
            gumbo_destroy_output(&m_options, m_output);
    }
    ParsedHtml(const ParsedHtml &) = delete;
    ParsedHtml &operator=(const ParsedHtml &) = delete;

    [[nodiscard]] const GumboNode *document() const { return m_output ? m_output->document : nullptr; }
    [[nodiscard]] const GumboNode *root() const { return m_output ? m_output->root : nullptr; }

private:
    GumboOptions m_options = kGumboDefaultOptions;
    GumboOutput *m_output = nullptr;
};

// The parser knows only the names of the standard; any other is in the source text alone.
std::string elementName(const GumboElement &element) {
    GumboStringPiece original = element.original_tag;
    gumbo_tag_from_original_text(&original);
    if (element.tag_namespace == GUMBO_NAMESPACE_SVG && original.length > 0)
        if (const char *name = gumbo_normalize_svg_tagname(&original))
            return name;
    if (element.tag != GUMBO_TAG_UNKNOWN)
        return gumbo_normalized_tagname(element.tag);
    return lowerCase({original.data, original.length});
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

std::unique_ptr<WebNode> elementNode(const GumboElement &element) {
    auto node = std::make_unique<WebNode>(WebNode::Kind::Element);
    node->name = elementName(element);
    node->foreign = element.tag_namespace != GUMBO_NAMESPACE_HTML;
    for (unsigned i = 0; i < element.attributes.length; ++i) {
        const auto *attribute = static_cast<const GumboAttribute *>(element.attributes.data[i]);
        node->attributes.push_back({attributeName(*attribute), attribute->value});
    }
    return node;
}

std::unique_ptr<WebNode> textNode(WebNode::Kind kind, const char *text) {
    auto node = std::make_unique<WebNode>(kind);
    node->text = text;
    return node;
}

std::unique_ptr<WebNode> convertedNode(const GumboNode &source) {
    switch (source.type) {
    case GUMBO_NODE_ELEMENT:
    case GUMBO_NODE_TEMPLATE:
        return elementNode(source.v.element);
    case GUMBO_NODE_COMMENT:
        return textNode(WebNode::Kind::Comment, source.v.text.text);
    case GUMBO_NODE_TEXT:
    case GUMBO_NODE_CDATA:
    case GUMBO_NODE_WHITESPACE:
        return textNode(WebNode::Kind::Text, source.v.text.text);
    case GUMBO_NODE_DOCUMENT:
        break;
    }
    return nullptr;
}

const GumboVector *childrenOf(const GumboNode &node) {
    switch (node.type) {
    case GUMBO_NODE_DOCUMENT:
        return &node.v.document.children;
    case GUMBO_NODE_ELEMENT:
    case GUMBO_NODE_TEMPLATE:
        return &node.v.element.children;
    default:
        return nullptr;
    }
}

void copyChildren(const GumboNode &from, WebNode &to) {
    std::vector<std::pair<const GumboNode *, WebNode *>> pending{{&from, &to}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        const GumboVector *children = childrenOf(*source);
        for (unsigned i = 0; children && i < children->length; ++i) {
            const auto *child = static_cast<const GumboNode *>(children->data[i]);
            std::unique_ptr<WebNode> node = convertedNode(*child);
            if (!node)
                continue;
            pending.emplace_back(child, node.get());
            target->children.push_back(std::move(node));
        }
    }
}

std::unique_ptr<WebNode> doctypeNode(const GumboDocument &document) {
    auto node = std::make_unique<WebNode>(WebNode::Kind::Doctype);
    node->name = document.name;
    node->publicId = document.public_identifier;
    node->systemId = document.system_identifier;
    return node;
}

GumboTag contextTag(const WebNode &element) {
    // A root or an unknown element takes what a body takes.
    if (element.name == "html" || element.name == "head")
        return GUMBO_TAG_BODY;
    const GumboTag tag = gumbo_tag_enum(element.name.c_str());
    return tag == GUMBO_TAG_UNKNOWN || element.foreign ? GUMBO_TAG_BODY : tag;
}

} // namespace

WebNode::~WebNode() {
    Children dying = std::move(children);
    while (!dying.empty()) {
        const std::unique_ptr<WebNode> node = std::move(dying.back());
        dying.pop_back();
        for (std::unique_ptr<WebNode> &child : node->children)
            dying.push_back(std::move(child));
        node->children.clear();
    }
}

std::unique_ptr<WebNode> parseDocument(const std::string &html) {
    auto root = std::make_unique<WebNode>(WebNode::Kind::Document);
    const ParsedHtml parsed(html, GUMBO_TAG_LAST, GUMBO_NAMESPACE_HTML);
    if (!parsed.document())
        return root;
    if (parsed.document()->v.document.has_doctype)
        root->children.push_back(doctypeNode(parsed.document()->v.document));
    copyChildren(*parsed.document(), *root);
    return root;
}

WebNode::Children parseFragment(const std::string &html, const WebNode &element) {
    WebNode holder(WebNode::Kind::Document);
    const ParsedHtml parsed(html, contextTag(element), GUMBO_NAMESPACE_HTML);
    if (parsed.root())
        copyChildren(*parsed.root(), holder);
    return std::move(holder.children);
}

WebNode *firstElement(WebNode *root, std::string_view name) {
    const std::string wanted = lowerCase(name);
    if (!root || wanted.empty())
        return nullptr;
    std::vector<WebNode *> pending{root};
    while (!pending.empty()) {
        WebNode *node = pending.back();
        pending.pop_back();
        if (node->kind == WebNode::Kind::Element && lowerCase(node->name) == wanted)
            return node;
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
            pending.push_back(child->get());
    }
    return nullptr;
}

} // namespace platform
