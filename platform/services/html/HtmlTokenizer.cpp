#include "platform/services/html/HtmlTokenizer.h"

#include <algorithm>
#include <array>
#include <strings.h>
#include <utility>

namespace platform {

namespace {

// The classes of characters inside of a tag.
enum CharacterClass : unsigned char { Space = 1, Slash = 2, Close = 4, Equals = 8, Letter = 16 };

constexpr std::array<unsigned char, 256> characterClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (const unsigned char space : {' ', '\t', '\n', '\r', '\f'})
        classes[space] = Space;
    for (unsigned char letter = 'a'; letter <= 'z'; ++letter)
        classes[letter] = classes[letter - 'a' + 'A'] = Letter;
    classes['/'] = Slash;
    classes['>'] = Close;
    classes['='] = Equals;
    return classes;
}();

bool isAny(char c, unsigned classes) {
    return (characterClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

// nullptr for attributes that are not needed.
std::string_view *attributeNamed(std::string_view name, HtmlAttributes &attributes) {
    switch (name.front() | 0x20) {
    case 's':
        return isSame(name, "style")   ? &attributes.style
               : isSame(name, "start") ? &attributes.start
                                       : nullptr;
    case 'v':
        return isSame(name, "value") ? &attributes.value : nullptr;
    default:
        return nullptr;
    }
}

} // namespace

bool isSame(std::string_view text, std::string_view other) {
    return text.size() == other.size() && strncasecmp(text.data(), other.data(), text.size()) == 0;
}

bool HtmlTokenizer::next(HtmlToken *token) {
    if (m_at >= m_html.size())
        return false;
    const std::size_t start = m_at;
    if (m_html[m_at] == '<') {
        token->kind = readMarkup(token);
    } else {
        token->kind = HtmlToken::Kind::Text;
        m_at = std::min(m_html.find('<', m_at), m_html.size());
    }
    token->source = {m_html.data() + start, m_at - start};
    return true;
}

HtmlToken::Kind HtmlTokenizer::readMarkup(HtmlToken *token) {
    using Kind = HtmlToken::Kind;
    const char next = at(m_at + 1);
    const bool isEnd = next == '/';
    if (isAny(isEnd ? at(m_at + 2) : next, Letter)) {
        m_at += isEnd ? 2 : 1;
        token->name = takeUntil(Space | Slash | Close);
        if (!isEnd)
            token->attributes = {};
        if (!readAttributes(token))
            return Kind::Other;
        return isEnd ? Kind::EndTag : Kind::StartTag;
    }
    if (m_html.substr(m_at, 4) == "<!--") {
        skipComment();
    } else if (next == '!' || next == '?' || (isEnd && at(m_at + 2) != '\0')) {
        skipPast(">");
    } else {
        ++m_at;
        return Kind::Text;
    }
    return Kind::Other;
}

// "<!-->" is a whole comment, and "--!>" ends one too.
void HtmlTokenizer::skipComment() {
    m_at += 2;
    for (;;) {
        skipPast("--");
        if (at(m_at) == '>' || m_at >= m_html.size())
            break;
        if (at(m_at) == '!' && at(m_at + 1) == '>') {
            ++m_at;
            break;
        }
        --m_at; // "--->"
    }
    m_at = std::min(m_at + 1, m_html.size());
}

void HtmlTokenizer::skipSpaces() {
    while (isAny(at(m_at), Space))
        ++m_at;
}

void HtmlTokenizer::skipPast(std::string_view end) {
    const std::size_t found = m_html.find(end, m_at);
    m_at = found == std::string_view::npos ? m_html.size() : found + end.size();
}

std::string_view HtmlTokenizer::takeUntil(unsigned classes) {
    const std::size_t start = m_at;
    while (m_at < m_html.size() && !isAny(m_html[m_at], classes))
        ++m_at;
    return {m_html.data() + start, m_at - start};
}

std::string_view HtmlTokenizer::readValue() {
    const char quote = at(m_at);
    if (quote != '"' && quote != '\'')
        return takeUntil(Space | Close);
    const std::size_t start = ++m_at;
    const std::size_t end = std::min(m_html.find(quote, start), m_html.size());
    m_at = std::min(end + 1, m_html.size());
    return m_html.substr(start, end - start);
}

bool HtmlTokenizer::readAttributes(HtmlToken *token) {
    HtmlAttributes &attributes = token->attributes;
    for (token->selfClosing = false; m_at < m_html.size();) {
        const char c = m_html[m_at];
        if (c == '>') {
            ++m_at;
            return true;
        }
        if (isAny(c, Space | Slash)) {
            token->selfClosing = c == '/';
            ++m_at;
            continue;
        }
        token->selfClosing = false;
        const std::size_t start = m_at++; // any first character belongs to the name
        takeUntil(Space | Slash | Close | Equals);
        const std::string_view name = m_html.substr(start, m_at - start);
        skipSpaces();
        if (at(m_at) != '=')
            continue;
        ++m_at;
        skipSpaces();
        const std::string_view value = readValue();
        std::string_view *kept = attributeNamed(name, attributes);
        if (kept && !kept->data())
            *kept = value;
    }
    return false;
}

std::string_view HtmlTokenizer::takeRawText(std::string_view name) {
    std::size_t end = m_at;
    for (;; end += 2) {
        end = std::min(m_html.find("</", end), m_html.size());
        const char behind = at(end + 2 + name.size());
        if (end == m_html.size() ||
            (isSame(m_html.substr(end + 2, name.size()), name) && isAny(behind, Space | Slash | Close)))
            break;
    }
    const std::string_view text = m_html.substr(m_at, end - m_at);
    m_at = end;
    return text;
}

} // namespace platform
