// Splits valid and broken HTML into tags, text and the rest.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// Whether the texts are equal apart from the case of ASCII letters.
[[nodiscard]] bool isSame(std::string_view text, std::string_view other);

// The needed attributes, as written in the tag. A missing one has no data.
struct HtmlAttributes {
    std::string_view style;
    std::string_view start;
    std::string_view value;
};

struct HtmlToken {
    // Other: a comment, a declaration, or a tag that the text ends in.
    enum class Kind { Text, StartTag, EndTag, Other };
    Kind kind = Kind::Text;
    std::string_view source; // the whole token
    std::string_view name;   // of a tag, as written
    HtmlAttributes attributes;
    bool selfClosing = false;
};

// Takes linear time. The tokens point into the HTML and together cover all of it.
class HtmlTokenizer {
public:
    HtmlTokenizer() = default;
    explicit HtmlTokenizer(std::string_view html)
        : m_html(html) {}
    // Returns false at the end.
    bool next(HtmlToken *token);
    // Call it after the start tag of an element with raw text. Returns the text up to the end tag of that
    // name or the end of the HTML.
    [[nodiscard]] std::string_view takeRawText(std::string_view name);
    // The next token begins at that position.
    void skipTo(std::size_t position) { m_at = position; }

private:
    [[nodiscard]] HtmlToken::Kind readMarkup(HtmlToken *token);
    std::string_view takeUntil(unsigned classes);
    // Reads up to the end of the tag. Returns false if the text ends before.
    [[nodiscard]] bool readAttributes(HtmlToken *token);
    [[nodiscard]] std::string_view readValue();
    void skipComment();
    void skipSpaces();
    void skipPast(std::string_view end);
    [[nodiscard]] char at(std::size_t position) const {
        return position < m_html.size() ? m_html[position] : '\0';
    }

    std::string_view m_html;
    std::size_t m_at = 0;
};

} // namespace platform
