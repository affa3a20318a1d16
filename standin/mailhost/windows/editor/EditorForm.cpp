#include "standin/mailhost/windows/editor/EditorForm.h"

#include "standin/mailhost/model/Addresses.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/windows/ControlNames.h"

namespace mailhost {

namespace {

void name(QWidget *field, const QString &controlName, const QString &accessibleName) {
    field->setObjectName(controlName);
    field->setAccessibleName(accessibleName);
}

QDateTime localDateTime(const QDate &date, const QTime &time, const QTimeZone &zone) {
    return QDateTime(date, QTime(time.hour(), time.minute()), zone);
}

} // namespace

EditorForm::EditorForm(HeaderView *header, const CalendarSession &session)
    : QObject(header)
    , m_header(header)
    , m_session(session)
    , m_allDay(new QCheckBox(tr("All &day"))) {
    buildPeople();
    buildTimes();
}

void EditorForm::buildPeople() {
    m_attendees->setPlaceholderText(tr("Name <address>, …"));
    m_rooms->setPlaceholderText(tr("Room <address>, …"));
    const auto addRow = [this](QWidget *field, const QString &controlName, const QString &label) {
        name(field, controlName, QString(label).remove(u'&').remove(u':'));
        m_header->addRow(label, {field}, false);
    };
    addRow(m_from, controls::fromChooser, tr("&From:"));
    addRow(m_attendees, controls::attendeesField, tr("&Attendees:"));
    addRow(m_rooms, controls::roomsField, tr("&Rooms:"));
    addRow(m_subject, controls::subjectField, tr("S&ubject:"));
    addRow(m_location, controls::locationField, tr("&Location:"));
    for (QLineEdit *field : {m_subject, m_location, m_attendees, m_rooms})
        connect(field, &QLineEdit::textChanged, this, &EditorForm::edited);
    connect(m_from, &QComboBox::currentIndexChanged, this, &EditorForm::edited);
    connect(m_from, &QComboBox::currentIndexChanged, this, [this] { Q_EMIT fromChosen(m_from); });
}

void EditorForm::buildTimes() {
    for (QDateEdit *date : {m_startDate, m_endDate}) {
        date->setCalendarPopup(true);
        date->setDisplayFormat(u"ddd d MMM yyyy"_s);
    }
    for (QTimeEdit *time : {m_startTime, m_endTime}) {
        time->setDisplayFormat(u"HH:mm"_s);
        time->setFixedWidth(74);
    }
    name(m_startDate, controls::startDateField, tr("Start date"));
    name(m_startTime, controls::startTimeField, tr("Start time"));
    name(m_endDate, controls::endDateField, tr("End date"));
    m_endTime->setAccessibleName(tr("End time"));
    name(m_allDay, controls::allDayBox, tr("All day"));
    name(m_zone, controls::timeZoneChooser, tr("Time zone"));
    m_header->addRow(tr("S&tarts:"), {m_startDate, m_startTime, m_allDay}, true);
    m_allDay->setFixedWidth(78);
    auto *filler = new QWidget;
    filler->setFixedWidth(78);
    m_header->addRow(tr("&Ends:"), {m_endDate, m_endTime, filler}, true);
    // Other programs find this label by its text, to see whether the time-zone row is visible.
    m_zoneRow = m_header->addRow(u"Time zone:"_s, {m_zone}, true);
    m_zoneRow->setObjectName(controls::timeZoneRow);
    m_zoneRow->hide();
    connect(m_startDate, &QDateEdit::dateChanged, this, &EditorForm::startChanged);
    connect(m_startTime, &QTimeEdit::timeChanged, this, &EditorForm::startChanged);
    connect(m_endDate, &QDateEdit::dateChanged, this, &EditorForm::edited);
    connect(m_endTime, &QTimeEdit::timeChanged, this, &EditorForm::edited);
    connect(m_zone, &QComboBox::currentIndexChanged, this, &EditorForm::edited);
    connect(m_allDay, &QCheckBox::toggled, this, &EditorForm::enableTimes);
    connect(m_allDay, &QCheckBox::toggled, this, &EditorForm::edited);
}

void EditorForm::show(const Appointment &appointment) {
    const QSignalBlocker nobodyEdits(this);
    m_shown = appointment;
    m_rule = appointment.recurrenceRule;
    m_from->clear();
    for (const auto &account : m_session.accounts().all()) {
        const Mailbox &mailbox = account->mailbox();
        const QString who = mailbox.name + u" <"_s + mailbox.email + u'>';
        m_from->addItem(account->isDelegating() ? tr("%1, on behalf of").arg(who) : who, mailbox.email);
    }
    const EmailAccount *organizer = m_session.accounts().find(appointment.organizerEmail);
    if (!organizer && !appointment.organizerEmail.isEmpty())
        m_from->addItem(appointment.organizerName + u" <"_s + appointment.organizerEmail + u'>',
                        appointment.organizerEmail);
    const QString email = organizer ? organizer->emailAddress() : appointment.organizerEmail;
    m_from->setCurrentIndex(email.isEmpty() ? 0 : std::max(0, m_from->findData(email)));
    m_subject->setText(appointment.summary);
    m_location->setText(appointment.location);
    m_attendees->setText(addressText(appointment.attendees, false));
    m_rooms->setText(addressText(appointment.attendees, true));
    for (QLineEdit *field : {m_subject, m_location, m_attendees, m_rooms})
        field->setCursorPosition(0);
    showZones();
    showTimes();
}

void EditorForm::showZones() {
    m_zone->clear();
    const CalendarTime &start = m_shown.start;
    const QString shown = start.kind == CalendarTime::Kind::Zoned ? start.zoneId
                          : start.kind == CalendarTime::Kind::Utc ? tr("UTC")
                                                                  : tr("The same in every zone");
    m_zone->addItem(shown, QVariant::fromValue(zoneOf(start)));
    const QString system = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    m_zone->addItem(system, QVariant::fromValue(QTimeZone::systemTimeZone()));
    for (const char *id :
         {"America/Los_Angeles", "America/New_York", "America/Sao_Paulo", "Europe/London", "Europe/Berlin",
          "Europe/Helsinki", "Africa/Johannesburg", "Asia/Dubai", "Asia/Kolkata", "Asia/Shanghai",
          "Asia/Tokyo", "Australia/Sydney", "Pacific/Auckland"}) {
        const QTimeZone zone{QByteArray(id)};
        if (zone.isValid() && m_zone->findText(QString::fromLatin1(id)) < 0)
            m_zone->addItem(QString::fromLatin1(id), QVariant::fromValue(zone));
    }
    m_zone->setCurrentIndex(0);
}

void EditorForm::showTimes() {
    const bool allDay = m_shown.start.kind == CalendarTime::Kind::Date;
    const QDateTime start = m_shown.start.value.toTimeZone(zoneOf(m_shown.start));
    QDateTime end = m_shown.end.value.toTimeZone(zoneOf(m_shown.start));
    // The file has the day after the last one, but users expect the last one.
    if (allDay)
        end = std::max(start, end.addDays(-1));
    m_allDay->setChecked(allDay);
    m_startDate->setDate(start.date());
    m_startTime->setTime(start.time());
    m_endDate->setDate(end.date());
    m_endTime->setTime(end.time());
    enableTimes();
    m_lastStart = enteredStart();
}

bool EditorForm::isInOtherZone() const {
    const QDateTime &start = m_shown.start.value;
    const bool hasZone =
        m_shown.start.kind == CalendarTime::Kind::Zoned || m_shown.start.kind == CalendarTime::Kind::Utc;
    return hasZone &&
           start.toTimeZone(zoneOf(m_shown.start)).offsetFromUtc() != start.toLocalTime().offsetFromUtc();
}

QDateTime EditorForm::enteredStart() const {
    return localDateTime(m_startDate->date(), m_allDay->isChecked() ? QTime(0, 0) : m_startTime->time(),
                         chosenZone());
}

QDateTime EditorForm::enteredEnd() const {
    if (m_allDay->isChecked())
        return localDateTime(m_endDate->date().addDays(1), QTime(0, 0), chosenZone());
    return localDateTime(m_endDate->date(), m_endTime->time(), chosenZone());
}

// Moves the end together with the start, so that a moved appointment keeps its length.
void EditorForm::startChanged() {
    const QDateTime start = enteredStart();
    const qint64 moved = m_lastStart.secsTo(start);
    m_lastStart = start;
    const QDateTime end = localDateTime(m_endDate->date(), m_endTime->time(), chosenZone()).addSecs(moved);
    m_endDate->setDate(end.date());
    m_endTime->setTime(end.time());
    Q_EMIT edited();
}

CalendarTime EditorForm::timeFor(const QDateTime &entered, const CalendarTime &before) const {
    if (m_allDay->isChecked()) {
        const QDateTime day(entered.date(), QTime(0, 0));
        if (before.kind == CalendarTime::Kind::Date && before.value.date() == day.date())
            return before;
        return {CalendarTime::Kind::Date, day, {}};
    }
    const bool sameZone = m_zone->currentIndex() == 0;
    // Compares minutes: the form does not show seconds, which are kept while the minute stays the same.
    if (sameZone && before.kind != CalendarTime::Kind::Date &&
        before.value.toUTC().addSecs(-before.value.time().second()) == entered.toUTC())
        return before;
    if (sameZone && m_shown.start.kind == CalendarTime::Kind::Utc)
        return {CalendarTime::Kind::Utc, entered.toUTC(), {}};
    if (sameZone && m_shown.start.kind == CalendarTime::Kind::Floating)
        return {CalendarTime::Kind::Floating, QDateTime(entered.date(), entered.time()), {}};
    const QString zone = sameZone && m_shown.start.kind == CalendarTime::Kind::Zoned
                             ? m_shown.start.zoneId
                             : QString::fromUtf8(chosenZone().id());
    return {CalendarTime::Kind::Zoned, entered, zone};
}

Appointment EditorForm::values() const {
    Appointment values = m_shown;
    for (const auto &[field, text] :
         {std::pair(m_subject, &values.summary), std::pair(m_location, &values.location)})
        if (field->text() != *text) // a null text stays null
            *text = field->text();
    values.recurrenceRule = m_rule;
    values.start = timeFor(enteredStart(), m_shown.start);
    values.end = timeFor(enteredEnd(), m_shown.end);
    const bool samePeople = m_attendees->text() == addressText(m_shown.attendees, false) &&
                            m_rooms->text() == addressText(m_shown.attendees, true);
    if (!samePeople)
        values.attendees = parseAddresses(m_attendees->text(), false, m_shown.attendees) +
                           parseAddresses(m_rooms->text(), true, m_shown.attendees);
    const EmailAccount *account = currentAccount();
    const bool chosen =
        account && account->emailAddress().compare(m_shown.organizerEmail, Qt::CaseInsensitive) != 0;
    if (chosen && !values.attendees.isEmpty()) {
        values.organizerName = account->mailbox().name;
        values.organizerEmail = account->mailbox().email;
    }
    return values;
}

void EditorForm::setRecurrenceRule(const QString &rule) {
    if (m_rule == rule)
        return;
    m_rule = rule;
    Q_EMIT edited();
}

void EditorForm::setEditable(bool editable, bool startToo) {
    for (QLineEdit *field : {m_subject, m_location, m_attendees, m_rooms})
        field->setReadOnly(!editable);
    m_from->setEnabled(editable);
    m_endDate->setEnabled(editable);
    for (QWidget *field : std::initializer_list<QWidget *>{m_startDate, m_allDay, m_zone})
        field->setEnabled(editable && startToo);
    enableTimes();
}

void EditorForm::enableTimes() {
    m_startTime->setEnabled(m_startDate->isEnabled() && !m_allDay->isChecked());
    m_endTime->setEnabled(m_endDate->isEnabled() && !m_allDay->isChecked());
}

} // namespace mailhost
