#include "platform/services/html/HtmlImporter.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlTextSink.h"

#include <QByteArray>
#include <QStringEncoder>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <libxml/HTMLparser.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

namespace {

// Deeper elements are flattened: the reader ignores their ends.
constexpr std::size_t maxNesting = 512;
constexpr std::size_t maxSearch = 2 * maxNesting;

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

// The character of a name such as "eacute"; empty for an unknown name. The library searches its whole list,
// so results are cached. Main thread only.
const std::string &namedCharacter(std::string_view name) {
    static auto *known = new std::unordered_map<std::string, std::string>;
    static const std::string none;
    std::string key(name);
    if (const auto found = known->find(key); found != known->end())
        return found->second;
    const htmlEntityDesc *entity = htmlEntityLookup(reinterpret_cast<const xmlChar *>(key.c_str()));
    if (!entity)
        return none; // not cached: their number is unlimited
    return known->emplace(std::move(key), utf8Of(entity->value)).first->second;
}

// Reads valid and broken HTML and passes its tags and characters to a sink. Follows the rules of browsers
// that affect plain text: implied ends of elements, raw text, comments, declarations, character references.
// Never fails. Takes linear time at every nesting depth.
class HtmlReader {
public:
    explicit HtmlReader(HtmlTextSink &sink)
        : m_sink(sink) {}
    // `html` is UTF-8 without a NUL.
    void read(std::string_view html);

private:
    void readText(std::string_view text);
    [[nodiscard]] std::size_t readReference(std::string_view text);
    void openElement(const HtmlElement::Named &named, const HtmlAttributes &attributes, bool selfClosing);
    void makeRoomFor(HtmlElement element);
    void endElement(const HtmlElement::Named &named);
    void closeThrough(std::size_t index);
    // Ends the nearest open element that has the traits, unless an element with the barrier's traits is
    // nearer.
    void closeNearest(std::uint32_t traits, std::uint32_t barrier);
    void endHead();
    // The number of open elements outside of the search, which looks only at the innermost ones. Real
    // documents have no deeper nesting.
    [[nodiscard]] std::size_t outermostSearched() const;

    HtmlTextSink &m_sink;
    std::vector<HtmlElement::Named> m_open;
    int m_openParagraphs = 0;
};

void HtmlReader::read(std::string_view html) {
    HtmlTokenizer tokenizer(html);
    HtmlToken token;
    while (tokenizer.next(&token)) {
        switch (token.kind) {
        case HtmlToken::Kind::Text:
            readText(token.source);
            break;
        case HtmlToken::Kind::StartTag: {
            const HtmlElement::Named named = HtmlElement::named(token.name);
            openElement(named, token.attributes, token.selfClosing);
            if (!named.element.isAny(HtmlElement::RawText) || token.selfClosing)
                break;
            const std::string_view raw = tokenizer.takeRawText(token.name);
            if (!named.element.isAny(HtmlElement::Hidden))
                m_sink.text(raw);
            break;
        }
        case HtmlToken::Kind::EndTag:
            endElement(HtmlElement::named(token.name));
            break;
        case HtmlToken::Kind::Other:
            break;
        }
    }
}

// Text

void HtmlReader::readText(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('&'), text.size());
        const std::string_view run = text.substr(0, length);
        if (!std::all_of(run.begin(), run.end(), isSpace))
            endHead();
        if (!run.empty())
            m_sink.text(run);
        text.remove_prefix(length);
        if (!text.empty())
            text.remove_prefix(readReference(text));
    }
}

// Reads a character reference, or an ampersand that does not begin one. Returns its length.
std::size_t HtmlReader::readReference(std::string_view text) {
    constexpr std::string_view nameCharacters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    const auto at = [text](std::size_t position) { return position < text.size() ? text[position] : '\0'; };
    std::size_t position = 1;
    std::string character;
    if (at(position) == '#') {
        const bool isHexadecimal = (at(++position) | 0x20) == 'x';
        position += isHexadecimal ? 1 : 0;
        const char *digits = text.data() + std::min(position, text.size());
        std::uint32_t value = 0;
        const auto [end, error] =
            std::from_chars(digits, text.data() + text.size(), value, isHexadecimal ? 16 : 10);
        if (end != digits)
            character = utf8Of(error == std::errc() ? value : 0);
        position += std::size_t(end - digits);
        position += at(position) == ';' ? 1 : 0;
    } else {
        position = std::min(text.find_first_not_of(nameCharacters, position), text.size());
        if (at(position) == ';')
            character = namedCharacter(text.substr(1, position - 1));
        ++position;
    }
    endHead();
    m_sink.text(character.empty() ? std::string_view("&") : character);
    return character.empty() ? 1 : position;
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
    m_open.push_back(named);
    m_openParagraphs += named.element.isAny(HtmlElement::PlainParagraph) ? 1 : 0;
}

// Ends the open elements that cannot contain the element.
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

// UTF-8 with U+FFFD for lone surrogates and without NULs.
QByteArray cleanUtf8(const QString &text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    // Up to three times the need, but memory that is never written costs nothing.
    QByteArray bytes(encoder.requiredSpace(text.size()), Qt::Uninitialized);
    bytes.truncate(encoder.appendToBuffer(bytes.data(), text) - bytes.data());
    if (bytes.contains('\0'))
        bytes.removeIf([](char byte) { return byte == '\0'; });
    return bytes;
}

} // namespace

QString plainTextOfHtml(const QString &html) {
    if (html.isEmpty())
        return u""_s;
    const QByteArray bytes = cleanUtf8(html);
    HtmlTextSink sink;
    sink.reserve(std::size_t(bytes.size()));
    HtmlReader(sink).read({bytes.constData(), std::size_t(bytes.size())});
    const std::string text = sink.take();
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace platform
