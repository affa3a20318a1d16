// Converts a stream of HTML tags and characters to plain text. All texts are UTF-8.
#pragma once

#include "platform/services/html/HtmlElement.h"
#include "platform/services/html/HtmlTokenizer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The code point in UTF-8; U+FFFD for an invalid one.
[[nodiscard]] std::string utf8Of(char32_t codePoint);

class HtmlTextSink {
public:
    using Attributes = const HtmlAttributes &;

    void reserve(std::size_t bytes) { m_text.reserve(bytes); }
    void open(HtmlElement tag, Attributes attributes);
    // Opens a tag without a later close().
    void openFlattened(HtmlElement tag);
    // Ends the tag that was opened last.
    void close();
    void text(std::string_view characters);
    // Ends all open tags and returns the text. Call it last.
    [[nodiscard]] std::string take();

private:
    struct List {
        bool numbered;
        long next;
    };
    struct Frame {
        HtmlElement tag;
        std::size_t start;     // length of the text where its content begins
        bool breakIsSeparator; // of what surrounds it
        bool preformatted;     // of what surrounds it
        bool hidden;
    };
    // The kind of the last character, which decides how following white space or the end of the block is
    // written.
    enum class Tail { Firm, SoftSpace, SoftSeparator };

    void startBlock(HtmlElement tag, Attributes attributes);
    void startItem(Attributes attributes);
    void breakLine(bool evenWhenEmpty);
    void breakBeforeBlock(bool item);
    void dropSoftTail();
    void addLineBreak();
    void addPreformatted(std::string_view characters);
    void addNewlineOfPreformatted(char newline);
    // Returns the number of bytes of `rest` that it consumed.
    std::size_t addTwoByteCharacter(std::string_view rest);
    void addCollapsed(std::string_view characters);
    void addRun(std::string_view characters);
    [[nodiscard]] bool atLineStart() const;

    std::string m_text;
    std::vector<Frame> m_frames;
    std::vector<List> m_lists;
    std::size_t m_afterMarker = std::string::npos; // length of the text right after a list marker
    std::size_t m_preStart = std::string::npos; // where a leading newline of a preformatted block is dropped
    int m_hiddenDepth = 0;
    Tail m_tail = Tail::Firm;
    bool m_breakIsSeparator = false;
    bool m_preformatted = false;
    bool m_afterCarriageReturn = false;
};

} // namespace platform
