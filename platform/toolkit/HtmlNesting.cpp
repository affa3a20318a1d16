#include "platform/toolkit/HtmlNesting.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace platform {

namespace {

using NameSet = std::unordered_set<std::string_view>;

// Without content, or unable to nest without an element of another kind between.
const NameSet &uncountedTags() {
    static const auto *names = new NameSet{
        "a",     "area",     "base",  "basefont", "bgsound", "body",  "br",    "button", "caption",
        "col",   "colgroup", "embed", "frame",    "head",    "hr",    "html",  "image",  "img",
        "input", "keygen",   "link",  "meta",     "nobr",    "p",     "param", "source", "tbody",
        "td",    "tfoot",    "th",    "thead",    "tr",      "track", "wbr"};
    return *names;
}

// Their content is text up to their own end tag.
const NameSet &rawTextTags() {
    static const auto *names = new NameSet{"iframe", "noembed",  "noframes", "plaintext", "script",
                                           "style",  "textarea", "title",    "xmp"};
    return *names;
}

// Closed out of order without being waited for: what was opened inside goes on after them.
const NameSet &formattingTags() {
    static const auto *names =
        new NameSet{"b", "big", "code", "em", "font", "i", "s", "small", "strike", "strong", "tt", "u"};
    return *names;
}

// The end of such an element also ends all that is open inside it. The end of any other is ignored when it
// would have to end one of these.
const NameSet &structuralTags() {
    static const auto *names = new NameSet{
        "address", "applet",  "article", "aside",    "blockquote", "center", "dd",     "details", "dir",
        "div",     "dl",      "dt",      "fieldset", "figcaption", "figure", "footer", "form",    "h1",
        "h2",      "h3",      "h4",      "h5",       "h6",         "header", "hgroup", "li",      "listing",
        "main",    "marquee", "menu",    "nav",      "noscript",   "object", "ol",     "pre",     "section",
        "select",  "summary", "table",   "template", "ul"};
    return *names;
}

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

struct Tag {
    std::string name;    // lower case
    std::size_t end = 0; // behind its '>'
    bool isEnd = false;
    bool selfClosing = false;
};

std::size_t skipSpace(std::string_view html, std::size_t at) {
    while (at < html.size() && isSpace(html[at]))
        ++at;
    return at;
}

// Behind an attribute's value, at the '>' that ends the tag, or at the end of the text.
std::size_t skipValue(std::string_view html, std::size_t at) {
    at = skipSpace(html, at);
    if (at < html.size() && (html[at] == '"' || html[at] == '\'')) {
        const std::size_t end = html.find(html[at], at + 1);
        return end == std::string_view::npos ? html.size() : end + 1;
    }
    while (at < html.size() && !isSpace(html[at]) && html[at] != '>')
        ++at;
    return at;
}

std::size_t tagEnd(std::string_view html, std::size_t at) {
    while (at < html.size()) {
        if (html[at] == '>')
            return at + 1;
        if (isSpace(html[at]) || html[at] == '/') {
            ++at;
            continue;
        }
        // The first character belongs to the attribute's name, whatever it is.
        ++at;
        while (at < html.size() && !isSpace(html[at]) && html[at] != '/' && html[at] != '>' &&
               html[at] != '=')
            ++at;
        const std::size_t next = skipSpace(html, at);
        if (next < html.size() && html[next] == '=')
            at = skipValue(html, next + 1);
    }
    return at;
}

Tag readTag(std::string_view html, std::size_t at) {
    Tag tag;
    tag.isEnd = html[at + 1] == '/';
    std::size_t nameEnd = at + (tag.isEnd ? 2 : 1);
    for (; nameEnd < html.size() && !isSpace(html[nameEnd]) && html[nameEnd] != '/' && html[nameEnd] != '>';
         ++nameEnd)
        tag.name += lower(html[nameEnd]);
    tag.end = tagEnd(html, nameEnd);
    tag.selfClosing = tag.end >= 2 && html[tag.end - 1] == '>' && html[tag.end - 2] == '/';
    return tag;
}

bool beginsTag(std::string_view html, std::size_t at) {
    const std::size_t letter = at + 1 < html.size() && html[at + 1] == '/' ? at + 2 : at + 1;
    return letter < html.size() && isLetter(html[letter]);
}

// Behind the comment whose "<!--" ends at `at`.
std::size_t skipComment(std::string_view html, std::size_t at) {
    // From its last two characters on: "<!-->" is a whole comment.
    for (at = html.find("--", at - 2); at != std::string_view::npos; at = html.find("--", at + 1)) {
        const std::string_view rest = html.substr(at + 2);
        if (rest.starts_with('>'))
            return at + 3;
        if (rest.starts_with("!>"))
            return at + 4;
    }
    return html.size();
}

// Behind a comment, a declaration, or a '<' that is only text.
std::size_t skipOtherMarkup(std::string_view html, std::size_t at) {
    if (html.substr(at).starts_with("<!--"))
        return skipComment(html, at + 4);
    const char next = at + 1 < html.size() ? html[at + 1] : ' ';
    if (next != '!' && next != '?' && next != '/')
        return at + 1;
    const std::size_t end = html.find('>', at);
    return end == std::string_view::npos ? html.size() : end + 1;
}

// Where the end tag of a raw text element begins.
std::size_t rawTextEnd(std::string_view html, std::size_t at, const std::string &name) {
    for (at = html.find("</", at); at != std::string_view::npos; at = html.find("</", at + 2)) {
        const std::string_view rest = html.substr(at + 2, name.size());
        if (std::equal(rest.begin(), rest.end(), name.begin(), name.end(),
                       [](char a, char b) { return lower(a) == b; }))
            return at;
    }
    return html.size();
}

class OpenTags {
public:
    explicit OpenTags(int limit)
        : m_limit(std::size_t(std::max(limit, 1))) {}

