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

constexpr qsizetype mostChanged = 5;  // of the appointments of one file
constexpr qsizetype longestLine = 76; // octets, with the return before the line feed

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

// All lines but those that a stored meeting changes: lines of an appointment, which is two levels deep.
void appendOthers(const std::vector<ComponentItem> &items, int depth, QByteArray &out) {
    static const QSet<QByteArray> changed = {
        "SUMMARY",    "LOCATION", "CONFERENCE",         "X-PARLO-UC-CAPABILITIES", "DESCRIPTION",
        "X-ALT-DESC", "DTSTAMP",  "STYLED-DESCRIPTION", "LAST-MODIFIED",           "UID"};
    for (const ComponentItem &item : items) {
        if (!item.component) {
            if (depth != 2 || !changed.contains(item.line.name()))
                out += item.line.source();
            continue;
        }
        out += item.component->begin.source();
        appendOthers(item.component->items, depth + 1, out);
        out += item.component->end.source();
    }
}

QByteArray othersOf(const QByteArray &text) {
    Document document;
    claim(parseDocument(text, &document).failure == ParseFailure::None, "what was saved can be read");
    QByteArray out;
    appendOthers(document.root.items, 0, out);
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

// Stores a meeting into an appointment and takes it out again.
void claimMeeting(const QByteArray &text, QList<Appointment> all, qsizetype index) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    Appointment &changed = all[index];
    const QByteArray components = file->componentsOf(changed.uid);
    changed.summary = u"Changed; a, b\\ and \"c\": ä😀"_s;
    changed.location = u"https://x.example/j/1?p=a,b;c; "_s + changed.location;
    changed.ucCapabilities = u"{\"meetingKey\":\"1\"}"_s;
    changed.bodyHtml = u"<p>Bis später,\tTomáš</p>"_s;
    claim(file->update(changed), "a meeting can be stored");
    const QByteArray after = saved(*file);
    claimSame(othersOf(after), othersOf(text), "a stored meeting leaves all other lines alone");
    const auto again = CalendarFile::open(calendarPath(), nullptr);
    claim(again && again->appointments() == all, "it is there, and every other appointment is as it was");
    file->restore(changed.uid, components);
    claimSame(saved(*file), text, "it is taken out without a trace");
}

void claimRestored(const QByteArray &text, const QString &uid, const QString &recurrenceId) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    const QByteArray components = file->componentsOf(uid);
    claim(file->remove(uid, recurrenceId), "an appointment can be removed");
    claim(!recurrenceId.isEmpty() || !file->find(uid), "and is gone then");
    file->restore(uid, components);
    claimSame(saved(*file), text, "and is put back to the letter where it was");
}

// Drags appointments and invites an attendee to each.
void dragAndInvite(const QByteArray &text) {
    write(text);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    const auto all = file->appointments();
    for (qsizetype i = 0; i < std::min(all.size(), qsizetype(3)); ++i) {
        Appointment changed = all[i];
        changed.attendees.append({u"n"_s, u"n@x.example"_s, AttendeeType::Resource});
        if (changed.start.value.isValid())
            changed.start.value = changed.start.value.addSecs(i % 2 ? 3600 : 86400);
        if (file->update(changed))
            claimMessages(*file, changed);
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
    // A colon that is added may end an open quote.
    claim(!line.source().contains(':') || changed.parameter("TZID") == line.parameter("TZID"),
          "other parameters stay");
    writeText(changed, text);
    claimSame(readText(changed), permitted(text), "a text that is written is read");
    claimSame(readText(ContentLine(changed.source())), permitted(text), "also from the file");
    claim(changed.name() == line.name(), "a line keeps its name");
    const QByteArray folded = changed.refolded("\r\n").source();
    const bool isText = QByteArray(folded).replace("\r\n ", "").isValidUtf8();
    for (const QByteArray &part : folded.split('\n'))
        claim(part.size() <= longestLine && (part.isValidUtf8() || !isText),
              "folded lines are short and end with a whole character");
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
    const QByteArray begin = bytes.first(std::min(bytes.size(), qsizetype(60)));
    claimLines(document.root.items, QString::fromUtf8(begin) + QString(60, QChar(0x20AC)));
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
    QList<qsizetype> found;
    for (qsizetype i = 0; i < all.size(); ++i) {
        // Of two with the same identifiers the first is used.
        const std::pair name(all[i].uid, all[i].recurrenceId);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        found.append(i);
        claim(file->find(name.first, name.second) == all[i], "an appointment is found as it is listed");
        claim(!all[i].uid.isEmpty(), "an appointment has an identifier");
        claim(file->update(all[i]), "what is there can be updated");
        claimMessages(*file, all[i]);
    }
    claimSame(saved(*file), bytes, "an update without difference changes nothing");
    for (const qsizetype i : found.first(std::min(found.size(), mostChanged))) {
        claimMeeting(bytes, all, i);
        // Of twins, the one that was removed alone comes back behind the other.
        claimRestored(bytes, all[i].uid, found.size() == all.size() ? all[i].recurrenceId : QString());
    }
    if (!found.isEmpty())
        dragAndInvite(bytes);
}

const AddFuzzTarget target("calendar", open);

} // namespace
