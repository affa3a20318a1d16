// The document model of a web view: parse, serialise, find the first element of a tag, set an element's
// content.
#pragma once

#include <QString>
#include <memory>

namespace platform {

// HTML as browsers read it (HTML living standard, parsing and serialising), with unknown tags such as those
// that mail programs write kept as they are. Nesting beyond 2,000 elements is flattened. An empty text gives
// an empty document: html, head and body.
class WebDocument {
public:
    explicit WebDocument(const QString &html);
    ~WebDocument();

    // The html element with everything in it, without the document type.
    [[nodiscard]] QString documentElementOuterHtml() const;
    [[nodiscard]] bool hasElement(const QString &tagName) const;
    // The content of the first element of that tag (any case) in document order; a null text when there is
    // none.
    [[nodiscard]] QString innerHtml(const QString &tagName) const;
    // The whole document as text, with its document type when it had one, and with another content of that
    // element: a fragment that is parsed as such. html, head and body tags in it are dropped and what they
    // hold is kept. A null text when there is no such element.
    [[nodiscard]] QString withInnerHtml(const QString &tagName, const QString &html) const;

private:
    class Parsed;
    std::unique_ptr<Parsed> m_parsed;
};

} // namespace platform