    // Whether the tag may stay.
    bool start(const Tag &tag) {
        if (uncountedTags().contains(tag.name) || (tag.selfClosing && isForeign()))
            return true;
        endImplied(tag.name);
        if (m_open.size() >= m_limit) {
            ++m_leftOut[tag.name];
            return false;
        }
        m_open.push_back(tag.name);
        ++m_count[tag.name];
        return true;
    }

    bool end(const Tag &tag) {
        if (uncountedTags().contains(tag.name))
            return true;
        if (auto leftOut = m_leftOut.find(tag.name); leftOut != m_leftOut.end() && leftOut->second > 0) {
            --leftOut->second;
            return false;
        }
        close(tag.name);
        return true;
    }

    [[nodiscard]] bool isForeign() const { return countOf("svg") > 0 || countOf("math") > 0; }

private:
    [[nodiscard]] int countOf(const std::string &name) const {
        const auto found = m_count.find(name);
        return found == m_count.end() ? 0 : found->second;
    }

    void close(const std::string &name) {
        if (countOf(name) == 0)
            return;
        const bool structural = structuralTags().contains(name);
        const bool formatting = formattingTags().contains(name);
        for (std::size_t i = m_open.size(); i-- > 0;) {
            if (m_open[i] == name) {
                formatting ? erase(i) : popTo(i);
                return;
            }
            if (!structural && !formatting && structuralTags().contains(m_open[i]))
                return;
        }
    }

    // What the start of an element ends without a tag.
    void endImplied(const std::string &name) {
        if (name == "option" && !m_open.empty() && m_open.back() == name)
            popTo(m_open.size() - 1);
        const bool description = name == "dd" || name == "dt";
        if (name != "li" && !description)
            return;
        for (std::size_t i = m_open.size(); i-- > 0;) {
            const std::string &open = m_open[i];
            if (open == name || (description && (open == "dd" || open == "dt"))) {
                popTo(i);
                return;
            }
            if (structuralTags().contains(open) && open != "div" && open != "address")
                return;
        }
    }

    void erase(std::size_t index) {
        --m_count[m_open[index]];
        m_open.erase(m_open.begin() + std::ptrdiff_t(index));
    }

    void popTo(std::size_t size) {
        while (m_open.size() > size)
            erase(m_open.size() - 1);
    }

    std::size_t m_limit;
    std::vector<std::string> m_open;
    std::unordered_map<std::string, int> m_count;   // of each name in m_open
    std::unordered_map<std::string, int> m_leftOut; // start tags whose end tags are still to come
};

bool mayNestDeeper(const std::string &html, int limit) {
    return std::count(html.begin(), html.end(), '<') > limit;
}

} // namespace

std::string withNestingLimited(std::string html, int limit) {
    if (!mayNestDeeper(html, limit))
        return html;
    OpenTags open(limit);
    std::string kept;
    std::size_t copied = 0;
    const std::string_view all = html;
    std::size_t at = all.find('<');
    while (at < all.size()) {
        if (!beginsTag(all, at)) {
            at = all.find('<', skipOtherMarkup(all, at));
            continue;
        }
        const Tag tag = readTag(all, at);
        std::size_t next = tag.end;
        if (!tag.isEnd && rawTextTags().contains(tag.name) && !open.isForeign()) {
            next = rawTextEnd(all, tag.end, tag.name);
        } else if (!(tag.isEnd ? open.end(tag) : open.start(tag))) {
            kept.append(all, copied, at - copied);
            copied = tag.end;
        }
        at = all.find('<', next);
    }
    if (copied == 0)
        return html;
    kept.append(all, copied);
    return kept;
}

} // namespace platform
