#include "platform/services/html/HtmlElement.h"

#include <algorithm>
#include <unordered_map>

namespace platform {

namespace {

constexpr char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

constexpr std::size_t packedLength = 8;

// Names of up to eight letters unchanged, longer names as a hash that never equals a short name.
std::uint64_t keyOf(std::string_view name) {
    std::uint64_t key = 0;
    if (name.size() <= packedLength) {
        for (const char c : name)
            key = key << 8 | static_cast<unsigned char>(lowerCase(c));
        return key;
    }
    key = 0xcbf29ce484222325U;
    for (const char c : name)
        key = (key ^ static_cast<unsigned char>(lowerCase(c))) * 0x100000001b3U;
    return key | std::uint64_t(1) << 63;
}

using E = HtmlElement;
constexpr std::uint32_t paragraphEnd = E::Block | E::EndsParagraph;
constexpr std::uint32_t block = paragraphEnd | E::Structural;

constexpr struct {
    std::string_view names;
    std::uint32_t traits;
} kinds[] = {
    {"address article aside blockquote center details div fieldset figure footer form header main nav "
     "section "
     "summary hgroup figcaption",
     block},
    {"dialog", paragraphEnd},
    {"legend optgroup", E::Block},
    {"dir menu dl", block | E::ListScope},
    {"ul", block | E::ListScope | E::BulletList},
    {"ol", block | E::ListScope | E::NumberedList},
    {"li", block | E::ListItem | E::Paragraph},
    {"dd dt", block | E::Term},
    {"p", paragraphEnd | E::Paragraph | E::PlainParagraph},
    {"h1 h2 h3 h4 h5 h6", block | E::Paragraph},
    {"hr", paragraphEnd | E::Void},
    {"pre listing", block | E::Preformatted | E::FirstNewline},
    {"xmp plaintext", paragraphEnd | E::Preformatted | E::RawText},
    {"table", E::Table | E::TableScope | E::EndsParagraph | E::Structural},
    {"thead tbody tfoot", E::Table | E::RowGroup},
    {"tr", E::Table | E::Row},
    {"td th", E::Block | E::Cell},
    {"caption", E::Block | E::Unnestable},
    {"script style iframe noframes noembed", E::Hidden | E::RawText},
    {"title", E::Hidden | E::RawText | E::References},
    {"template", E::Hidden | E::Structural},
    {"head", E::Hidden | E::Head},
    {"html body", E::Document},
    {"textarea", E::RawText | E::References | E::FirstNewline},
    {"input meta link base area col param wbr frame embed source track basefont bgsound keygen", E::Void},
    {"br", E::LineBreak | E::Void},
    {"img", E::Image | E::Void},
    {"a button nobr image colgroup", E::Unnestable},
    {"b big code em font i s small strike strong tt u", E::Formatting},
    {"applet marquee noscript object select", E::Structural},
};

using Elements = std::unordered_map<std::uint64_t, HtmlElement>;

const Elements &elements() {
    static const auto *all = [] {
        auto *made = new Elements;
        for (const auto &[names, traits] : kinds) {
            for (std::size_t start = 0; start < names.size();) {
                const std::size_t end = std::min(names.find(' ', start), names.size());
                made->emplace(keyOf(names.substr(start, end - start)), traits);
                start = end + 1;
            }
        }
        return made;
    }();
    return *all;
}

} // namespace

HtmlElement::Named HtmlElement::named(std::string_view name) {
    const std::uint64_t key = keyOf(name);
    const auto found = elements().find(key);
    return {key, found == elements().end() ? HtmlElement() : found->second};
}

int HtmlElement::weight() const {
    if (isAny(TableScope))
        return 5;
    if (isAny(RowGroup | Row | Cell))
        return isAny(Cell) ? 2 : isAny(Row) ? 3 : 4;
    return isAny(Block) ? 1 : 0;
}

} // namespace platform
