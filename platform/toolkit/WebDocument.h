// The document model of a web view: parse, serialise, find the first element of a tag, set an element's
// content.
#pragma once

#include <QString>
#include <memory>

namespace platform {

struct WebNode;

// HTML as browsers read it (HTML living standard, parsing and serialising), with unknown tags such as those
// that mail programs write kept as they are. Copying shares nothing. Nesting beyond 2,000 elements is
// flattened.
class WebDocument {
public:
    WebDocument(); // an empty document: html, head and body
    explicit WebDocument(const QString &html);
    ~WebDocument();
    WebDocument(WebDocument &&) noexcept;
    WebDocument &operator=(WebDocument &&) noexcept;

    // The html element with everything in it, without the document type.
    [[nodiscard]] QString documentElementOuterHtml() const;
    // The whole document as text, with its document type when it had one.
    [[nodiscard]] QString toHtml() const;
    [[nodiscard]] bool hasElement(const QString &tagName) const;
    // The content of the first element of that tag (any case) in document order; a null text when there is
    // none.
    [[nodiscard]] QString innerHtml(const QString &tagName) const;
    // Replaces it by a fragment parsed as that element's content: html, head and body tags in it are dropped
    // and what they hold is kept. False when there is no such element.
    bool setInnerHtml(const QString &tagName, const QString &html);

private:
    std::unique_ptr<WebNode> m_root;
};

} // namespace platform
