#include "standin/mailhost/model/CalendarSession.h"

#include "standin/mailhost/store/Messages.h"

#include <QSet>

namespace mailhost {

namespace {

QList<Mailbox> ownMailboxes(const HostOptions &options, const CalendarFile &file) {
    if (!options.accounts.isEmpty())
        return options.accounts;
    const Mailbox owner = calendarOwner(file.appointments());
    // Most users have a second account.
    return {owner, {owner.name, u"private."_s + owner.email}};
}

constexpr std::size_t longestUndo = 100; // steps; each holds an appointment twice

QString shownSubject(const QString &summary) {
    return summary.trimmed().isEmpty() ? QObject::tr("Untitled") : summary.trimmed();
}

QString describeChange(const std::optional<Appointment> &before, const Appointment &after) {
    const QString subject = shownSubject(after.summary);
    if (!before && after.recurrenceId.isEmpty())
        return QObject::tr("new appointment “%1”").arg(subject);
    if (before && before->summary != after.summary)
        return QObject::tr("change of “%1”").arg(shownSubject(before->summary));
    if (!before || before->start != after.start || before->end != after.end)
        return QObject::tr("move of “%1”").arg(subject);
    return QObject::tr("change of “%1”").arg(subject);
}

} // namespace

Mailbox calendarOwner(const QList<Appointment> &appointments) {
    struct Count {
        std::pair<int, int> meetings; // number of all, and of those that it organizes
        Mailbox mailbox;
    };
    QMap<QString, Count> counts;
    for (const Appointment &appointment : appointments) {
        if (appointment.organizerEmail.isEmpty())
            continue;
        QSet<QString> seen;
        const Attendee organizer{appointment.organizerName, appointment.organizerEmail, {}};
        for (const Attendee &person : QList<Attendee>{organizer} + appointment.attendees) {
            const QString key = person.email.toLower();
            if (person.type == AttendeeType::Resource || key.isEmpty() || seen.contains(key))
                continue;
            Count &count = counts[key];
            count.meetings.first += 1;
            count.meetings.second += seen.isEmpty() ? 1 : 0;
            seen.insert(key);
            if (count.mailbox.email.isEmpty())
                count.mailbox.email = person.email;
            if (count.mailbox.name.isEmpty())
                count.mailbox.name = person.name;
        }
    }
    Count best{{0, 0}, {u"Ada Example"_s, u"ada@parlo.example"_s}};
    for (const Count &count : std::as_const(counts))
        if (count.meetings > best.meetings)
            best = count;
    if (best.mailbox.name.isEmpty())
        best.mailbox.name = best.mailbox.email.section(u'@', 0, 0);
    return best.mailbox;
}

CalendarSession::CalendarSession(std::unique_ptr<CalendarFile> file, const HostOptions &options,
                                 QString outbox)
    : m_file(std::move(file))
    , m_options(options)
    , m_outbox(std::move(outbox))
    , m_accounts(ownMailboxes(options, *m_file), options.delegating) {}

bool CalendarSession::writeOrGoBack() {
    QString ignored;
    const bool written = m_file->save(&m_lastError);
    if (written)
        m_lastError.clear();
    else if (auto onDisk = CalendarFile::open(m_file->path(), &ignored))
        m_file = std::move(onDisk);
    Q_EMIT changed();
    return written;
}

QString CalendarSession::startIsKept() {
    return tr("Days of this series were changed or deleted, so its start stays. Move single days.");
}

bool CalendarSession::store(const Appointment &appointment) {
    const std::optional<Appointment> former = m_file->find(appointment.uid, appointment.recurrenceId);
    if (former && appointment.recurrenceId.isEmpty() && former->start != appointment.start &&
        m_file->keepsStart(appointment.uid)) {
        m_lastError = startIsKept();
        return false;
    }
    UndoStep step{appointment.uid, m_file->componentsOf(appointment.uid), {}, {}};
    if (!m_file->update(appointment) && m_file->add(appointment).isNull()) {
        m_lastError =
            tr("This day of the series was changed meanwhile. Open it again and repeat the change.");
        return false;
    }
    step.what = describeChange(former, appointment);
    const bool hasRecord =
        !appointment.ucCapabilities.isEmpty() || (former && !former->ucCapabilities.isEmpty());
    remember(std::move(step), hasRecord && appointment.recurrenceId.isEmpty());
    return writeOrGoBack();
}

bool CalendarSession::remove(const QString &uid, const QString &recurrenceId) {
    const std::optional<Appointment> former = m_file->find(uid, recurrenceId);
    const std::optional<Appointment> named = former ? former : m_file->find(uid);
    UndoStep step{uid, m_file->componentsOf(uid), {}, {}};
    if (!m_file->remove(uid, recurrenceId)) {
        m_lastError = tr("The appointment is no longer in the calendar.");
        return false;
    }
    step.what = tr("deletion of “%1”").arg(shownSubject(named ? named->summary : QString()));
    remember(std::move(step), recurrenceId.isEmpty() && former && !former->ucCapabilities.isEmpty());
    return writeOrGoBack();
}

bool CalendarSession::sendMessage(const Appointment &appointment, bool cancellation) {
    const QByteArray text = m_file->itipMessage(appointment.uid, appointment.recurrenceId, cancellation);
    if (writeImipMessage(m_outbox, appointment, text, cancellation, &m_lastError).isNull())
        return false;
    forgetSteps(appointment.uid);
    return true;
}

bool CalendarSession::cancel(Appointment appointment) {
    appointment.sequence += 1;
    appointment.status = u"CANCELLED"_s;
    const bool told = store(appointment) && sendMessage(appointment, true) &&
                      remove(appointment.uid, appointment.recurrenceId);
    if (told)
        forgetSteps(appointment.uid);
    return told;
}

// Called before writing, because writing notifies observers, which then ask for the next undo step. A step
// whose writing fails is dropped later, because the file does not match it. A new change clears the redo
// steps.
void CalendarSession::remember(UndoStep step, bool hasRecord) {
    step.after = m_file->componentsOf(step.uid);
    if (step.after == step.before)
        return;
    m_redo.clear();
    if (hasRecord)
        return forgetSteps(step.uid);
    m_undo.push_back(std::move(step));
    if (m_undo.size() > longestUndo)
        m_undo.erase(m_undo.begin());
}

void CalendarSession::forgetSteps(const QString &uid) {
    const auto ofIt = [&uid](const UndoStep &step) { return step.uid == uid; };
    std::erase_if(m_undo, ofIt);
    std::erase_if(m_redo, ofIt);
}

// The last step whose appointment is still in the state that the step left. Other steps are dropped.
QString CalendarSession::nextOf(std::vector<UndoStep> &steps, QByteArray UndoStep::*expected) const {
    while (!steps.empty() && m_file->componentsOf(steps.back().uid) != steps.back().*expected)
        steps.pop_back();
    return steps.empty() ? QString() : steps.back().what;
}

bool CalendarSession::takeBack(std::vector<UndoStep> &from, std::vector<UndoStep> &to, bool forward) {
    UndoStep step = std::move(from.back());
    from.pop_back();
    m_file->restore(step.uid, forward ? step.after : step.before);
    to.push_back(std::move(step));
    return writeOrGoBack();
}

} // namespace mailhost
