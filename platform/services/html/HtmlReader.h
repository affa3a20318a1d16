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

    void readText(std::string_view text);
    [[nodiscard]] std::size_t readReference(std::string_view text);
    void openElement(const HtmlElement::Named &named, const HtmlAttributes &attributes, bool selfClosing);
    void makeRoomFor(HtmlElement element);
    void endElement(const HtmlElement::Named &named);
    void closeThrough(std::size_t index);
    // Ends the nearest open element that has the traits, unless one with the barrier's lies nearer.
    void closeNearest(std::uint32_t traits, std::uint32_t barrier);
    void endHead();
    // How far from the inside open elements are searched: deeper nesting does not occur in real documents.
    [[nodiscard]] std::size_t outermostSearched() const;

    HtmlTextSink &m_sink;
    std::vector<Open> m_open;
    int m_openParagraphs = 0;
};

} // namespace platform
