// Reads HTML, however broken, and tells a sink of its tags and characters.
#pragma once

#include "platform/services/html/HtmlTextSink.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

// Reads as browsers do where that shows in plain text: which elements end which, raw text, comments,
// declarations, character references. Never fails; takes time in proportion to the length, however deeply
// nested.
class HtmlReader {
public:
    explicit HtmlReader(HtmlTextSink &sink)
        : m_sink(sink) {}
    // `html` is UTF-8 without a NUL.
    void read(std::string_view html);

private:
    struct Open {
        std::uint64_t key;
        HtmlElement element;
    };

    void readMarkup();
    void readText(std::size_t end);
    void readReference();
    void readStartTag();
    void readEndTag();
    void readRawText(std::string_view name, HtmlElement element);
    [[nodiscard]] std::string_view readName();
    // Through the tag's end. False when the text ends first.
    [[nodiscard]] bool readAttributes(HtmlAttributes *attributes, bool *selfClosing);
    [[nodiscard]] std::string_view readValue();
    void skipSpaces();
    void skipPast(std::string_view end);

    void openElement(const HtmlElement::Named &named, const HtmlAttributes &attributes, bool selfClosing);
    void makeRoomFor(HtmlElement element);
    void endElement(const HtmlElement::Named &named);
    void closeThrough(std::size_t index);
    // Ends the nearest open element that has the traits, unless one with the barrier's lies nearer.
    void closeNearest(std::uint32_t traits, std::uint32_t barrier);
    void endHead();
    // How far from the inside open elements are searched: a document that is nested deeper is no document.
    [[nodiscard]] std::size_t outermostSearched() const;
    [[nodiscard]] char at(std::size_t position) const {
        return position < m_html.size() ? m_html[position] : '\0';
    }

    HtmlTextSink &m_sink;
    std::string_view m_html;
    std::size_t m_at = 0;
    std::vector<Open> m_open;
    int m_openParagraphs = 0;
};

} // namespace platform
