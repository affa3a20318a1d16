#include "standin/mailhost/windows/main/AppointmentCommands.h"

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/store/ConferenceLink.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/mailhost/windows/grid/EventTileView.h"

#include <chrono>

namespace mailhost {

namespace {

using namespace std::chrono_literals;
constexpr qint64 secondsPerDay = std::chrono::seconds(24h).count();
constexpr qint64 shortestAppointment = std::chrono::seconds(15min).count();

// A date object as a host's own view makes it: in the appointment's zone.
rt::Value dateFor(const CalendarEvent &event, const QDateTime &instant) {
    return rt::fromObject(rt::temporary(std::make_unique<CalendarDate>(instant, event.timeZone())));
}

QString subjectOf(const CalendarEvent &event) {
    const QString subject = event.summary().trimmed();
    return subject.isEmpty() ? QObject::tr("Untitled") : subject;
}

} // namespace

AppointmentCommands::AppointmentCommands(MainWindow *window, GridViewWrapper *grid)
    : m_window(window)
    , m_grid(grid) {}

CalendarEvent *AppointmentCommands::selectedEvent() const {
    return dynamic_cast<CalendarEvent *>(m_grid->controller()->selectedEvent());
}

void AppointmentCommands::openSelected() {
    if (auto selected = m_grid->controller()->newEventForSelection())
        showEditorFor(std::move(selected));
}

void AppointmentCommands::openSeries() {
    const CalendarEvent *selected = selectedEvent();
    if (selected)
        showEditorFor(std::make_unique<CalendarEvent>(session(), selected->UUID(), QString(), false));
}

QString AppointmentCommands::joinLink() const {
    const CalendarEvent *selected = selectedEvent();
    if (!selected)
        return {};
    const Appointment appointment = selected->appointment();
    return linkToOpen(appointment.location, appointment.ucCapabilities, selected->conferenceLink());
}

void AppointmentCommands::renameTo(const QString &subject) {
    if (CalendarEvent *selected = selectedEvent())
        rt::send(m_grid, "subjectChanged:forEvent:andTileView:", subject, rt::fromObject(selected),
                 rt::fromObject(m_window->calendar()->selectedTile()));
}

void AppointmentCommands::moveTo(const QDateTime &start) {
    const CalendarEvent *selected = selectedEvent();
    if (selected)
        rt::send(m_grid, "performDragFrom:to:forDate:inProgress:",
                 rt::fromObject(m_window->calendar()->selectedTile()), rt::fromObject(m_grid->controller()),
                 dateFor(*selected, start), false);
}

void AppointmentCommands::resizeTo(const QDateTime &start, qint64 seconds) {
    CalendarEvent *selected = selectedEvent();
    if (selected)
        rt::send(m_grid,
                 "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
                 rt::fromObject(selected), rt::fromObject(m_window->calendar()->selectedTile()),
                 dateFor(*selected, start), double(seconds), false, false, false);
}

void AppointmentCommands::changeBy(int startSeconds, int endSeconds) {
    const CalendarEvent *selected = selectedEvent();
    if (!selected)
        return;
    const Appointment before = selected->appointment();
    const bool allDay = before.start.kind == CalendarTime::Kind::Date;
    const auto moved = [allDay](const QDateTime &time, int seconds) {
        return allDay ? time.addDays((seconds > 0) - (seconds < 0)) : time.addSecs(seconds);
    };
    const QDateTime start = moved(before.start.value, startSeconds);
    const qint64 length = start.secsTo(moved(before.end.value, endSeconds));
    if (startSeconds == endSeconds)
        moveTo(start);
    else if (length >= (allDay ? secondsPerDay / 2 : shortestAppointment))
        resizeTo(start, length);
}

// Keeps the clock time, also across a clock change.
void AppointmentCommands::moveByDays(int days) {
    if (const CalendarEvent *selected = selectedEvent())
        moveTo(selected->appointment().start.value.addDays(days));
}

void AppointmentCommands::deleteSelected() {
    const CalendarEvent *selected = selectedEvent();
    if (!selected)
        return;
    const QString subject = subjectOf(*selected);
    const QString detail = tr("It is taken out of the calendar.");
    // Deletes the appointment named in the question, even if the selection has changed since.
    const std::shared_ptr<CalendarEvent> day = m_grid->controller()->newEventForSelection();
    const auto choice = [](const QString &name, const QString &text,
                           const std::shared_ptr<CalendarEvent> &deleted) {
        return MessageChoice{name, text, QMessageBox::DestructiveRole,
                             [deleted] { rt::send(deleted.get(), "deleteEventNow"); }};
    };
    if (day->instanceId().isEmpty())
        return ask(tr("Delete “%1”?").arg(subject), detail,
                   {choice(controls::deleteConfirmButton, tr("&Delete"), day)});
    const auto series = std::make_shared<CalendarEvent>(day->session(), day->UUID(), QString(), false);
    ask(tr("Delete this day of “%1”, or the whole series?").arg(subject), detail,
        {choice(controls::deleteConfirmButton, tr("&Delete this day"), day),
         choice(controls::deleteSeriesButton, tr("Delete the &series"), series)});
}

void AppointmentCommands::ask(const QString &question, const QString &detail,
                              const QList<MessageChoice> &choices) {
    if (m_question)
        m_question->deleteLater();
    const MessageChoice keep{{}, tr("&Keep"), QMessageBox::RejectRole, {}};
    m_question = showMessage(m_window, question, detail, choices + QList<MessageChoice>{keep});
}

void AppointmentCommands::cancelSelected() {
    const std::shared_ptr<CalendarEvent> cancelled = m_grid->controller()->newEventForSelection();
    if (!cancelled)
        return;
    if (!cancelled->isMeeting() || !cancelled->isOwner()) {
        showErrorMessage(m_window, tr("Only a meeting that you organize can be cancelled."));
        return;
    }
    ask(tr("Cancel the meeting “%1”?").arg(subjectOf(*cancelled)),
        tr("The attendees are told, and it is taken out of the calendar."),
        {{controls::deleteConfirmButton, tr("&Cancel the meeting"), QMessageBox::DestructiveRole,
          [this, cancelled] {
              rt::send(cancelled.get(), "cancelMeetingInWindow:", rt::fromWidget(m_window));
          }},
         {controls::cancelWithMessageButton, tr("&Write a message first…"), QMessageBox::DestructiveRole,
          [cancelled] {
              rt::send(editorWindowClass(),
                       "showCancellationWindowForMeeting:", rt::fromObject(cancelled->copy().release()));
          }}});
}

void AppointmentCommands::undo() {
    if (session() && !session()->undoText().isNull())
        tell(session()->undo());
}

void AppointmentCommands::redo() {
    if (session() && !session()->redoText().isNull())
        tell(session()->redo());
}

void AppointmentCommands::tell(bool done) {
    if (!done && !session()->lastError().isEmpty())
        showErrorMessage(m_window, session()->lastError());
}

} // namespace mailhost
