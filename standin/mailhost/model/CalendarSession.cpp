#include "standin/mailhost/model/CalendarSession.h"

#include <QDir>
#include <QSet>

namespace mailhost {

namespace {

QList<Mailbox> ownMailboxes(const HostOptions &options, const CalendarFile &file) {
    if (!options.accounts.isEmpty())
        return options.accounts;
    const Mailbox owner = calendarOwner(file.appointments());
    // A second account of the same person, as most people have one.
    return {owner, {owner.name, u"private."_qs + owner.email}};
}

} // namespace

Mailbox calendarOwner(const QList<Appointment> &appointments) {
    struct Count {
        int meetings = 0;
        int organized = 0;
        Mailbox mailbox;
    };
    QMap<QString, Count> counts;
    const auto note = [&counts](const QString &name, const QString &email, bool organizer) {
        Count &count = counts[email.toLower()];
        count.meetings += 1;
        count.organized += organizer ? 1 : 0;
        if (count.mailbox.email.isEmpty() || (count.mailbox.name.isEmpty() && !name.isEmpty()))
            count.mailbox = {name, count.mailbox.email.isEmpty() ? email : count.mailbox.email};
    };
    for (const Appointment &appointment : appointments) {
        if (appointment.organizerEmail.isEmpty())
            continue;
        QSet<QString> seen{appointment.organizerEmail.toLower()};
        note(appointment.organizerName, appointment.organizerEmail, true);
        for (const Attendee &attendee : appointment.attendees) {
            const QString key = attendee.email.toLower();
            if (attendee.type == AttendeeType::Resource || key.isEmpty() || seen.contains(key))
                continue;
            seen.insert(key);
            note(attendee.name, attendee.email, false);
        }
    }
    Count best{0, 0, {u"Ada Example"_qs, u"ada@parlo.example"_qs}};
    for (const Count &count : std::as_const(counts))
        if (std::pair(count.meetings, count.organized) > std::pair(best.meetings, best.organized))
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
    , m_accounts(ownMailboxes(options, *m_file), {{u"Kim Principal"_qs, u"kim@parlo.example"_qs}}) {}

bool CalendarSession::isOwner(const Appointment &appointment) const {
    return appointment.organizerEmail.isEmpty() || m_accounts.find(appointment.organizerEmail);
}

bool CalendarSession::writeOrGoBack() {
    if (m_file->save(&m_lastError)) {
        m_lastError.clear();
        Q_EMIT changed();
        return true;
    }
    QString ignored;
    if (auto onDisk = CalendarFile::open(m_file->path(), &ignored))
        m_file = std::move(onDisk);
    Q_EMIT changed();
    return false;
}

bool CalendarSession::store(const Appointment &appointment) {
    if (!m_file->update(appointment))
        m_file->add(appointment);
    return writeOrGoBack();
}

bool CalendarSession::remove(const QString &uid, const QString &recurrenceId) {
    if (!m_file->remove(uid, recurrenceId)) {
        m_lastError = tr("The appointment is no longer in the calendar.");
        return false;
    }
    return writeOrGoBack();
}

bool CalendarSession::sendMessage(const Appointment &appointment, bool cancellation) {
    QDir().mkpath(m_outbox);
    const QString path = writeImipMessage(m_outbox, *m_file, appointment, cancellation, &m_lastError);
    if (path.isNull())
        return false;
    m_lastMessage = path;
    return true;
}

} // namespace mailhost
