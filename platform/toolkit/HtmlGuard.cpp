#include "platform/toolkit/HtmlGuard.h"

#include "platform/services/html/HtmlElement.h"
#include "platform/services/html/HtmlTokenizer.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace platform {

namespace {

using E = HtmlElement;

constexpr std::string_view sectionOpening = "<![CDATA[";
constexpr std::string_view sectionClosing = "]]>";
constexpr std::string_view harmlessOpening = "<![cdata[";

std::uint64_t keyOf(std::string_view name) {
    return E::named(name).key;
}

// The tags that are open at a position of the text, as the parser will see them.
class OpenTags {
public:
    explicit OpenTags(int limit)
        : m_limit(std::size_t(std::max(limit, 1))) {}

    // Whether the tag may stay.
    bool start(const E::Named &tag, bool selfClosing) {
        if (isUncounted(tag.element) || (selfClosing && (isForeign() || tag.key == svg || tag.key == math)))
            return true;
        endImplied(tag);
        if (m_open.size() >= m_limit) {
            ++m_leftOut[tag.key];
            return false;
        }
        m_open.push_back(tag);
        ++m_count[tag.key];
        return true;
    }

    bool end(const E::Named &tag) {
        if (isUncounted(tag.element))
            return true;
        if (auto leftOut = m_leftOut.find(tag.key); leftOut != m_leftOut.end() && leftOut->second > 0) {
            --leftOut->second;
            return false;
        }
        close(tag);
        return true;
    }

    [[nodiscard]] bool isForeign() const { return countOf(svg) > 0 || countOf(math) > 0; }

private:
    [[nodiscard]] static bool isUncounted(E element) {
        return element.isAny(E::Void | E::Document | E::Head | E::PlainParagraph | E::RowGroup | E::Row |
                             E::Cell | E::Unnestable);
    }

    [[nodiscard]] int countOf(std::uint64_t key) const {
        const auto found = m_count.find(key);
        return found == m_count.end() ? 0 : found->second;
    }

    void close(const E::Named &tag) {
        if (countOf(tag.key) == 0)
            return;
        for (std::size_t i = m_open.size(); i-- > 0;) {
            if (m_open[i].key == tag.key) {
                tag.element.isAny(E::Formatting) ? erase(i) : popTo(i);
                return;
            }
            if (!tag.element.isAny(E::Structural | E::Formatting) && m_open[i].element.isAny(E::Structural))
                return;
        }
    }

    // Ends the elements whose end the new element implies.
    void endImplied(const E::Named &tag) {
        if (tag.key == option && !m_open.empty() && m_open.back().key == option)
            popTo(m_open.size() - 1);
        const std::uint32_t kind = tag.element.isAny(E::ListItem) ? E::ListItem : E::Term;
        if (!tag.element.isAny(kind))
            return;
        for (std::size_t i = m_open.size(); i-- > 0;) {
            if (m_open[i].element.isAny(kind)) {
                popTo(i);
                return;
            }
            if (m_open[i].element.isAny(E::Structural) && m_open[i].key != division &&
                m_open[i].key != address)
                return;
        }
    }

    void erase(std::size_t index) {
        --m_count[m_open[index].key];
        m_open.erase(m_open.begin() + std::ptrdiff_t(index));
    }

    void popTo(std::size_t size) {
        while (m_open.size() > size)
            erase(m_open.size() - 1);
    }

    const std::uint64_t svg = keyOf("svg");
    const std::uint64_t math = keyOf("math");
    const std::uint64_t option = keyOf("option");
    const std::uint64_t division = keyOf("div");
    const std::uint64_t address = keyOf("address");
    std::size_t m_limit;
    std::vector<E::Named> m_open;
    std::unordered_map<std::uint64_t, int> m_count;   // of each key in m_open
    std::unordered_map<std::uint64_t, int> m_leftOut; // start tags whose end tags are still to come
};

void appendEscaped(std::string &out, std::string_view text) {
    for (const char c : text) {
        if (c == '<')
            out += "&lt;";
        else if (c == '&')
            out += "&amp;";
        else
            out += c;
    }
}

class Guard {
public:
    Guard(std::string_view html, int limit)
        : m_html(html)
        , m_tokenizer(html)
        , m_open(limit) {}

    std::string guarded() {
        HtmlToken token;
        while (m_tokenizer.next(&token)) {
            if (token.source.starts_with(sectionOpening))
                addSection(token.source);
            else if (mayStay(token))
                m_kept += token.source;
        }
        return std::move(m_kept);
    }

private:
    bool mayStay(const HtmlToken &token) {
        const E::Named tag = E::named(token.name);
        if (token.kind == HtmlToken::Kind::EndTag)
            return m_open.end(tag);
        if (token.kind != HtmlToken::Kind::StartTag)
            return true;
        if (!tag.element.isAny(E::RawText) || m_open.isForeign())
            return m_open.start(tag, token.selfClosing);
        m_kept += token.source;
        m_kept += m_tokenizer.takeRawText(token.name);
        return false; // already present
    }

    void addSection(std::string_view source) {
        if (!m_open.isForeign()) {
            m_kept += harmlessOpening;
            m_kept += source.substr(sectionOpening.size());
            return;
        }
        const std::size_t start = std::size_t(source.data() - m_html.data()) + sectionOpening.size();
        const std::size_t end = std::min(m_html.find(sectionClosing, start), m_html.size());
        appendEscaped(m_kept, m_html.substr(start, end - start));
        m_tokenizer.skipTo(std::min(end + sectionClosing.size(), m_html.size()));
    }

    std::string_view m_html;
    HtmlTokenizer m_tokenizer;
    OpenTags m_open;
    std::string m_kept;
};

} // namespace

std::string guardedHtml(std::string html, int limit) {
    const bool mayNestDeeper = std::count(html.begin(), html.end(), '<') > limit;
    const bool hasSection = html.find(sectionOpening) != std::string::npos;
    return mayNestDeeper || hasSection ? Guard(html, limit).guarded() : html;
}

} // namespace platform
