#include "platform/toolkit/WebDocument.h"

#include "platform/toolkit/GumboSerialiser.h"
#include "platform/toolkit/HtmlGuard.h"

#include <strings.h>

namespace platform {

namespace {

constexpr int maxNesting = 2000;

QString text(const std::string &utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

// The first element of that name in document order (ignoring case), or nullptr.
const GumboNode *firstElement(const GumboNode &root, const QByteArray &name) {
    std::vector<const GumboNode *> pending{&root};
    while (!pending.empty()) {
        const GumboNode *node = pending.back();
        pending.pop_back();
        const bool isElement = node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE;
        if (isElement && strcasecmp(elementName(node->v.element).c_str(), name.constData()) == 0)
            return node;
        const GumboVector *children = childrenOf(*node);
        for (unsigned i = children ? children->length : 0; i-- > 0;)
            pending.push_back(static_cast<const GumboNode *>(children->data[i]));
    }
    return nullptr;
}

// A root or an unknown element is parsed like a body.
GumboTag contextTag(const GumboElement &element) {
    const bool isOutermost = element.tag == GUMBO_TAG_HTML || element.tag == GUMBO_TAG_HEAD;
    const bool isKnown = element.tag != GUMBO_TAG_UNKNOWN && element.tag_namespace == GUMBO_NAMESPACE_HTML;
    return isOutermost || !isKnown ? GUMBO_TAG_BODY : element.tag;
}

} // namespace

class WebDocument::Parsed {
public:
    // Parses a whole document, or the content of an element with the context's tag.
    explicit Parsed(const QString &html, GumboTag context = GUMBO_TAG_LAST)
        : m_html(guardedHtml(html.toStdString(), maxNesting)) {
        m_options.max_errors = 0;
        m_options.fragment_context = context;
        m_output = gumbo_parse_with_options(&m_options, m_html.data(), m_html.size());
    }
    ~Parsed() { gumbo_destroy_output(&m_options, m_output); }
    Parsed(const Parsed &) = delete;
    Parsed &operator=(const Parsed &) = delete;

    [[nodiscard]] const GumboNode &document() const { return *m_output->document; }
    // The html element; for a fragment an element that contains it.
    [[nodiscard]] const GumboNode &root() const { return *m_output->root; }
    [[nodiscard]] const GumboNode *element(const QString &tagName) const {
        return firstElement(document(), tagName.toUtf8());
    }

private:
    std::string m_html; // the nodes point into it
    GumboOptions m_options = kGumboDefaultOptions;
    GumboOutput *m_output;
};

WebDocument::WebDocument(const QString &html)
    : m_parsed(std::make_unique<Parsed>(html)) {}
WebDocument::~WebDocument() = default;

QString WebDocument::documentElementOuterHtml() const {
    return text(outerHtmlOf(m_parsed->root()));
}

QString WebDocument::innerHtml(const QString &tagName) const {
    const GumboNode *element = m_parsed->element(tagName);
    return element ? text(contentOf(*element, *element)) : QString();
}

QString WebDocument::withInnerHtml(const QString &tagName, const QString &html) const {
    const GumboNode *element = m_parsed->element(tagName);
    if (!element)
        return {};
    const Parsed fragment(html, contextTag(element->v.element));
    const GumboNode &document = m_parsed->document();
    return text(contentOf(document, document, {element, contentOf(fragment.root(), *element)}));
}

} // namespace platform
