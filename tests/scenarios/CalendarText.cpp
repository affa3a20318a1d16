#include "tests/scenarios/CalendarText.h"

namespace scenarios {

namespace {

// Up to the end of the line that begins there, with all lines that continue it.
QByteArray foldedLineAt(const QByteArray &file, qsizetype begin) {
    qsizetype end = begin;
    do {
        const qsizetype feed = file.indexOf('\n', end);
        end = feed < 0 ? file.size() : feed + 1;
    } while (end < file.size() && (file[end] == ' ' || file[end] == '\t'));
    return file.mid(begin, end - begin);
}

QByteArray unfolded(QByteArray octets) {
    for (const char *fold : {"\r\n ", "\r\n\t", "\n ", "\n\t"})
        octets.replace(fold, "");
    while (octets.endsWith('\n') || octets.endsWith('\r'))
        octets.chop(1);
    return octets;
}

// The ":" before the value: not one in quotes.
qsizetype valueColon(const QByteArray &text) {
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            quoted = !quoted;
        if (text[i] == ':' && !quoted)
            return i;
    }
    return text.size();
}

TextLine readLine(const QByteArray &octets, int depth) {
    const QByteArray text = unfolded(octets);
    const qsizetype colon = valueColon(text);
    const QByteArray head = text.left(colon);
    const qsizetype semicolon = head.indexOf(';');
    return {octets, head.left(semicolon < 0 ? colon : semicolon).toUpper(),
            semicolon < 0 ? QByteArray() : head.mid(semicolon), text.mid(colon + 1), depth};
}

} // namespace

std::string EventText::line(const QByteArray &name) const {
    for (const TextLine &line : lines)
        if (line.depth == 0 && line.name == name)
            return unfolded(line.octets).toStdString();
    return {};
}

QList<EventText> eventsIn(const QByteArray &file) {
    QList<EventText> events;
    bool inside = false;
    int depth = 0;
    for (qsizetype at = 0; at < file.size();) {
        const QByteArray octets = foldedLineAt(file, at);
        const TextLine line = readLine(octets, depth);
        const qsizetype next = at + octets.size();
        const bool isEvent = line.value.trimmed().toUpper() == "VEVENT";
        if (line.name == "BEGIN" && isEvent && !inside) {
            events.append({at, next, {}});
            inside = true;
        } else if (line.name == "END" && isEvent && depth == 0 && inside) {
            events.last().end = next;
            inside = false;
        } else if (inside) {
            depth += line.name == "BEGIN";
            events.last().lines.append(readLine(octets, depth));
            depth -= line.name == "END";
        }
        at = next;
    }
    return events;
}

EventText eventIn(const QByteArray &file, const QByteArray &uid) {
    for (const EventText &event : eventsIn(file))
        if (event.line("UID") == "UID:" + uid.toStdString())
            return event;
    return {};
}

} // namespace scenarios
