#include "platform/services/html/HtmlReader.h"

#include <algorithm>
#include <array>
#include <libxml/HTMLparser.h>
#include <string>
#include <strings.h>
#include <unordered_map>

namespace platform {

namespace {

// Deeper than this, an element is flattened: its end is not looked for.
constexpr std::size_t maxNesting = 512;
constexpr std::size_t maxSearch = 2 * maxNesting;
constexpr std::uint32_t largestCodePoint = 0x10ffff;
constexpr std::uint32_t replacement = 0xfffd;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

int digitOf(char c, int base) {
    int digit = base;
    if (c >= '0' && c <= '9')
        digit = c - '0';
    else if (isLetter(c))
        digit = (c | 0x20) - 'a' + 10;
    return digit < base ? digit : -1;
}

bool isSame(std::string_view text, std::string_view lowerCase) {
    return text.size() == lowerCase.size() && strncasecmp(text.data(), lowerCase.data(), text.size()) == 0;
}

std::string utf8Of(std::uint32_t c) {
    if (c == 0 || c > largestCodePoint || (c >= 0xd800 && c < 0xe000))
        c = replacement;
    if (c < 0x80)
        return {char(c)};
    if (c < 0x800)
        return {char(0xc0 | c >> 6), char(0x80 | (c & 0x3f))};
    if (c < 0x10000)
        return {char(0xe0 | c >> 12), char(0x80 | (c >> 6 & 0x3f)), char(0x80 | (c & 0x3f))};
    return {char(0xf0 | c >> 18), char(0x80 | (c >> 12 & 0x3f)), char(0x80 | (c >> 6 & 0x3f)),
            char(0x80 | (c & 0x3f))};
}

// The character of a name such as "eacute"; empty when there is none of that name. The library's own search
// goes through the whole list, so that what was found is kept. Main thread only.
const std::string &namedCharacter(std::string_view name) {
    static auto *known = new std::unordered_map<std::string, std::string>;
    static const std::string none;
    std::string key(name);
    if (const auto found = known->find(key); found != known->end())
        return found->second;
    const htmlEntityDesc *entity = htmlEntityLookup(reinterpret_cast<const xmlChar *>(key.c_str()));
    if (!entity)
        return none; // not kept: of those there are any number
    return known->emplace(std::move(key), utf8Of(entity->value)).first->second;
}

} // namespace

void HtmlReader::read(std::string_view html) {
    m_html = html;
    m_at = 0;
    while (m_at < m_html.size()) {
        if (m_html[m_at] == '<')
            readMarkup();
        else
            readText(std::min(m_html.find('<', m_at), m_html.size()));
    }
    m_open.clear(); // the sink ends what is still open
    m_openParagraphs = 0;
}

// Positions

void HtmlReader::skipSpaces() {
    while (isSpace(at(m_at)))
        ++m_at;
}

void HtmlReader::skipPast(std::string_view end) {
    const std::size_t found = m_html.find(end, m_at);
    m_at = found == std::string_view::npos ? m_html.size() : found + end.size();
}

// Text

void HtmlReader::readText(std::size_t end) {
    while (m_at < end) {
        const std::size_t run = std::min(m_html.substr(0, end).find('&', m_at), end);
        if (run > m_at) {
            const std::string_view text = m_html.substr(m_at, run - m_at);
            if (!std::all_of(text.begin(), text.end(), isSpace))
                endHead();
            m_sink.text(text);
        }
        m_at = run;
        if (m_at < end)
            readReference();
    }
}

// A character reference, or an ampersand that begins none.
void HtmlReader::readReference() {
    std::size_t position = m_at + 1;
    std::string character;
    if (at(position) == '#') {
        const bool isHexadecimal = (at(++position) | 0x20) == 'x';
        position += isHexadecimal ? 1 : 0;
        const int base = isHexadecimal ? 16 : 10;
        const std::size_t digits = position;
        std::uint32_t value = 0;
        for (int digit = 0; (digit = digitOf(at(position), base)) >= 0; ++position)
            value = std::min(value * std::uint32_t(base) + std::uint32_t(digit), largestCodePoint + 1);
        if (position > digits)
            character = utf8Of(value);
        position += at(position) == ';' ? 1 : 0;
    } else {
        while (isNameCharacter(at(position)))
            ++position;
        if (at(position) == ';')
            character = namedCharacter(m_html.substr(m_at + 1, position - m_at - 1));
        ++position;
    }
    endHead();
    m_sink.text(character.empty() ? std::string_view("&") : character);
    m_at = character.empty() ? m_at + 1 : position;
}

// For text that is no markup: up to the end tag of that name, or the end.
void HtmlReader::readRawText(std::string_view name, HtmlElement element) {
    std::size_t end = m_at;
    for (;; end += 2) {
        end = std::min(m_html.find("</", end), m_html.size());
        const char behind = at(end + 2 + name.size());
        if (end == m_html.size() || (isSame(m_html.substr(end + 2, name.size()), name) &&
                                     (isSpace(behind) || behind == '/' || behind == '>')))
            break;
    }
    if (!element.isHidden())
        m_sink.text(m_html.substr(m_at, end - m_at));
    m_at = end;
}

// Markup

void HtmlReader::readMarkup() {
    const char next = at(m_at + 1);
    if (isLetter(next)) {
        readStartTag();
    } else if (next == '/' && isLetter(at(m_at + 2))) {
        readEndTag();
    } else if (m_html.substr(m_at, 4) == "<!--") {
        m_at += 2; // "<!-->" is a whole comment
        skipPast("-->");
    } else if (next == '!' || next == '?' || (next == '/' && at(m_at + 2) != '\0')) {
        skipPast(">");
    } else {
        endHead();
        m_sink.text("<");
        ++m_at;
    }
}

std::string_view HtmlReader::readName() {
    const std::size_t start = m_at;
    while (m_at < m_html.size() && !isSpace(m_html[m_at]) && m_html[m_at] != '/' && m_html[m_at] != '>')
        ++m_at;
    return m_html.substr(start, m_at - start);
}

std::string_view HtmlReader::readValue() {
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

bool HtmlReader::readAttributes(HtmlAttributes *attributes, bool *selfClosing) {
    for (*selfClosing = false; m_at < m_html.size();) {
        const char c = m_html[m_at];
        if (c == '>') {
            ++m_at;
            return true;
        }
        if (isSpace(c) || c == '/') {
            *selfClosing = c == '/';
            ++m_at;
            continue;
        }
        *selfClosing = false;
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
             {std::pair("style", &attributes->style), std::pair("start", &attributes->start),
              std::pair("value", &attributes->value)})
            if (!kept->data() && isSame(name, known))
                *kept = value;
    }
    return false;
}

void HtmlReader::readStartTag() {
    ++m_at;
    const std::string_view name = readName();
    HtmlAttributes attributes;
    bool selfClosing = false;
    if (!readAttributes(&attributes, &selfClosing))
        return;
    const HtmlElement::Named named = HtmlElement::named(name);
    openElement(named, attributes, selfClosing);
    if (named.element.isAny(HtmlElement::RawText) && !selfClosing)
        readRawText(name, named.element);
}

void HtmlReader::readEndTag() {
    m_at += 2;
    const std::string_view name = readName();
    HtmlAttributes attributes;
    bool selfClosing = false;
    if (readAttributes(&attributes, &selfClosing))
        endElement(HtmlElement::named(name));
}

// Elements

void HtmlReader::openElement(const HtmlElement::Named &named, const HtmlAttributes &attributes,
                             bool selfClosing) {
    makeRoomFor(named.element);
    if (named.element.isAny(HtmlElement::Document))
        return;
    if (m_open.size() > maxNesting && named.element.canBeFlattened()) {
        m_sink.openFlattened(named.element);
        return;
    }
    m_sink.open(named.element, attributes);
    if (selfClosing || named.element.isAny(HtmlElement::Void)) {
        m_sink.close();
        return;
    }
    m_open.push_back({named.key, named.element});
    m_openParagraphs += named.element.isAny(HtmlElement::PlainParagraph) ? 1 : 0;
}

// Ends what the element cannot stand in.
void HtmlReader::makeRoomFor(HtmlElement element) {
    using E = HtmlElement;
    if (!element.isAny(E::Hidden | E::Void) || element.isAny(E::LineBreak | E::Image | E::Block))
        endHead();
    constexpr std::uint32_t tables = E::Cell | E::TableScope;
    if (element.isAny(E::ListItem))
        closeNearest(E::ListItem, E::ListScope | tables);
    if (element.isAny(E::Term))
        closeNearest(E::Term, E::ListScope | tables);
    if (element.isAny(E::EndsParagraph) && m_openParagraphs > 0)
        closeNearest(E::PlainParagraph, tables);
    if (element.isAny(E::Cell))
        closeNearest(E::Cell, E::TableScope);
    if (element.isAny(E::Row | E::RowGroup))
        closeNearest(E::Row, E::TableScope);
    if (element.isAny(E::RowGroup))
        closeNearest(E::RowGroup, E::TableScope);
}

void HtmlReader::endHead() {
    if (!m_open.empty() && m_open.back().element.isAny(HtmlElement::Head))
        closeThrough(m_open.size() - 1);
}

std::size_t HtmlReader::outermostSearched() const {
    return m_open.size() > maxSearch ? m_open.size() - maxSearch : 0;
}

void HtmlReader::closeNearest(std::uint32_t traits, std::uint32_t barrier) {
    for (std::size_t i = m_open.size(); i > outermostSearched(); --i) {
        const HtmlElement element = m_open[i - 1].element;
        if (element.isAny(traits)) {
            closeThrough(i - 1);
            return;
        }
        if (element.isAny(barrier))
            return;
    }
}

void HtmlReader::endElement(const HtmlElement::Named &named) {
    const int weight = named.element.weight();
    for (std::size_t i = m_open.size(); i > outermostSearched(); --i) {
        if (m_open[i - 1].key == named.key) {
            closeThrough(i - 1);
            return;
        }
        if (m_open[i - 1].element.weight() > weight)
            return;
    }
}

void HtmlReader::closeThrough(std::size_t index) {
    while (m_open.size() > index) {
        m_openParagraphs -= m_open.back().element.isAny(HtmlElement::PlainParagraph) ? 1 : 0;
        m_open.pop_back();
        m_sink.close();
    }
}

} // namespace platform
