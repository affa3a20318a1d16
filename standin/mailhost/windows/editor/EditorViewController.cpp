#include "standin/mailhost/windows/editor/EditorViewController.h"
#include "standin/mailhost/store/ConferenceLink.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Addresses.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/windows/editor/RecurrenceSheet.h"

#include <QLineEdit>
#include <QScopedValueRollback>
#include <utility>

namespace mailhost {

namespace {

const QString keyPrefix = u"content."_s;

void noteText(QVariantMap &changes, const char *name, const QString &now, const QString &before) {
    if (now != before)
        changes.insert(keyPrefix + QString::fromLatin1(name),
                       now.isEmpty() ? rt::nullMarker() : rt::Value(now));
}

} // namespace

EditorViewController::EditorViewController(std::unique_ptr<CalendarEvent> event, QWidget *view,
                                           EditorForm *form, BodyEdit *body)
    : rt::Object(rt::classNamed(u"ERCalendarEventEditorViewController"_s))
    , m_event(std::move(event))
    , m_view(view)
    , m_form(form)
    , m_body(body) {
    if (isNewerGeneration(m_event->session()->options().hostVersion))
        m_wordEditor = std::make_unique<BodyObject>(u"OLWordMailEditor"_s, body);
    connect(form, &EditorForm::edited, this, &EditorViewController::stateChanged);
    connect(body, &BodyEdit::edited, this, &EditorViewController::stateChanged);
    connect(m_event->session(), &CalendarSession::changed, this, &EditorViewController::followCalendar);
    connect(form, &EditorForm::fromChosen, this,
            [this](QWidget *chooser) { rt::send(this, "fromFieldModified:", rt::fromWidget(chooser)); });
    showEvent();
}

void EditorViewController::showEvent() {
    m_event->setHandler([this](CalendarEvent::Field field) { eventWasSet(field); });
    m_shown = m_event->stored();
    showForm(m_shown);
    m_body->load(m_shown.bodyHtml);
    m_body->setBodyReadOnly(!canEdit());
}

// The appointment may be moved on the calendar or changed by another program while it is open here. Fields
// that the user has not touched are updated; the user's input stays.
void EditorViewController::followCalendar() {
    const Appointment now = m_event->stored();
    if (m_storing || !m_event->isStored())
        return;
    const Appointment entered = m_form->values();
    const Appointment shown = std::exchange(m_shown, now);
    const bool bodyUntouched = m_body->bodyHtml() == asHtmlDocument(shown.bodyHtml);
    Appointment merged = now;
    const auto keep = [&](auto Appointment::*field) {
        if (entered.*field != shown.*field)
            merged.*field = entered.*field;
    };
    keep(&Appointment::summary);
    keep(&Appointment::location);
    // After the first changed day of a series its start stays, and so does the end that moved with it.
    if (entered.start == shown.start || !keepsStart()) {
        keep(&Appointment::start);
        keep(&Appointment::end);
    }
    keep(&Appointment::attendees);
    keep(&Appointment::recurrenceRule);
    keep(&Appointment::organizerEmail);
    keep(&Appointment::organizerName);
    showForm(merged);
    if (bodyUntouched && now.bodyHtml != shown.bodyHtml)
        m_body->load(now.bodyHtml);
    Q_EMIT stateChanged();
}

void EditorViewController::showForm(const Appointment &appointment) {
    m_form->show(appointment);
    showEditable();
}

void EditorViewController::showEditable() {
    m_form->setEditable(canEdit() && !m_cancelMode, !keepsStart());
}

QString EditorViewController::joinLink() const {
    return linkToOpen(m_form->values().location, olmUCCapabilities(), m_event->conferenceLink());
}

bool EditorViewController::keepsStart() const {
    return !isOccurrenceOrException() && m_event->session() &&
           m_event->session()->file().keepsStart(m_event->UUID());
}

// Shows a value that other code set on the event. Other fields keep what the user has typed since they were
// set.
void EditorViewController::eventWasSet(CalendarEvent::Field field) {
    if (field == &Appointment::summary)
        m_form->subjectField()->setText(m_event->summary());
    if (field == &Appointment::location)
        m_form->locationField()->setText(m_event->location());
    Q_EMIT stateChanged();
}

QVariantMap EditorViewController::uncommittedChanges() const {
    const Appointment before = m_event->stored();
    const Appointment now = m_form->values();
    QVariantMap changes;
    noteText(changes, "summary", now.summary, before.summary);
    noteText(changes, "location", now.location, before.location);
    if (now.start != before.start)
        changes.insert(keyPrefix + u"startTime"_s, dateValue(now.start));
    if (now.end != before.end)
        changes.insert(keyPrefix + u"endTime"_s, dateValue(now.end));
    if (now.recurrenceRule != before.recurrenceRule)
        changes.insert(keyPrefix + u"recurrence"_s,
                       now.recurrenceRule.isEmpty() ? rt::nullMarker() : recurrenceValue(now.recurrenceRule));
    if (now.attendees != before.attendees)
        changes.insert(keyPrefix + u"attendeeList"_s,
                       now.attendees.isEmpty() ? rt::nullMarker() : attendeeValues(now.attendees));
    if (!before.organizerEmail.isEmpty() && now.organizerEmail != before.organizerEmail)
        changes.insert(keyPrefix + u"organizer"_s, now.organizerEmail);
    if (const QString html = m_body->bodyHtml(); html != asHtmlDocument(before.bodyHtml))
        changes.insert(keyPrefix + u"body"_s, html);
    if (m_capabilities || m_event->hasSetCapabilities())
        noteText(changes, "olmUCCapabilities", olmUCCapabilities(), before.ucCapabilities);
    return changes;
}

void EditorViewController::setIsDirty(bool dirty) {
    m_forcedDirty = dirty;
    Q_EMIT stateChanged();
}

bool EditorViewController::isDelegating() const {
    const EmailAccount *account = m_form->currentAccount();
    return account && account->isDelegating();
}

void EditorViewController::setIsCancelMode(bool cancelMode) {
    m_cancelMode = cancelMode;
    showEditable();
    Q_EMIT stateChanged();
}

void EditorViewController::setOlmUCCapabilities(const QString &text) {
    m_capabilities = text;
    contentDidChange();
}

bool EditorViewController::store(int sequenceStep) {
    Appointment appointment = m_form->values();
    const Appointment set = m_event->changeable();
    appointment.ucCapabilities = m_capabilities ? *m_capabilities : set.ucCapabilities;
    appointment.uid = set.uid;
    appointment.recurrenceId = set.recurrenceId;
    if (isOccurrenceOrException())
        appointment.recurrenceRule.clear();
    const QString html = m_body->bodyHtml();
    const bool bodyChanged = html != asHtmlDocument(set.bodyHtml);
    appointment.bodyHtml = bodyChanged ? html : set.bodyHtml;
    appointment.sequence = set.sequence + sequenceStep;
    MutableCalendarEvent record(m_event->session(), appointment);
    const QScopedValueRollback storing(m_storing, true);
    if (rt::integerValue(rt::send(&record, "saveRecord")) != 0) {
        Q_EMIT failed(m_event->session()->lastError());
        return false;
    }
    m_event->clearSet();
    m_capabilities.reset();
    m_event->followStored();
    m_forcedDirty = false;
    m_shown = m_event->stored();
    showForm(m_shown);
    if (m_body->bodyHtml() != asHtmlDocument(m_shown.bodyHtml))
        m_body->load(m_shown.bodyHtml);
    Q_EMIT stateChanged();
    return true;
}

bool EditorViewController::save() {
    if (canEdit() && m_event->isOccurrence() && !isDirty())
        return true; // an unchanged occurrence still belongs to its series
    return canEdit() && store(0);
}

int EditorViewController::saveAndCloseWindow(bool close) {
    if (!save())
        return -1;
    if (close)
        Q_EMIT closeWanted();
    return 0;
}

void EditorViewController::sendMeetingPostValidate() {
    if (m_cancelMode)
        return sendCancellation();
    if (!canEdit() || !store(1))
        return;
    if (!m_event->session()->sendMessage(m_event->stored(), false))
        return Q_EMIT failed(m_event->session()->lastError());
    Q_EMIT closeWanted();
}

void EditorViewController::sendCancellation() {
    if (!store(0))
        return;
    if (!m_event->session()->cancel(m_event->stored()))
        return Q_EMIT failed(m_event->session()->lastError());
    Q_EMIT closeWanted();
}

void EditorViewController::attachBodyEditor() {
    if (m_wordEditor)
        rt::send(this, "hostWordMailEditor:", rt::fromObject(m_wordEditor.get()));
}

void EditorViewController::requestSend() {
    const Appointment appointment = m_form->values();
    const QStringList incomplete = incompleteAddresses(appointment.attendees);
    if (!incomplete.isEmpty())
        return Q_EMIT failed(tr("There is no mail address for %1. Enter it as Name <name@example.com>.")
                                 .arg(incomplete.join(u", "_s)));
    if (appointment.attendees.isEmpty())
        return Q_EMIT failed(tr("Nobody is invited yet. Enter who should come, then send."));
    if (appointment.end.value < appointment.start.value)
        return Q_EMIT failed(tr("The meeting ends before it starts. Change one of the times, then send."));
    const auto send = [self = QPointer(this)] {
        if (self)
            rt::send(self, "sendMeetingPostValidate");
    };
    if (!appointment.summary.trimmed().isEmpty() || m_cancelMode)
        return send();
    Q_EMIT sendDoubted(tr("The meeting has no subject."), send);
}

void EditorViewController::openRecurrenceSheet() {
    if (m_sheet || !canEdit() || isOccurrenceOrException())
        return;
    const Appointment appointment = m_form->values();
    m_sheet = new RecurrenceSheet(appointment.recurrenceRule, appointment.start.value, m_view->window());
    platform::beginSheet(m_sheet, m_view->window(), [self = QPointer(this)](int result) {
        if (!self || !self->m_sheet)
            return;
        QDialog *sheet = self->m_sheet;
        self->m_sheet.clear();
        sheet->deleteLater();
        rt::send(self, "switchToRecurrenceDidEnd:returnCode:contextInfo:", rt::fromWidget(sheet), result,
                 rt::Value());
    });
}

void EditorViewController::switchToRecurrenceDidEnd(const rt::Value &sheet, int returnCode,
                                                    const rt::Value &) {
    const auto *dialog = qobject_cast<RecurrenceSheet *>(rt::widgetValue(sheet));
    if (dialog && returnCode == QDialog::Accepted)
        m_form->setRecurrenceRule(dialog->rule());
}

void EditorViewController::switchToSeries() {
    if (!isOccurrenceOrException())
        return;
    m_formerEvents.push_back(std::move(m_event));
    CalendarEvent *former = m_formerEvents.back().get();
    former->setHandler({});
    m_event = std::make_unique<CalendarEvent>(former->session(), former->UUID(), QString(), false);
    showEvent();
    Q_EMIT stateChanged();
}

void defineEditorViewControllerClass() {
    using C = EditorViewController;
    addMethods(
        rt::defineClass(u"ERCalendarEventEditorViewController"_s),
        {{"content", bind<&C::content>, "@@:"},
         {"uncommittedChanges", bind<&C::uncommittedChanges>, "@@:"},
         {"currentEmailAccount", bind<&C::currentEmailAccount>, "@@:"},
         {"attendeeList", bind<&C::attendeeList>, "@@:"},
         {"meetingOrganizer", bind<&C::meetingOrganizer>, "@@:"},
         {"hasMultipleAccounts", bind<&C::hasMultipleAccounts>, "B@:"},
         {"isDelegating", bind<&C::isDelegating>, "B@:"},
         {"isCancelMode", bind<&C::isCancelMode>, "B@:"},
         {"setIsCancelMode:", bind<&C::setIsCancelMode>, "v@:B"},
         {"isOccurrenceOrException", bind<&C::isOccurrenceOrException>, "B@:"},
         {"isDirty", bind<&C::isDirty>, "B@:"},
         {"setIsDirty:", bind<&C::setIsDirty>, "v@:B"},
         {"olmUCCapabilities", bind<&C::olmUCCapabilities>, "@@:"},
         {"setOlmUCCapabilities:", bind<&C::setOlmUCCapabilities>, "v@:@"},
         {"locationTextField", bind<&C::locationTextField>, "@@:"},
         {"reloadComposeView", bind<&C::reloadComposeView>, "v@:"},
         {"contentDidChange", bind<&C::contentDidChange>, "v@:"},
         {"focusOnBody", bind<&C::focusOnBody>, "v@:"},
         {"view", bind<&C::view>, "@@:"},
         {"saveAndClose:", bind<&C::saveAndClose>, "v@:@"},
         {"saveAndCloseWindow:", bind<&C::saveAndCloseWindow>, "i@:B"},
         {"save", bind<&C::save>, "B@:"},
         {"save:", bind<&C::saveFrom>, "v@:@"},
         {"sendMeetingPostValidate", bind<&C::sendMeetingPostValidate>, "v@:"},
         {"fromFieldModified:", bind<&C::fromFieldModified>, "v@:@"},
         {"switchToRecurrenceDidEnd:returnCode:contextInfo:", bind<&C::switchToRecurrenceDidEnd>, "v@:@i^v"},
         {"saveAndCloseWindow:andReturnError:", bind<&C::saveAndCloseWindowAndReturnError>, "i@:B@"},
         {"hostWordMailEditor:", bind<&C::hostWordMailEditor>, "v@:@"}});
}

} // namespace mailhost
