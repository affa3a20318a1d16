#include "standin/mailhost/store/ComponentTree.h"

namespace mailhost {

namespace {

// Real files have three levels (calendar, appointment, alarm). A hostile one could exhaust the stack.
constexpr size_t deepestNesting = 64;

// The end of the content line that begins there, behind its folds and line ends.
qsizetype endOfLine(const QByteArray &text, qsizetype position, char separator) {
    do {
        const qsizetype end = text.indexOf(separator, position);
        position = end < 0 ? text.size() : end + 1;
    } while (position < text.size() && (text[position] == ' ' || text[position] == '\t'));
    return position;
}

} // namespace

std::unique_ptr<Component> Component::make(const QByteArray &name, const QByteArray &lineEnd) {
    auto component = std::make_unique<Component>();
    component->name = name;
    component->begin = ContentLine::make("BEGIN", name, lineEnd);
    component->end = ContentLine::make("END", name, lineEnd);
    return component;
}

std::unique_ptr<Component> Component::makeCalendar(const QByteArray &lineEnd) {
    auto calendar = make("VCALENDAR", lineEnd);
    calendar->append(ContentLine::make("VERSION", "2.0", lineEnd));
    calendar->append(ContentLine::make("PRODID", "-//Parlo//Stand-in calendar//EN", lineEnd));
    calendar->append(ContentLine::make("CALSCALE", "GREGORIAN", lineEnd));
    return calendar;
}

std::unique_ptr<Component> Component::copy() const {
    auto copy = std::make_unique<Component>();
    copy->name = name;
    copy->begin = begin;
    copy->end = end;
    copy->items.reserve(items.size());
    for (const auto &[line, component] : items)
        copy->items.push_back({line, component ? component->copy() : nullptr});
    return copy;
}

const ContentLine *Component::line(const QByteArray &name) const {
    for (const ComponentItem &item : items) {
        if (item.line.name() == name)
            return &item.line;
    }
    return nullptr;
}

std::vector<ContentLine *> Component::lines(const QByteArray &name) {
    std::vector<ContentLine *> found;
    for (ComponentItem &item : items) {
        if (item.line.name() == name)
            found.push_back(&item.line);
    }
    return found;
}

std::vector<Component *> Component::components() const {
    std::vector<Component *> found;
    for (const ComponentItem &item : items) {
        if (item.component)
            found.push_back(item.component.get());
    }
    return found;
}

ContentLine &Component::lineOrNew(const QByteArray &name) {
    ContentLine *existing = line(name);
    return existing ? *existing : append(ContentLine::make(name, {}, lineEnd()));
}

ContentLine &Component::append(ContentLine line) {
    const auto position = std::find_if(items.begin(), items.end(),
                                       [](const ComponentItem &item) { return item.component != nullptr; });
    return items.insert(position, {std::move(line), nullptr})->line;
}

void Component::removeLines(const QByteArray &name) {
    std::erase_if(items, [&](const ComponentItem &item) { return item.line.name() == name; });
}

void Component::appendText(QByteArray &out) const {
    out += begin.source();
    for (const ComponentItem &item : items) {
        if (item.component)
            item.component->appendText(out);
        else
            out += item.line.source();
    }
    out += end.source();
}

std::vector<Component *> Document::calendars() const {
    std::vector<Component *> found = root.components();
    std::erase_if(found, [](const Component *component) { return component->name != "VCALENDAR"; });
    return found;
}

QByteArray Document::text() const {
    QByteArray out = byteOrderMark;
    root.appendText(out);
    return out;
}

ParseResult parseDocument(const QByteArray &text, Document *document) {
    static const QByteArray mark("\xEF\xBB\xBF");
    document->byteOrderMark = text.startsWith(mark) ? mark : QByteArray();
    const char separator = text.contains('\n') ? '\n' : '\r';
    std::vector<Component *> open = {&document->root};
    qsizetype end = 0;
    for (qsizetype begin = document->byteOrderMark.size(); begin < text.size(); begin = end) {
        end = endOfLine(text, begin, separator);
        const auto failed = [&](ParseFailure failure) {
            return ParseResult{failure, text.first(begin).count(separator) + 1};
        };
        ContentLine line(text.mid(begin, end - begin));
        if (line.name() == "BEGIN") {
            if (open.size() > deepestNesting)
                return failed(ParseFailure::TooDeep);
            auto component = std::make_unique<Component>();
            component->name = line.value().trimmed().toUpper();
            component->begin = std::move(line);
            Component *inner = component.get();
            open.back()->items.push_back({{}, std::move(component)});
            open.push_back(inner);
        } else if (line.name() == "END") {
            if (open.size() == 1 || line.value().trimmed().toUpper() != open.back()->name) {
                // Half an END line at the very end is a file that was cut off there.
                const bool cut = end == text.size() && !text.endsWith('\n') && open.size() > 1;
                return failed(cut ? ParseFailure::Truncated : ParseFailure::Mismatched);
            }
            open.back()->end = std::move(line);
            open.pop_back();
        } else {
            open.back()->items.push_back({std::move(line), nullptr});
        }
    }
    if (document->calendars().empty())
        return {ParseFailure::NotACalendar};
    return {open.size() == 1 ? ParseFailure::None : ParseFailure::Truncated};
}

std::vector<std::unique_ptr<Component>> parseComponents(const QByteArray &text) {
    std::vector<std::unique_ptr<Component>> found;
    Document document;
    if (parseDocument(text, &document).failure != ParseFailure::NotACalendar)
        return found;
    for (ComponentItem &item : document.root.items) {
        if (!item.component || item.component->end.source().isEmpty()) // cut off
            return {};
        found.push_back(std::move(item.component));
    }
    return found;
}

} // namespace mailhost
