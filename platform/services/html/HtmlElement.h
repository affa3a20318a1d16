// The elements of HTML: their effect on the text and which elements they end.
#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

class HtmlElement {
public:
    enum Trait : std::uint32_t {
        // Effect on the text.
        Block = 1U << 0,
        Table = 1U << 1, // ends a line but is not one: only its cells have lines
        Hidden = 1U << 2,
        Preformatted = 1U << 3,
        ListItem = 1U << 4,
        BulletList = 1U << 5,
        NumberedList = 1U << 6,
        LineBreak = 1U << 7,
        Image = 1U << 8,
        Paragraph = 1U << 9, // a <br> directly in it separates lines of one paragraph
        // Implied ends of elements.
        Void = 1U << 10, // has no content and no end tag
        EndsParagraph = 1U << 11,
        PlainParagraph = 1U << 12, // <p>
        Term = 1U << 13,           // <dt>, <dd>
        ListScope = 1U << 14,
        TableScope = 1U << 15,
        RowGroup = 1U << 16,
        Row = 1U << 17,
        Cell = 1U << 18,
        Head = 1U << 19,
        Document = 1U << 20, // html, body
        RawText = 1U << 21,
        References = 1U << 22,   // in its raw text, character references are read
        FirstNewline = 1U << 23, // a newline directly after its start tag belongs to the tag
        // For the parser of a web document.
        Unnestable = 1U << 24, // not without an element of another kind between
        Formatting = 1U << 25, // its end tag leaves open what was opened inside
        Structural =
            1U << 26, // its end tag ends all that was opened inside; that of most others does not end it
    };

    // The element of that name; ignores case. An unknown name gives an element without traits.
    struct Named;
    [[nodiscard]] static Named named(std::string_view name);

    constexpr HtmlElement() = default;
    constexpr explicit HtmlElement(std::uint32_t traits)
        : m_traits(traits) {}
    [[nodiscard]] constexpr bool isAny(std::uint32_t traits) const { return (m_traits & traits) != 0; }
    // Whether ignoring its end affects nothing except the ends of outer elements.
    [[nodiscard]] bool canBeFlattened() const {
        return !isAny(Hidden | Preformatted | LineBreak | Image | Void);
    }
    // An end tag ends no element of greater weight than its own.
    [[nodiscard]] int weight() const;

private:
    std::uint32_t m_traits = 0;
};

struct HtmlElement::Named {
    std::uint64_t key; // the same for the same name
    HtmlElement element;
};

} // namespace platform
