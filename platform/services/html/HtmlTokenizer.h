// Cuts HTML, however broken, into tags, text and the rest.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// Whether the texts differ in the case of ASCII letters at most.
[[nodiscard]] bool isSame(std::string_view text, std::string_view other);

// Those that matter, as they stand in the tag. One that is not there has no data.
struct HtmlAttributes {
    std::string_view style;
    std::string_view start;
    std::string_view value;
};

struct HtmlToken {
    // Other: a comment, a declaration, or a tag that the text ends in.
    enum class Kind { Text, StartTag, EndTag, Other };
    Kind kind = Kind::Text;
    std::string_view source; // all of it
    std::string_view name;   // of a tag, as it is written
    HtmlAttributes attributes;
    bool selfClosing = false;
};

// Takes time in proportion to the length. The tokens point into the HTML, and one after the other they are
// all of it.
class HtmlTokenizer {
public:
    HtmlTokenizer() = default;
    explicit HtmlTokenizer(std::string_view html)
        : m_html(html) {}
    // False at the end.
    bool next(HtmlToken *token);
    // After the start tag of an element whose content is text whatever it looks like: that text, up to the
    // end tag of the name or the end of the HTML.
    [[nodiscard]] std::string_view takeRawText(std::string_view name);
    // The next token begins at that position.
    void skipTo(std::size_t position) { m_at = position; }

private:
    [[nodiscard]] HtmlToken::Kind readMarkup(HtmlToken *token);
    std::string_view takeUntil(unsigned classes);
    // Through the tag's end. False when the text ends first.
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
