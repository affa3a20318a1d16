// Reads, lists, changes, saves, splits and reassembles calendar files of other programs.
#include "platform/Literals.h"
#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/store/ComponentTree.h"
#include "standin/mailhost/store/TextValue.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

using namespace fuzz;
using namespace mailhost;

namespace {

const QString &calendarPath() {
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(u"my.ics"_s);
    return path;
}

void write(const QByteArray &text) {
    QFile file(calendarPath());
    claim(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "the test can write its file");
}

QByteArray saved(CalendarFile &file) {
    QString error;
    claim(file.save(&error), "what was read can be saved");
    QFile written(calendarPath());
    claim(written.open(QIODevice::ReadOnly), "what was saved is there");
    return written.readAll();
}

// All lines but those that a changed subject changes.
void appendOthers(const std::vector<ComponentItem> &items, QByteArray &out) {
    static const QSet<QByteArray> changed = {"SUMMARY", "DTSTAMP", "LAST-MODIFIED", "UID"};
    for (const ComponentItem &item : items) {
        if (!item.component) {
            if (!changed.contains(item.line.name()))
                out += item.line.source();
            continue;
        }
        out += item.component->begin.source();
        appendOthers(item.component->items, out);
        out += item.component->end.source();
    }
}

QByteArray othersOf(const QByteArray &text) {
    Document document;
    claim(parseDocument(text, &document).failure == ParseFailure::None, "what was saved can be read");
    QByteArray out;
    appendOthers(document.root.items, out);
    return out;
}

void claimListing(const CalendarFile &file) {
    const QDateTime from = QDate(2025, 3, 10).startOfDay();
    const QDateTime to = from.addDays(14);
    const QList<Occurrence> listed = file.occurrences(from, to);
    claim(std::is_sorted(listed.cbegin(), listed.cend(),
                         [](const Occurrence &a, const Occurrence &b) { return a.start < b.start; }),
          "a listing is sorted");
    for (const Occurrence &occurrence : listed) {
        claim(occurrence.start < to && (occurrence.end > from || occurrence.start == from),
              "what is listed lies in the time asked for");
        claim(file.find(occurrence.uid, occurrence.recurrenceId).has_value(), "what is listed can be found");
    }
    claim(file.occurrences(from, to).size() == listed.size(), "a second listing is like the first");
}

void claimMessages(const CalendarFile &file, const Appointment &appointment) {
    for (const bool cancel : {false, true}) {
        const QByteArray message = file.itipMessage(appointment.uid, appointment.recurrenceId, cancel);
        claim(!message.contains('\0'), "a message is text");
        claim(QByteArray(message).replace("\r\n", "").count('\n') == 0, "a message's lines end as in mail");
    }
}

void claimSubject(const QByteArray &text, const Appointment &original) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    Appointment changed = original;
    changed.summary = u"Changed; a, b\\ and \"c\": ä😀"_s;
    claim(file->update(changed), "a subject can be changed");
    const QByteArray after = saved(*file);
    claimSame(othersOf(after), othersOf(text), "a changed subject leaves all other lines alone");
    const auto again = CalendarFile::open(calendarPath(), nullptr);
    claim(again != nullptr, "what was saved can be opened");
    const auto found = again->find(changed.uid, changed.recurrenceId);
    claim(found && found->summary == changed.summary, "a changed subject is there");
}

void claimRestored(const QByteArray &text, const QString &uid) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    const QByteArray components = file->componentsOf(uid);
    claim(!components.isEmpty() && file->remove(uid), "an appointment can be removed");
    claim(!file->find(uid), "and is gone then");
    claim(file->restore(uid, components), "and can be put back");
    claimSame(file->componentsOf(uid), components, "to the letter");
    claimSame(saved(*file), text, "where it was");
}

// Changes each appointment like a user who drags it, edits it and invites an attendee.
void changeEverything(const QByteArray &text) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    const auto all = file->appointments();
    for (qsizetype i = 0; i < std::min(all.size(), qsizetype(3)); ++i) {
        Appointment changed = all[i];
        changed.location += u" https://x.example/j/1"_s;
        changed.bodyHtml += u"<p>x</p>"_s;
        changed.ucCapabilities = u"{\"meetingKey\":\"1\"}"_s;
        changed.attendees.append({u"n"_s, u"n@x.example"_s, AttendeeType::Resource});
        if (changed.start.value.isValid())
            changed.start.value = changed.start.value.addSecs(i % 2 ? 3600 : 86400);
        if (!file->update(changed))
            continue;
        claimMessages(*file, changed);
        const auto now = file->find(changed.uid, changed.recurrenceId);
        claim(now && now->ucCapabilities == changed.ucCapabilities, "the record is there");
    }
    claimListing(*file);
    (void)othersOf(saved(*file));
    claim(CalendarFile::open(calendarPath(), nullptr) != nullptr, "what was saved can be opened");
}

// The text without the characters that the format cannot represent.
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
}

void claimLines(const std::vector<ComponentItem> &items, const QString &text) {
    for (const ComponentItem &item : items) {
        if (!item.component) {
            claimLine(item.line, text);
            continue;
        }
        QByteArray octets;
        item.component->appendText(octets);
        QByteArray copied;
        item.component->copy()->appendText(copied);
        claimSame(copied, octets, "a copy is to the letter");
        claimLines(item.component->items, text);
    }
}

// The text of a file: lines, folds, parameters, values. What is not changed keeps its octets.
void claimText(const Document &document, const QByteArray &bytes) {
    claimSame(document.text(), bytes, "a file is written as it was read");
    claimLines(document.root.items, QString::fromUtf8(bytes.first(std::min(bytes.size(), qsizetype(60)))));
}

void open(const QByteArray &bytes) {
    Document document;
    if (parseDocument(bytes, &document).failure == ParseFailure::None)
        claimText(document, bytes);
    write(bytes);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    if (!file)
        return;
    claimListing(*file);
    const QList<Appointment> all = file->appointments();
    QSet<std::pair<QString, QString>> seen;
    QList<Appointment> found;
    for (const Appointment &appointment : all) {
        // Of two with the same identifiers the first is used.
        const std::pair name(appointment.uid, appointment.recurrenceId);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        found.append(appointment);
        claim(file->find(name.first, name.second) == appointment, "an appointment is found as it is listed");
        claim(!appointment.uid.isEmpty(), "an appointment has an identifier");
        claim(file->update(appointment), "what is there can be updated");
        claimMessages(*file, appointment);
    }
    claimSame(saved(*file), bytes, "an update without difference changes nothing");
    if (found.isEmpty())
        return;
    const Appointment &chosen = found[bytes.size() % found.size()];
    claimSubject(bytes, chosen);
    claimRestored(bytes, chosen.uid);
    changeEverything(bytes);
}

const AddFuzzTarget target("calendar", open);

} // namespace
