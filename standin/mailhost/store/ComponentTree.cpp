#include "standin/mailhost/store/ComponentTree.h"

namespace mailhost {

namespace {

// Real files have three levels (calendar, appointment, alarm). A hostile one could exhaust the stack.
constexpr size_t deepestNesting = 64;

// Cuts the text into content lines with their folds and line ends.
class LineReader {
public:
    LineReader(const QByteArray &text, qsizetype position)
        : m_text(text)
        , m_position(position)
        , m_separator(text.contains('\n') ? '\n' : '\r') {}

    [[nodiscard]] bool atEnd() const { return m_position >= m_text.size(); }
    [[nodiscard]] int number() const { return m_number; }

    QByteArray next() {
        const qsizetype begin = m_position;
        m_number += m_folds;
        m_folds = 0;
        do {
            const qsizetype end = m_text.indexOf(m_separator, m_position);
            m_position = end < 0 ? m_text.size() : end + 1;
            ++m_folds;
        } while (!atEnd() && (m_text[m_position] == ' ' || m_text[m_position] == '\t'));
        return m_text.mid(begin, m_position - begin);
    }

private:
    const QByteArray &m_text;
    qsizetype m_position;
    char m_separator;
    int m_number = 1; // of the line that next() gave last
    int m_folds = 0;
};

void appendItems(const std::vector<ComponentItem> &items, QByteArray &out) {
    for (const ComponentItem &item : items) {
        if (const auto *line = std::get_if<ContentLine>(&item))
            out.append(line->source());
        else
            std::get<std::unique_ptr<Component>>(item)->appendText(out);
    }
}

template<typename Line, typename Items>
std::vector<Line *> linesNamed(Items &items, const QByteArray &name) {
    std::vector<Line *> found;
    for (auto &item : items) {
        Line *line = std::get_if<ContentLine>(&item);
        if (line && line->name() == name)
            found.push_back(line);
    }
    return found;
}

template<typename Line, typename Items>
Line *firstLine(Items &items, const QByteArray &name) {
    for (auto &item : items) {
        Line *line = std::get_if<ContentLine>(&item);
        if (line && line->name() == name)
            return line;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<Component> Component::make(const QByteArray &name, const QByteArray &lineEnd) {
    auto component = std::make_unique<Component>();
    component->name = name;
    component->begin = ContentLine::make("BEGIN", name, lineEnd);
    component->end = ContentLine::make("END", name, lineEnd);
    return component;
}

std::unique_ptr<Component> Component::copy() const {
    auto copy = std::make_unique<Component>();
    copy->name = name;
    copy->begin = begin;
    copy->end = end;
    copy->items.reserve(items.size());
    for (const ComponentItem &item : items) {
        if (const auto *line = std::get_if<ContentLine>(&item))
            copy->items.emplace_back(*line);
        else
            copy->items.emplace_back(std::get<std::unique_ptr<Component>>(item)->copy());
    }
    return copy;
}

const ContentLine *Component::line(const QByteArray &name) const {
    return firstLine<const ContentLine>(items, name);
}

ContentLine *Component::line(const QByteArray &name) {
    return firstLine<ContentLine>(items, name);
}

std::vector<const ContentLine *> Component::lines(const QByteArray &name) const {
    return linesNamed<const ContentLine>(items, name);
}

std::vector<ContentLine *> Component::lines(const QByteArray &name) {
    return linesNamed<ContentLine>(items, name);
}

std::vector<Component *> Component::components() const {
    std::vector<Component *> found;
    for (const ComponentItem &item : items) {
        if (const auto *component = std::get_if<std::unique_ptr<Component>>(&item))
            found.push_back(component->get());
    }
    return found;
}

ContentLine &Component::lineOrNew(const QByteArray &name) {
    ContentLine *existing = line(name);
    return existing ? *existing : append(ContentLine::make(name, {}, lineEnd()));
}

ContentLine &Component::append(ContentLine line) {
    auto position = items.begin();
    while (position != items.end() && std::holds_alternative<ContentLine>(*position))
        ++position;
    return std::get<ContentLine>(*items.insert(position, std::move(line)));
}

void Component::removeLines(const QByteArray &name) {
    std::erase_if(items, [&](const ComponentItem &item) {
        const auto *line = std::get_if<ContentLine>(&item);
        return line && line->name() == name;
    });
}

void Component::appendText(QByteArray &out) const {
    out.append(begin.source());
    appendItems(items, out);
    out.append(end.source());
}

std::vector<Component *> Document::calendars() const {
    std::vector<Component *> found;
    for (const ComponentItem &item : items) {
        const auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        if (component && (*component)->name == "VCALENDAR")
            found.push_back(component->get());
    }
    return found;
}

QByteArray Document::text() const {
    QByteArray out = byteOrderMark;
    appendItems(items, out);
    return out;
}

ParseResult parseDocument(const QByteArray &text, Document *document) {
    static const QByteArray mark("\xEF\xBB\xBF");
    document->byteOrderMark = text.startsWith(mark) ? mark : QByteArray();
    LineReader reader(text, document->byteOrderMark.size());
    std::vector<Component *> open;
    while (!reader.atEnd()) {
        ContentLine line(reader.next());
        auto &items = open.empty() ? document->items : open.back()->items;
        if (line.name() == "BEGIN") {
            if (open.size() >= deepestNesting)
                return {ParseFailure::TooDeep, reader.number()};
            auto component = std::make_unique<Component>();
            component->name = line.value().trimmed().toUpper();
            component->begin = std::move(line);
            Component *inner = component.get();
            items.emplace_back(std::move(component));
            open.push_back(inner);
        } else if (line.name() == "END") {
            if (open.empty() || line.value().trimmed().toUpper() != open.back()->name) {
                // Half an END line at the very end is a file that was cut off there.
                const bool cut = reader.atEnd() && !text.endsWith('\n') && !open.empty();
                return {cut ? ParseFailure::Truncated : ParseFailure::Mismatched, reader.number()};
            }
            open.back()->end = std::move(line);
            open.pop_back();
        } else {
            items.emplace_back(std::move(line));
        }
    }
    if (document->calendars().empty())
        return {ParseFailure::NotACalendar, 0};
    return {open.empty() ? ParseFailure::None : ParseFailure::Truncated, reader.number()};
}

std::vector<std::unique_ptr<Component>> parseComponents(const QByteArray &text) {
    std::vector<std::unique_ptr<Component>> found;
    Document document;
    const QByteArray lineEnd = text.contains('\n') ? "\r\n" : "\r"; // the same kind as in the text
    const QByteArray whole = "BEGIN:VCALENDAR" + lineEnd + text + "END:VCALENDAR" + lineEnd;
    const bool good = parseDocument(whole, &document).failure == ParseFailure::None;
    if (!good || document.calendars().size() != 1)
        return found;
    for (ComponentItem &item : document.calendars().front()->items) {
        auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        if (!component)
            return {};
        found.push_back(std::move(*component));
    }
    return found;
}

} // namespace mailhost
