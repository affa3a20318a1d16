#include "platform/services/html/HtmlElement.h"

#include <array>
#include <initializer_list>

namespace platform {

namespace {

constexpr char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

constexpr std::size_t packedLength = 8;

// Up to eight letters as they are, longer names as a hash, which never looks like a short name.
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

class Table {
public:
    static const Table &instance() {
        static const auto *table = new Table;
        return *table;
    }
    [[nodiscard]] HtmlElement find(std::uint64_t key) const {
        for (std::size_t slot = slotOf(key);; slot = (slot + 1) % slots) {
            if (m_slots[slot].key == key)
                return m_slots[slot].element;
            if (m_slots[slot].key == 0)
                return {};
        }
    }

private:
    using E = HtmlElement;
    static constexpr int slotBits = 9;
    static constexpr std::size_t slots = std::size_t(1) << slotBits;
    static std::size_t slotOf(std::uint64_t key) {
        return std::size_t(key * 0x9e3779b97f4a7c15U >> (64 - slotBits));
    }

    Table() {
        addBlocks();
        addTables();
        add({"script", "style", "iframe", "noframes", "noembed"}, E::Hidden | E::RawText);
        add({"title"}, E::Hidden | E::RawText | E::References);
        add({"template"}, E::Hidden | E::Structural);
        add({"head"}, E::Hidden | E::Head);
        add({"html", "body"}, E::Document);
        add({"textarea"}, E::RawText | E::References | E::FirstNewline);
        add({"input", "meta", "link", "base", "area", "col", "param", "wbr", "frame", "embed", "source",
             "track", "basefont", "bgsound", "keygen"},
            E::Void);
        add({"br"}, E::LineBreak | E::Void);
        add({"img"}, E::Image | E::Void);
        add({"a", "button", "nobr", "image", "colgroup"}, E::Unnestable);
        add({"b", "big", "code", "em", "font", "i", "s", "small", "strike", "strong", "tt", "u"},
            E::Formatting);
        add({"applet", "marquee", "noscript", "object", "select"}, E::Structural);
    }
    void addBlocks() {
        constexpr std::uint32_t paragraphEnd = E::Block | E::EndsParagraph;
        constexpr std::uint32_t block = paragraphEnd | E::Structural;
        add({"address", "article", "aside", "blockquote", "center", "details", "div", "fieldset", "figure",
             "footer", "form", "header", "main", "nav", "section", "summary", "hgroup", "figcaption"},
            block);
        add({"dialog"}, paragraphEnd);
        add({"legend", "optgroup"}, E::Block);
        add({"dir", "menu", "dl"}, block | E::ListScope);
        add({"ul"}, block | E::ListScope | E::BulletList);
        add({"ol"}, block | E::ListScope | E::NumberedList);
        add({"li"}, block | E::ListItem | E::Paragraph);
        add({"dd", "dt"}, block | E::Term);
        add({"p"}, paragraphEnd | E::Paragraph | E::PlainParagraph);
        add({"h1", "h2", "h3", "h4", "h5", "h6"}, block | E::Paragraph);
        add({"hr"}, paragraphEnd | E::Void);
        add({"pre", "listing"}, block | E::Preformatted | E::FirstNewline);
        add({"xmp", "plaintext"}, paragraphEnd | E::Preformatted | E::RawText);
    }
    void addTables() {
        add({"table"}, E::Table | E::TableScope | E::EndsParagraph | E::Structural);
        add({"thead", "tbody", "tfoot"}, E::Table | E::RowGroup);
        add({"tr"}, E::Table | E::Row);
        add({"td", "th"}, E::Block | E::Cell);
        add({"caption"}, E::Block | E::Unnestable);
    }
    void add(std::initializer_list<const char *> names, std::uint32_t traits) {
        for (const char *name : names) {
            const std::uint64_t key = keyOf(name);
            std::size_t slot = slotOf(key);
            while (m_slots[slot].key != 0)
                slot = (slot + 1) % slots;
            m_slots[slot] = {key, HtmlElement(traits)};
        }
    }

    std::array<HtmlElement::Named, slots> m_slots{};
};

} // namespace

HtmlElement::Named HtmlElement::named(std::string_view name) {
    const std::uint64_t key = keyOf(name);
    return {key, Table::instance().find(key)};
}

int HtmlElement::weight() const {
    if (isAny(TableScope))
        return 5;
    if (isAny(RowGroup | Row | Cell))
        return isAny(Cell) ? 2 : isAny(Row) ? 3 : 4;
    return isAny(Block) ? 1 : 0;
}

} // namespace platform
