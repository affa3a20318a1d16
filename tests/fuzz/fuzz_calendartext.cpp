// The text of calendar files: lines, folds, parameters, values. What is not changed keeps its octets.
#include "standin/mailhost/store/ComponentTree.h"
#include "standin/mailhost/store/TextValue.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;
using namespace mailhost;

namespace {

// What a text loses in the format.
QString permitted(QString text) {
    text.removeIf([](QChar unit) {
        return (unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\r') || unit == QChar(0x7f);
    });
    return text;
}

bool isName(const QByteArray &name) {
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
    });
}

void claimLine(const ContentLine &line, const QString &text) {
    claimSame(ContentLine(line.source()).value(), line.value(), "a line is its text");
    if (!isName(line.name()))
        return;
    const QByteArray value = line.value().replace('\r', ""); // stray ones do not survive writing
    claimSame(line.refolded(line.lineEnd()).value(), value, "folding changes no value");
    ContentLine changed = line;
    changed.setValue(line.value()); // it may be no line at all, without a colon
    changed.setParameter("X-NEW", text);
    claimSame(changed.value(), value, "a parameter changes no value");
    changed.removeParameter("X-NEW");
    claim(!changed.parameter("X-NEW"), "a parameter can be removed");
    claim(changed.parameter("TZID") == line.parameter("TZID"), "other parameters stay");
    writeText(changed, text);
    claimSame(readText(changed), permitted(text), "a text that is written is read");
    claimSame(readText(ContentLine(changed.source())), permitted(text), "also from the file");
    claim(changed.name() == line.name(), "a line keeps its name");
    writeRecord(changed, text);
    claimSame(readRecord(ContentLine(changed.source())), text, "a record is kept to the letter");
}

void claimLines(const std::vector<ComponentItem> &items, const QString &text) {
    for (const ComponentItem &item : items) {
        if (const auto *line = std::get_if<ContentLine>(&item)) {
            claimLine(*line, text);
            continue;
        }
        const Component &component = *std::get<std::unique_ptr<Component>>(item);
        QByteArray octets;
        component.appendText(octets);
        QByteArray copied;
        component.copy()->appendText(copied);
        claimSame(copied, octets, "a copy is to the letter");
        claimLines(component.items, text);
    }
}

void open(const QByteArray &bytes) {
    Document document;
    if (parseDocument(bytes, &document).failure != ParseFailure::None)
        return;
    claimSame(document.text(), bytes, "a file is written as it was read");
    const QString text = QString::fromUtf8(bytes.first(std::min(bytes.size(), qsizetype(60))));
    claimLines(document.items, text);
    for (const Component *calendar : document.calendars()) {
        for (const Component *component : calendar->components()) {
            QByteArray octets;
            component->appendText(octets);
            const auto read = parseComponents(octets);
            claim(read.size() == 1, "a component can be read by itself");
            QByteArray again;
            read.front()->appendText(again);
            claimSame(again, octets, "to the letter");
        }
    }
}

const AddFuzzTarget target("calendartext", open);

} // namespace
