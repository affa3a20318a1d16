#include "standin/mailhost/model/Addresses.h"

#include "platform/Literals.h"

#include <QStringList>

namespace mailhost {

namespace {

bool isRoom(const Attendee &attendee) {
    return attendee.type == AttendeeType::Resource;
}

// Separators inside quotes and angle brackets do not count.
QStringList entriesOf(const QString &text) {
    QStringList entries;
    QString entry;
    bool quoted = false, bracketed = false;
    for (const QChar c : text) {
        if (c == u'"')
            quoted = !quoted;
        else if (c == u'<' || c == u'>')
            bracketed = c == u'<';
        if (!quoted && !bracketed && (c == u',' || c == u';' || c == u'\n')) {
            entries.append(entry.trimmed());
            entry.clear();
        } else {
            entry += c;
        }
    }
    entries.append(entry.trimmed());
    entries.removeAll(QString());
    return entries;
}

Attendee parsed(const QString &entry) {
    const qsizetype open = entry.lastIndexOf(u'<');
    const qsizetype close = entry.indexOf(u'>', open);
    if (open < 0 || close < open)
        return entry.contains(u'@') ? Attendee{entry, entry, {}} : Attendee{entry, {}, {}};
    QString name = entry.left(open).trimmed();
    if (name.size() >= 2 && name.startsWith(u'"') && name.endsWith(u'"'))
        name = name.mid(1, name.size() - 2);
    const QString email = entry.mid(open + 1, close - open - 1).trimmed();
    return {name.isEmpty() ? email : name, email, {}};
}

} // namespace

QString addressText(const QList<Attendee> &attendees, bool rooms) {
    QStringList entries;
    for (const Attendee &attendee : attendees) {
        if (isRoom(attendee) != rooms)
            continue;
        QString name = attendee.name;
        if (name.contains(u',') || name.contains(u';'))
            name = u'"' + name + u'"';
        const bool bare = name.isEmpty() || name == attendee.email;
        entries.append(attendee.email.isEmpty() ? name
                       : bare                   ? attendee.email
                                                : name + u" <"_s + attendee.email + u'>');
    }
    return entries.join(u", "_s);
}

QList<Attendee> parseAddresses(const QString &text, bool rooms, const QList<Attendee> &before) {
    QList<Attendee> attendees;
    for (const QString &entry : entriesOf(text)) {
        Attendee attendee = parsed(entry);
        attendee.type = rooms ? AttendeeType::Resource : AttendeeType::Required;
        for (const Attendee &known : before) {
            if (isRoom(known) != rooms || known.email.compare(attendee.email, Qt::CaseInsensitive) != 0)
                continue;
            attendee.type = known.type;
            if (attendee.name == attendee.email && known.name.isEmpty())
                attendee.name = known.name;
            break;
        }
        attendees.append(attendee);
    }
    return attendees;
}

QStringList incompleteAddresses(const QList<Attendee> &attendees) {
    QStringList incomplete;
    for (const Attendee &attendee : attendees) {
        const qsizetype at = attendee.email.indexOf(u'@');
        if (at < 1 || at == attendee.email.size() - 1)
            incomplete.append(attendee.name);
    }
    return incomplete;
}

} // namespace mailhost
