#include "platform/toolkit/WebDocument.h"

#include "platform/toolkit/GumboSerialiser.h"
#include "platform/toolkit/HtmlGuard.h"

namespace platform {

namespace {

constexpr int maxNesting = 2000;

QString text(const std::string &utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
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
    // nullptr if there is none.
    [[nodiscard]] const GumboNode *body() const {
        const GumboVector &children = root().v.element.children;
        for (unsigned i = 0; i < children.length; ++i) {
            const auto *child = static_cast<const GumboNode *>(children.data[i]);
            if (child->type == GUMBO_NODE_ELEMENT && child->v.element.tag == GUMBO_TAG_BODY)
                return child;
        }
        return nullptr;
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

QString WebDocument::bodyHtml() const {
    const GumboNode *body = m_parsed->body();
    return body ? text(contentOf(*body)) : QString();
}

QString WebDocument::withBodyHtml(const QString &html) const {
    const GumboNode *body = m_parsed->body();
    if (!body)
        return {};
    const Parsed fragment(html, GUMBO_TAG_BODY);
    return text(contentOf(m_parsed->document(), {body, contentOf(fragment.root())}));
}

} // namespace platform
