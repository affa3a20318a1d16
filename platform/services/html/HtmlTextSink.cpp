#include "platform/services/html/HtmlTextSink.h"

#include <QString>
#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace platform {

namespace {

using E = HtmlElement;

constexpr std::string_view lineSeparator = "\xE2\x80\xA8";     // U+2028
constexpr std::string_view objectReplacement = "\xEF\xBF\xBC"; // U+FFFC
constexpr std::string_view bullet = "\t\xE2\x80\xA2\t";
constexpr long maxItemNumber = 1'000'000'000;

enum ByteClass : unsigned char { Ordinary, Space, C1Lead };

constexpr std::array<ByteClass, 256> byteClasses = [] {
    std::array<ByteClass, 256> classes{};
    for (const unsigned char space : {' ', '\t', '\n', '\r', '\f'})
        classes[space] = Space;
    classes[0xC2] = C1Lead; // first byte of U+0080 to U+00BF
    return classes;
}();

ByteClass classOf(char byte) {
    return byteClasses[static_cast<unsigned char>(byte)];
}

// U+0080 to U+009F are decoded as Windows-1252, as mail programs do. 0: unassigned.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017d, 0,      0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && classOf(text.front()) == Space)
        text.remove_prefix(1);
    while (!text.empty() && classOf(text.back()) == Space)
        text.remove_suffix(1);
    return text;
}

bool isDisplayNone(std::string_view declaration) {
    const std::size_t colon = declaration.find(':');
    if (colon == std::string_view::npos || !isSame(trimmed(declaration.substr(0, colon)), "display"))
        return false;
    std::string_view value = declaration.substr(colon + 1);
    return isSame(trimmed(value.substr(0, value.find('!'))), "none");
}

bool isNotDisplayed(HtmlTextSink::Attributes attributes) {
    std::string_view rest = attributes.style;
    while (!rest.empty()) {
        const std::size_t end = rest.find(';');
        if (isDisplayNone(rest.substr(0, end)))
            return true;
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return false;
}

long numberIn(std::string_view value, long fallback) {
    const std::string_view digits = trimmed(value);
    long number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool usable = error == std::errc() && number > -maxItemNumber && number < maxItemNumber;
    return usable ? number : fallback;
}

} // namespace

std::string utf8Of(char32_t c) {
    if (c == 0 || c > QChar::LastValidCodePoint || QChar::isSurrogate(c))
        c = QChar::ReplacementCharacter;
    return QString::fromUcs4(&c, 1).toStdString();
}

bool HtmlTextSink::atLineStart() const {
    return m_text.empty() || m_text.back() == '\n' || m_text.size() == m_afterMarker;
}

void HtmlTextSink::dropSoftTail() {
    if (m_tail == Tail::SoftSpace)
        m_text.pop_back();
    else if (m_tail == Tail::SoftSeparator)
        m_text.resize(m_text.size() - lineSeparator.size());
    m_tail = Tail::Firm;
}

void HtmlTextSink::breakLine(bool evenWhenEmpty) {
    const bool replacesTail = m_tail != Tail::Firm;
    dropSoftTail();
    if (replacesTail || evenWhenEmpty || (!m_text.empty() && m_text.back() != '\n'))
        m_text += '\n';
}

void HtmlTextSink::breakBeforeBlock(bool item) {
    // The first block of a list item is on the marker's line; the first item of a nested list is not.
    if (item || m_text.size() != m_afterMarker)
        breakLine(false);
}

void HtmlTextSink::startItem(Attributes attributes) {
    if (m_lists.empty() || !m_lists.back().numbered) {
        m_text += bullet;
    } else {
        List &list = m_lists.back();
        const long number = numberIn(attributes.value, list.next);
        list.next = number + 1;
        m_text += '\t' + std::to_string(number) + ".\t";
    }
    m_afterMarker = m_text.size();
}

void HtmlTextSink::startBlock(HtmlElement tag, Attributes attributes) {
    breakBeforeBlock(tag.isAny(E::ListItem));
    m_breakIsSeparator = tag.isAny(E::Paragraph);
    m_frames.back().start = m_text.size();
    if (tag.isAny(E::BulletList | E::NumberedList))
        m_lists.push_back({tag.isAny(E::NumberedList), numberIn(attributes.start, 1)});
    if (tag.isAny(E::ListItem))
        startItem(attributes);
    if (tag.isAny(E::Preformatted)) {
        m_preformatted = true;
        m_preStart = m_text.size();
    }
}

