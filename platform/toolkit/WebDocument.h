// The document model of a web view: parses, serialises, and replaces the body.
#pragma once

#include <QString>
#include <memory>

namespace platform {

// Parses and serialises HTML as browsers do (HTML living standard) and keeps unknown tags, such as those of
// mail programs. Flattens nesting beyond 2,000 elements. An empty text gives an empty document: html, head
// and body.
class WebDocument {
public:
    explicit WebDocument(const QString &html);
    ~WebDocument();

    // The html element with its content, without the document type.
    [[nodiscard]] QString documentElementOuterHtml() const;
    // The content of the body; null if there is none, as in a document of frames.
    [[nodiscard]] QString bodyHtml() const;
    // The whole document (with its document type, if any) with the fragment `html` as the content of its
    // body. Tags html, head and body in the fragment are dropped, their content is kept. Null if there is no
    // body.
    [[nodiscard]] QString withBodyHtml(const QString &html) const;

private:
    class Parsed;
    std::unique_ptr<Parsed> m_parsed;
};

} // namespace platform
