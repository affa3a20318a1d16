#include "platform/services/html/HtmlTokenizer.h"

#include <algorithm>
#include <strings.h>
#include <utility>

namespace platform {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool isSame(std::string_view text, std::string_view other) {
    return text.size() == other.size() && strncasecmp(text.data(), other.data(), text.size()) == 0;
}

} // namespace

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
    token->source = m_html.substr(start, m_at - start);
    return true;
}

HtmlToken::Kind HtmlTokenizer::readMarkup(HtmlToken *token) {
    using Kind = HtmlToken::Kind;
    const char next = at(m_at + 1);
    const bool isEnd = next == '/';
    if (isLetter(isEnd ? at(m_at + 2) : next)) {
        m_at += isEnd ? 2 : 1;
        token->name = readName();
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
    while (isSpace(at(m_at)))
        ++m_at;
}

void HtmlTokenizer::skipPast(std::string_view end) {
    const std::size_t found = m_html.find(end, m_at);
    m_at = found == std::string_view::npos ? m_html.size() : found + end.size();
}

std::string_view HtmlTokenizer::readName() {
    const std::size_t start = m_at;
    while (m_at < m_html.size() && !isSpace(m_html[m_at]) && m_html[m_at] != '/' && m_html[m_at] != '>')
        ++m_at;
    return m_html.substr(start, m_at - start);
}

std::string_view HtmlTokenizer::readValue() {
    const char quote = at(m_at);
    if (quote == '"' || quote == '\'') {
        const std::size_t start = ++m_at;
        const std::size_t end = std::min(m_html.find(quote, start), m_html.size());
        m_at = std::min(end + 1, m_html.size());
        return m_html.substr(start, end - start);
    }
    const std::size_t start = m_at;
    while (m_at < m_html.size() && !isSpace(m_html[m_at]) && m_html[m_at] != '>')
        ++m_at;
    return m_html.substr(start, m_at - start);
}

bool HtmlTokenizer::readAttributes(HtmlToken *token) {
    HtmlAttributes &attributes = token->attributes;
    for (token->selfClosing = false; m_at < m_html.size();) {
        const char c = m_html[m_at];
        if (c == '>') {
            ++m_at;
            return true;
        }
        if (isSpace(c) || c == '/') {
            token->selfClosing = c == '/';
            ++m_at;
            continue;
        }
        token->selfClosing = false;
        const std::size_t start = m_at++;
        while (m_at < m_html.size() && !isSpace(m_html[m_at]) && m_html[m_at] != '/' && m_html[m_at] != '>' &&
               m_html[m_at] != '=')
            ++m_at;
        const std::string_view name = m_html.substr(start, m_at - start);
        skipSpaces();
        if (at(m_at) != '=')
            continue;
        ++m_at;
        skipSpaces();
        const std::string_view value = readValue();
        for (auto [known, kept] :
             {std::pair("style", &attributes.style), std::pair("start", &attributes.start),
              std::pair("value", &attributes.value)})
            if (!kept->data() && isSame(name, known))
                *kept = value;
    }
    return false;
}

std::string_view HtmlTokenizer::takeRawText(std::string_view name) {
    std::size_t end = m_at;
    for (;; end += 2) {
        end = std::min(m_html.find("</", end), m_html.size());
        const char behind = at(end + 2 + name.size());
        if (end == m_html.size() || (isSame(m_html.substr(end + 2, name.size()), name) &&
                                     (isSpace(behind) || behind == '/' || behind == '>')))
            break;
    }
    const std::string_view text = m_html.substr(m_at, end - m_at);
    m_at = end;
    return text;
}

} // namespace platform