void HtmlTextSink::addLineBreak() {
    // A soft space before the end of a line is invisible.
    if (m_tail == Tail::SoftSpace)
        dropSoftTail();
    if (m_breakIsSeparator) {
        m_text += lineSeparator;
        m_tail = Tail::SoftSeparator;
    } else {
        m_text += '\n';
        m_tail = Tail::Firm;
    }
}

void HtmlTextSink::open(HtmlElement tag, Attributes attributes) {
    m_frames.push_back({tag, m_text.size(), m_breakIsSeparator, m_preformatted, false});
    if (tag.isAny(E::Hidden) || (m_hiddenDepth == 0 && isNotDisplayed(attributes))) {
        m_frames.back().hidden = true;
        ++m_hiddenDepth;
    }
    if (m_hiddenDepth > 0)
        return;
    if (tag.isAny(E::Block)) {
        startBlock(tag, attributes);
    } else if (tag.isAny(E::Table)) {
        breakBeforeBlock(false);
    } else if (tag.isAny(E::LineBreak)) {
        addLineBreak();
    } else if (tag.isAny(E::Image)) {
        addRun(objectReplacement);
    }
}

void HtmlTextSink::openFlattened(HtmlElement tag) {
    if (m_hiddenDepth == 0 && (tag.isAny(E::Block | E::Table)))
        breakBeforeBlock(false);
}

void HtmlTextSink::close() {
    const Frame frame = m_frames.back();
    m_frames.pop_back();
    const bool wasHidden = m_hiddenDepth > 0;
    if (frame.hidden)
        --m_hiddenDepth;
    if (wasHidden)
        return;
    if (frame.tag.isAny(E::Block))
        breakLine(m_text.size() == frame.start);
    else if (frame.tag.isAny(E::Table) && m_text.size() != frame.start)
        breakLine(false);
    if (frame.tag.isAny(E::BulletList | E::NumberedList))
        m_lists.pop_back();
    m_breakIsSeparator = frame.breakIsSeparator;
    m_preformatted = frame.preformatted;
}

void HtmlTextSink::text(std::string_view characters) {
    if (m_hiddenDepth > 0)
        return;
    if (m_preformatted)
        addPreformatted(characters);
    else
        addCollapsed(characters);
}

void HtmlTextSink::addRun(std::string_view characters) {
    m_text += characters;
    m_tail = Tail::Firm;
}

std::size_t HtmlTextSink::addTwoByteCharacter(std::string_view rest) {
    const unsigned second = rest.size() > 1 ? static_cast<unsigned char>(rest[1]) : 0U;
    const char16_t meant = second >= 0x80 && second < 0xA0 ? windows1252[second - 0x80] : 0;
    const std::size_t length = std::min<std::size_t>(rest.size(), 2);
    addRun(meant ? std::string_view(utf8Of(meant)) : rest.substr(0, length));
    return length;
}

void HtmlTextSink::addNewlineOfPreformatted(char newline) {
    const bool secondOfPair = newline == '\n' && m_afterCarriageReturn;
    m_afterCarriageReturn = newline == '\r';
    if (secondOfPair)
        return;
    // The newline right after the tag belongs to the tag.
    if (m_text.size() == std::exchange(m_preStart, std::string::npos))
        return;
    addRun("\n");
}

void HtmlTextSink::addPreformatted(std::string_view characters) {
    while (!characters.empty()) {
        const char c = characters.front();
        std::size_t length = 1;
        if (c == '\n' || c == '\r') {
            addNewlineOfPreformatted(c);
        } else {
            m_afterCarriageReturn = false;
            if (classOf(c) == C1Lead)
                length = addTwoByteCharacter(characters);
            else
                addRun({&c, 1});
        }
        characters.remove_prefix(length);
    }
}

void HtmlTextSink::addCollapsed(std::string_view characters) {
    const char *at = characters.data();
    const char *const end = at + characters.size();
    while (at != end) {
        const char *run = at;
        while (at != end && classOf(*at) == Ordinary)
            ++at;
        if (at != run)
            addRun({run, std::size_t(at - run)});
        if (at == end)
            return;
        if (classOf(*at) == C1Lead) {
            at += addTwoByteCharacter({at, std::size_t(end - at)});
            continue;
        }
        ++at;
        if (m_tail == Tail::Firm && !atLineStart()) {
            m_text += ' ';
            m_tail = Tail::SoftSpace;
        }
    }
}

std::string HtmlTextSink::take() {
    while (!m_frames.empty())
        close();
    dropSoftTail();
    return std::move(m_text);
}

} // namespace platform
