// Reads valid and broken HTML and passes its tags and characters to a sink.
#pragma once

#include "platform/services/html/HtmlTextSink.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

// Follows the rules of browsers that affect plain text: implied ends of elements, raw text, comments,
// declarations, character references. Never fails. Takes linear time at every nesting depth.
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
    // Ends the nearest open element that has the traits, unless an element with the barrier's traits is
    // nearer.
    void closeNearest(std::uint32_t traits, std::uint32_t barrier);
    void endHead();
    // The number of open elements outside of the search, which looks only at the innermost ones. Real
    // documents have no deeper nesting.
    [[nodiscard]] std::size_t outermostSearched() const;

    HtmlTextSink &m_sink;
    std::vector<Open> m_open;
    int m_openParagraphs = 0;
};

} // namespace platform
