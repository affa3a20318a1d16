// Turns a stream of HTML tags and characters into plain text. Everything in it is UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// What a tag does to the text around it.
class HtmlTag {
public:
    [[nodiscard]] static HtmlTag named(std::string_view lowerCaseName);

    [[nodiscard]] bool isBlock() const { return has(Block); }
    [[nodiscard]] bool isTable() const { return has(Table); }
    [[nodiscard]] bool isHidden() const { return has(Hidden); }
    [[nodiscard]] bool isPreformatted() const { return has(Preformatted); }
    [[nodiscard]] bool isListItem() const { return has(ListItem); }
    [[nodiscard]] bool isList() const { return has(BulletList | NumberedList); }
    [[nodiscard]] bool isNumberedList() const { return has(NumberedList); }
    [[nodiscard]] bool isLineBreak() const { return has(LineBreak); }
    [[nodiscard]] bool isImage() const { return has(Image); }
    // A <br> directly in it separates lines of one paragraph.
    [[nodiscard]] bool isParagraph() const { return has(Paragraph); }
    // Whether losing track of where it ends changes no more than where an outer element ends.
    [[nodiscard]] bool canBeFlattened() const {
        return !has(Hidden | Preformatted | LineBreak | Image | Void);
    }

private:
    friend struct HtmlTagTable;
    enum Trait : unsigned {
        Block = 1,
        Table = 2,
        Hidden = 4,
        Preformatted = 8,
        ListItem = 16,
        BulletList = 32,
        NumberedList = 64,
        LineBreak = 128,
        Image = 256,
        Paragraph = 512,
        Void = 1024,
    };
    constexpr explicit HtmlTag(unsigned traits)
        : m_traits(traits) {}
    [[nodiscard]] bool has(unsigned traits) const { return (m_traits & traits) != 0; }
    unsigned m_traits;
};

class HtmlTextSink {
public:
    // Name, value, name, value, ..., nullptr. A value may be nullptr. Only borrowed for one call.
    using Attributes = const char *const *;

    void reserve(std::size_t bytes) { m_text.reserve(bytes); }
    void open(HtmlTag tag, Attributes attributes);
    // A tag whose end will not be told.
    void openFlattened(HtmlTag tag);
    // Ends the tag that was opened last. Nothing when none is open.
    void close();
    void text(std::string_view characters);
    // The text so far, after whatever is still open has been ended. Leaves the sink empty.
    [[nodiscard]] std::string take();

private:
    struct List {
        bool numbered;
        long next;
    };
    struct Frame {
        HtmlTag tag;
        std::size_t start;     // length of the text where its content begins
        bool breakIsSeparator; // of what surrounds it
        bool preformatted;     // of what surrounds it
        bool hidden;
    };
    // The last character, where white space that follows it, or the end of its block, depends on it.
    enum class Tail { Firm, SoftSpace, SoftSeparator };

    void startBlock(HtmlTag tag, Attributes attributes);
    void startItem(Attributes attributes);
    void breakLine(bool evenWhenEmpty);
    void breakBeforeBlock(bool item);
    void dropSoftTail();
    void addLineBreak();
    void addPreformatted(std::string_view characters);
    void addNewlineOfPreformatted(char newline);
    // Answers how many bytes of `rest` it took.
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
