#include "standin/mailhost/model/CalendarEvent.h"

#include "standin/mailhost/model/Bind.h"

namespace mailhost {

ErrorPresenter &errorPresenter() {
    static auto *presenter = new ErrorPresenter;
    return *presenter;
}

EventAttendee::EventAttendee(Attendee attendee)
    : rt::Object(rt::classNamed(u"ECCalendarEventAttendee"_s))
    , m_attendee(std::move(attendee)) {}

Recurrence::Recurrence(QString rule)
    : rt::Object(rt::classNamed(u"ECRecurrence"_s))
    , m_rule(std::move(rule)) {}

rt::Value attendeeValues(const QList<Attendee> &attendees) {
    QVariantList list;
    for (const Attendee &attendee : attendees)
        list.append(rt::fromObject(rt::temporary(std::make_unique<EventAttendee>(attendee))));
    return list;
}

rt::Value recurrenceValue(const QString &rule) {
    return rule.isEmpty() ? rt::Value() : rt::fromObject(rt::temporary(std::make_unique<Recurrence>(rule)));
}

CalendarEvent::CalendarEvent(CalendarSession *session, const QString &uid, const QString &recurrenceId,
                             bool isOccurrence)
    : rt::Object(rt::classNamed(u"ECCalendarEvent"_s))
    , m_session(session)
    , m_uid(uid)
    , m_recurrenceId(recurrenceId)
    , m_isOccurrence(isOccurrence) {
    m_draft.uid = uid;
    m_draft.recurrenceId = recurrenceId;
}

CalendarEvent::CalendarEvent(CalendarSession *session, Appointment draft)
    : CalendarEvent(rt::classNamed(u"ECCalendarEvent"_s), session, std::move(draft)) {}

CalendarEvent::CalendarEvent(rt::Class *isa, CalendarSession *session, Appointment draft)
    : rt::Object(isa)
    , m_draft(std::move(draft))
    , m_session(session)
    , m_uid(m_draft.uid)
    , m_recurrenceId(m_draft.recurrenceId) {}

Appointment CalendarEvent::stored() const {
    if (!m_session)
        return m_draft;
    Appointment found = m_session->file().find(m_uid, m_recurrenceId).value_or(m_draft);
    if (m_isOccurrence && m_occurrence.start.isValid()) {
        found.start.value = m_occurrence.start.toTimeZone(zoneOf(found.start));
        found.end.value = m_occurrence.end.toTimeZone(zoneOf(found.end));
    }
    return found;
}

bool CalendarEvent::isSame(const CalendarEvent &other) const {
    return m_session == other.m_session && m_uid == other.m_uid && m_recurrenceId == other.m_recurrenceId &&
           m_isOccurrence == other.m_isOccurrence && instanceId() == other.instanceId();
}

std::unique_ptr<CalendarEvent> CalendarEvent::copy() const {
    auto other = std::make_unique<CalendarEvent>(m_session.data(), m_uid, m_recurrenceId, m_isOccurrence);
    other->m_draft = m_draft;
    other->m_occurrence = m_occurrence;
    return other;
}

Appointment CalendarEvent::changeable() const {
    Appointment changed = appointment();
    if (m_isOccurrence) {
        changed.recurrenceId = m_occurrence.instanceId;
        changed.recurrenceRule.clear();
    }
    return changed;
}

void CalendarEvent::followStored() {
    if (!m_isOccurrence || !m_session || !m_session->file().contains(m_uid, m_occurrence.instanceId))
        return;
    m_isOccurrence = false;
    m_recurrenceId = m_occurrence.instanceId;
}

Appointment CalendarEvent::appointment() const {
    Appointment appointment = stored();
    for (const auto &[field, value] : m_set)
        appointment.*field = value;
    return appointment;
}

bool CalendarEvent::hasSetCapabilities() const {
    return std::ranges::any_of(m_set,
                               [](const auto &one) { return one.first == &Appointment::ucCapabilities; });
}

void CalendarEvent::set(Field field, const QString &value) {
    m_set.append({field, value});
    if (m_handler)
        m_handler(field);
}

EmailAccount *CalendarEvent::account() const {
    if (!m_session)
        return nullptr;
    EmailAccount *organizer = m_session->accounts().find(appointment().organizerEmail);
    return organizer ? organizer : m_session->accounts().defaultAccount();
}

double CalendarEvent::duration() const {
    const Appointment a = appointment();
    return double(a.start.value.secsTo(a.end.value));
}

int CalendarEvent::recurrenceType() const {
    static const QStringList names{u"DAILY"_s, u"WEEKLY"_s, u"MONTHLY"_s, u"YEARLY"_s};
    const QString rule = appointment().recurrenceRule.toUpper();
    for (qsizetype i = 0; i < names.size(); ++i)
        if (rule.contains(u"FREQ="_s + names[i]))
            return int(i) + 1;
    return 0;
}

rt::Value CalendarEvent::organizer() const {
    const Appointment a = appointment();
    if (a.organizerEmail.isEmpty())
        return {};
    return rt::fromObject(
        rt::temporary(std::make_unique<EmailAddress>(Mailbox{a.organizerName, a.organizerEmail})));
}

rt::Object *CalendarEvent::seriesMasterRecord() const {
    if ((!m_isOccurrence && m_recurrenceId.isEmpty()) || !m_session)
        return nullptr;
    return rt::temporary(std::make_unique<CalendarEvent>(m_session.data(), m_uid, QString(), false));
}

QString CalendarEvent::exportAsICS() const {
    return m_session ? QString::fromUtf8(m_session->file().itipMessage(m_uid, m_recurrenceId, false))
                     : QString();
}

bool CalendarEvent::deleteEventNow() {
    // A day of a series without its own identifier cannot be distinguished from the whole series.
    if (!m_session || (m_isOccurrence && m_occurrence.instanceId.isEmpty()))
        return false;
    if (m_session->remove(m_uid, instanceId()))
        return true;
    if (errorPresenter())
        errorPresenter()(nullptr, m_session->lastError());
    return false;
}

void CalendarEvent::cancelMeetingInWindow(QWidget *window) {
    if (!m_session || (m_isOccurrence && m_occurrence.instanceId.isEmpty()))
        return;
    if (!m_session->cancel(changeable()) && errorPresenter())
        errorPresenter()(window, m_session->lastError());
}

MutableCalendarEvent::MutableCalendarEvent(CalendarSession *session, Appointment appointment)
    : CalendarEvent(rt::classNamed(u"ECMutableCalendarEvent"_s), session, std::move(appointment)) {}

qint64 MutableCalendarEvent::saveRecord() {
    return session() && session()->store(m_draft) ? 0 : 1;
}

void defineEventClasses() {
    addMethods(rt::defineClass(u"ECCalendarEventAttendee"_s),
               {{"name", bind<&EventAttendee::name>, "@@:"},
                {"emailAddress", bind<&EventAttendee::emailAddress>, "@@:"},
                {"attendeeType", bind<&EventAttendee::attendeeType>, "i@:"}});
    addMethods(rt::defineClass(u"ECRecurrence"_s), {{"rule", bind<&Recurrence::rule>, "@@:"}});
    rt::Class *event = rt::defineClass(u"ECCalendarEvent"_s);
    addMethods(event,
               {{"summary", bind<&CalendarEvent::summary>, "@@:"},
                {"location", bind<&CalendarEvent::location>, "@@:"},
                {"startTime", bind<&CalendarEvent::startTime>, "@@:"},
                {"endTime", bind<&CalendarEvent::endTime>, "@@:"},
                {"recurrence", bind<&CalendarEvent::recurrence>, "@@:"},
                {"body", bind<&CalendarEvent::body>, "@@:"},
                {"displayReadyBody", bind<&CalendarEvent::body>, "@@:"},
                {"attendeeList", bind<&CalendarEvent::attendeeList>, "@@:"},
                {"isOccurrence", bind<&CalendarEvent::isOccurrence>, "B@:"},
                {"isModifiedException", bind<&CalendarEvent::isModifiedException>, "B@:"},
                {"isOwner", bind<&CalendarEvent::isOwner>, "B@:"},
                {"isOrganizer", bind<&CalendarEvent::isOwner>, "B@:"},
                {"account", bind<&CalendarEvent::account>, "@@:"},
                {"UUID", bind<&CalendarEvent::UUID>, "@@:"},
                {"isRecurring", bind<&CalendarEvent::isRecurring>, "B@:"},
                {"duration", bind<&CalendarEvent::duration>, "d@:"},
                {"recurrenceType", bind<&CalendarEvent::recurrenceType>, "i@:"},
                {"timeZone", bind<&CalendarEvent::timeZone>, "@@:"},
                {"isMeeting", bind<&CalendarEvent::isMeeting>, "B@:"},
                {"organizer", bind<&CalendarEvent::organizer>, "@@:"},
                {"seriesMasterRecord", bind<&CalendarEvent::seriesMasterRecord>, "@@:"},
                {"exchangeID", bind<&CalendarEvent::exchangeID>, "@@:"},
                {"exportAsICS", bind<&CalendarEvent::exportAsICS>, "@@:"},
                {"olmOnlineMeetingInternalLink", bind<&CalendarEvent::olmOnlineMeetingInternalLink>, "@@:"},
                {"olmUCCapabilities", bind<&CalendarEvent::olmUCCapabilities>, "@@:"},
                {"setSummary:", bind<&CalendarEvent::setSummary>, "v@:@"},
                {"setLocation:", bind<&CalendarEvent::setLocation>, "v@:@"},
                {"setOlmUCCapabilities:", bind<&CalendarEvent::setOlmUCCapabilities>, "v@:@"},
                {"deleteEventNow", bind<&CalendarEvent::deleteEventNow>, "B@:"},
                {"cancelMeetingInWindow:", bind<&CalendarEvent::cancelMeetingInWindow>, "v@:@"}});
    // The class has its own setters, so that a hook can exchange them without those of the event.
    addMethods(rt::defineClass(u"ECMutableCalendarEvent"_s, event),
               {{"setSummary:", bind<&CalendarEvent::setSummary>, "v@:@"},
                {"setLocation:", bind<&CalendarEvent::setLocation>, "v@:@"},
                {"setOlmUCCapabilities:", bind<&CalendarEvent::setOlmUCCapabilities>, "v@:@"},
                {"setBody:", bind<&MutableCalendarEvent::setBody>, "v@:@"},
                {"saveRecord", bind<&MutableCalendarEvent::saveRecord>, "l@:"}});
}

} // namespace mailhost
