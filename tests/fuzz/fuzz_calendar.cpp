// Calendar files of other programs: read, listed, changed, saved, taken apart and put together again.
#include "platform/services/TestServices.h"
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
        if (const auto *line = std::get_if<ContentLine>(&item)) {
            if (!changed.contains(line->name()))
                out += line->source();
            continue;
        }
        const Component &component = *std::get<std::unique_ptr<Component>>(item);
        out += component.begin.source();
        appendOthers(component.items, out);
        out += component.end.source();
    }
}

QByteArray othersOf(const QByteArray &text) {
    Document document;
    claim(parseDocument(text, &document).failure == ParseFailure::None, "what was saved can be read");
    QByteArray out;
    appendOthers(document.items, out);
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

// As a person would who drags it, writes into it and invites somebody.
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

void open(const QByteArray &bytes) {
    static const platform::TestDesktop desktop = platform::installTestServices();
    Q_UNUSED(desktop)
    Document document;
    if (parseDocument(bytes, &document).failure == ParseFailure::None)
        claimSame(document.text(), bytes, "a file is written as it was read");
    write(bytes);
    auto file = CalendarFile::open(calendarPath(), nullptr);
    if (!file)
        return;
    claimListing(*file);
    const QList<Appointment> all = file->appointments();
    QSet<std::pair<QString, QString>> seen;
    QList<Appointment> found;
    for (const Appointment &appointment : all) {
        // Of two with one name the first is meant.
        const std::pair name(appointment.uid, appointment.recurrenceId);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        found.append(appointment);
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
