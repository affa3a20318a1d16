// An iCalendar file as a tree of components that keep their text: unchanged lines are written as they were
// read.
#pragma once

#include "standin/mailhost/store/ContentLine.h"

#include <memory>
#include <vector>

namespace mailhost {

struct Component;

// One line, or one inner component.
struct ComponentItem {
    ContentLine line; // nameless for a component
    std::unique_ptr<Component> component;
};

// One without name and lines is written as nothing.
struct Component {
    QByteArray name; // upper case
    ContentLine begin;
    std::vector<ComponentItem> items; // in the file's order
    ContentLine end;

    // An empty one, with BEGIN and END.
    static std::unique_ptr<Component> make(const QByteArray &name, const QByteArray &lineEnd);
    // A VCALENDAR of this program.
    static std::unique_ptr<Component> makeCalendar(const QByteArray &lineEnd);
    [[nodiscard]] std::unique_ptr<Component> copy() const;

    // The first line of that name (upper case), null when there is none. Valid until the component changes.
    [[nodiscard]] const ContentLine *line(const QByteArray &name) const;
    [[nodiscard]] ContentLine *line(const QByteArray &name) {
        return const_cast<ContentLine *>(std::as_const(*this).line(name));
    }
    [[nodiscard]] std::vector<ContentLine *> lines(const QByteArray &name);
    [[nodiscard]] std::vector<const ContentLine *> lines(const QByteArray &name) const {
        const auto found = const_cast<Component *>(this)->lines(name);
        return {found.begin(), found.end()};
    }
    [[nodiscard]] std::vector<Component *> components() const;
    [[nodiscard]] QByteArray lineEnd() const { return begin.lineEnd(); }

    // The first line of that name; if there is none, a new one with an empty value.
    ContentLine &lineOrNew(const QByteArray &name);
    // Inserts the line after the other lines and before the inner components, where the grammar expects it.
    ContentLine &append(ContentLine line);
    void removeLines(const QByteArray &name);
    void appendText(QByteArray &out) const;
};

struct Document {
    QByteArray byteOrderMark; // the three octets, or nothing
    Component root;           // what is in the file

    [[nodiscard]] std::vector<Component *> calendars() const;
    [[nodiscard]] QByteArray text() const;
};

enum class ParseFailure {
    None,
    NotACalendar, // no VCALENDAR in it
    Truncated,    // ends inside a component
    Mismatched,   // an END that does not belong to the open component
    TooDeep
};
struct ParseResult {
    ParseFailure failure = ParseFailure::None;
    qsizetype line = 0; // of the failure, counted from 1
};

// Linear in the text. `document` is complete only without a failure.
[[nodiscard]] ParseResult parseDocument(const QByteArray &text, Document *document);

// The components of a text, for example one VEVENT after another; none if the text holds anything else.
[[nodiscard]] std::vector<std::unique_ptr<Component>> parseComponents(const QByteArray &text);

} // namespace mailhost
