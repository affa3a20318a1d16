#include "standin/mailhost/windows/MainWindow.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/EditorWindow.h"
#include "standin/mailhost/windows/Messages.h"

#include <QFileInfo>
#include <QInputDialog>
#include <QLocale>

namespace mailhost {

namespace {

QStringList textsOf(const rt::Value &list) {
    QStringList texts;
    for (const rt::Value &value : rt::listValue(list))
        texts.append(rt::textValue(value));
    return texts;
}

} // namespace

MainWindowController::MainWindowController(const QDate &today)
    : rt::Object(rt::classNamed(u"ERageMainWindowController"_qs))
    , m_today(today)
    , m_day(today)
    , m_window(std::make_unique<MainWindow>(this))
    , m_grid(std::make_unique<GridViewWrapper>(m_window->list())) {
    errorPresenter() = [weak = rt::Weak<MainWindowController>(this)](QWidget *parent,
                                                                     const QString &message) {
        if (weak)
            showErrorMessage(parent ? parent : weak.get()->window(), message);
    };
    platform::registerWindow(m_window.get(), this);
    m_window->fillToolBar(textsOf(rt::send(this, "toolbarDefaultItemIdentifiers:", rt::Value())));
}

MainWindowController::~MainWindowController() {
    errorPresenter() = nullptr;
}

void MainWindowController::setSession(CalendarSession *session) {
    m_session = session;
    m_grid->controller()->setSession(session);
    if (session)
        connect(session, &CalendarSession::changed, this, &MainWindowController::refresh);
    refresh();
}

void MainWindowController::refresh() {
    if (!m_session) {
        m_window->list()->clear();
        return;
    }
    m_window->list()->show(*m_session, m_day, m_today);
    const QDate monday = mondayOf(m_day);
    const QDate sunday = monday.addDays(6);
    const QLocale locale;
    const QString from = locale.toString(monday, monday.month() == sunday.month() ? u"d"_qs : u"d MMMM"_qs);
    m_window->showTitle(tr("%1 – %2").arg(from, locale.toString(sunday, u"d MMMM yyyy"_qs)),
                        QFileInfo(m_session->file().path()).fileName());
}

void MainWindowController::showWeek(const QDate &day) {
    m_day = day;
    refresh();
}

void MainWindowController::goToToday() {
    showWeek(m_today);
}
void MainWindowController::previousWeek() {
    showWeek(m_day.addDays(-7));
}
void MainWindowController::nextWeek() {
    showWeek(m_day.addDays(7));
}

QDateTime MainWindowController::startOfNew() const {
    const QDate selected = m_window->list()->selectedDay();
    const bool thisWeek = mondayOf(m_day) == mondayOf(m_today);
    const QDate day = selected.isValid() ? selected : thisWeek ? m_today : mondayOf(m_day);
    const QTime now = QTime::currentTime();
    const int halfHours = std::min(45, now.hour() * 2 + now.minute() / 30 + 1);
    return day == m_today ? QDateTime(day, QTime(halfHours / 2, halfHours % 2 * 30))
                          : QDateTime(day, QTime(9, 0));
}

void MainWindowController::newAppointment() {
    rt::send(editorWindowClass(), "showWindowForNewEvent");
}

void MainWindowController::newMeeting() {
    rt::send(platform::applicationDelegate(), "newCalendarMeeting:", rt::fromObject(this));
}

rt::Object *MainWindowController::openAppointment(const QString &uid, const QString &recurrenceId) {
    if (!m_session || !m_session->file().find(uid, recurrenceId))
        return nullptr;
    auto event = std::make_unique<CalendarEvent>(m_session.data(), uid, recurrenceId, false);
    const char *selector = event->isMeeting() ? "showWindowForMeeting:" : "showWindowForEvent:";
    return rt::objectValue(rt::send(editorWindowClass(), selector, rt::fromObject(event.release())));
}

void MainWindowController::openSelected() {
    std::unique_ptr<CalendarEvent> event = m_grid->controller()->newEventForSelection();
    if (!event)
        return;
    const char *selector = event->isMeeting() ? "showWindowForMeeting:" : "showWindowForEvent:";
    rt::send(editorWindowClass(), selector, rt::fromObject(event.release()));
}

void MainWindowController::deleteEvent(bool series) {
    std::unique_ptr<CalendarEvent> event = m_grid->controller()->newEventForSelection();
    if (!event)
        return;
    if (series)
        event = std::make_unique<CalendarEvent>(m_session.data(), event->UUID(), QString(), false);
    CalendarEvent *deleted = rt::temporary(std::move(event));
    rt::send(deleted, "deleteEventNow");
}

void MainWindowController::deleteSelected() {
    const std::optional<Occurrence> row = m_window->list()->selected();
    if (!row)
        return;
    const bool series = row->isOccurrence && !row->isException;
    const QString subject = row->summary.trimmed().isEmpty() ? tr("Untitled") : row->summary;
    m_window->ask(series ? tr("Delete the whole series “%1”?").arg(subject) : tr("Delete “%1”?").arg(subject),
                  tr("It is taken out of the calendar for good."), tr("&Delete"),
                  [this, series] { deleteEvent(series); });
}

void MainWindowController::cancelSelected() {
    const std::unique_ptr<CalendarEvent> event = m_grid->controller()->newEventForSelection();
    if (!event || !event->isMeeting() || !event->isOwner()) {
        if (event)
            showErrorMessage(window(), tr("Only a meeting that you organize can be cancelled."));
        return;
    }
    const QString uid = event->UUID();
    const QString recurrenceId = event->isOccurrence() ? QString() : event->stored().recurrenceId;
    m_window->ask(tr("Cancel the meeting “%1”?").arg(event->summary()),
                  tr("The attendees are told, and it is taken out of the calendar."),
                  tr("&Cancel the meeting"), [this, uid, recurrenceId] {
                      CalendarEvent *cancelled = rt::temporary(
                          std::make_unique<CalendarEvent>(m_session.data(), uid, recurrenceId, false));
                      rt::send(cancelled, "cancelMeetingInWindow:", rt::fromWidget(window()));
                  });
}

void MainWindowController::renameSelected() {
    auto *event = dynamic_cast<CalendarEvent *>(m_grid->controller()->selectedEvent());
    if (!event)
        return;
    auto *dialog = new QInputDialog(m_window.get());
    dialog->setObjectName(u"renameSheet"_qs);
    dialog->setLabelText(tr("Subject:"));
    dialog->setTextValue(event->summary());
    dialog->setOkButtonText(tr("Rename"));
    platform::beginSheet(
        dialog, m_window.get(), [this, dialog, weak = rt::Weak<CalendarEvent>(event)](int result) {
            dialog->deleteLater();
            if (result == QDialog::Accepted && weak && dialog->textValue() != weak.get()->summary())
                rt::send(m_grid.get(), "subjectChanged:forEvent:andTileView:", dialog->textValue(),
                         rt::fromObject(weak.get()), rt::Value());
        });
}

void MainWindowController::moveSelected(int seconds) {
    auto *event = dynamic_cast<CalendarEvent *>(m_grid->controller()->selectedEvent());
    if (!event)
        return;
    const bool allDay = event->appointment().start.kind == CalendarTime::Kind::Date;
    rt::Object *date = rt::objectValue(
        rt::send(rt::objectValue(event->startTime()),
                 "dateByAddingTimeInterval:", double(allDay ? (seconds < 0 ? -86400 : 86400) : seconds)));
    rt::send(m_grid.get(), "performDragFrom:to:forDate:inProgress:", rt::Value(), rt::Value(),
             rt::fromObject(date), rt::Value());
}

void MainWindowController::resizeSelected(int seconds) {
    auto *event = dynamic_cast<CalendarEvent *>(m_grid->controller()->selectedEvent());
    if (!event)
        return;
    const bool allDay = event->appointment().start.kind == CalendarTime::Kind::Date;
    const double length = event->duration() + (allDay ? (seconds < 0 ? -86400 : 86400) : seconds);
    if (length <= 0)
        return;
    rt::send(m_grid.get(),
             "dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
             rt::fromObject(event), rt::Value(), event->startTime(), length, rt::Value(), false, false);
}

bool MainWindowController::closeEditors() {
    for (EditorWindowController *controller : EditorWindowController::open())
        if (controller->editorWindow() && !controller->editorWindow()->close() &&
            controller->editorWindow()->isVisible())
            return false;
    return true;
}

rt::Value MainWindowController::toolBarItem(const rt::Value &, const QString &identifier, bool) {
    return rt::fromWidget(m_window->toolBarItem(identifier));
}

QVariantList MainWindowController::defaultIdentifiers(const rt::Value &) {
    return {u"NewAppointment"_qs, u"NewMeeting"_qs, u"NSToolbarFlexibleSpaceItem"_qs,
            u"PreviousWeek"_qs,   u"Today"_qs,      u"NextWeek"_qs};
}

QVariantList MainWindowController::allowedIdentifiers(const rt::Value &toolBar) {
    return defaultIdentifiers(toolBar);
}

AppDelegate::AppDelegate()
    : rt::Object(rt::classNamed(u"ErageAppDelegate"_qs)) {}

void AppDelegate::newCalendarMeeting(const rt::Value &) {
    rt::send(editorWindowClass(), "showWindowForNewMeeting");
}

void defineMainWindowClasses() {
    using C = MainWindowController;
    addMethods(rt::defineClass(u"ERageMainWindowController"_qs),
               {{"window", bind<&C::window>, "@@:"},
                {"toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", bind<&C::toolBarItem>, "@@:@@B"},
                {"toolbarDefaultItemIdentifiers:", bind<&C::defaultIdentifiers>, "@@:@"},
                {"toolbarAllowedItemIdentifiers:", bind<&C::allowedIdentifiers>, "@@:@"}});
    addMethods(rt::defineClass(u"ErageAppDelegate"_qs),
               {{"newCalendarMeeting:", bind<&AppDelegate::newCalendarMeeting>, "v@:@"}});
}

} // namespace mailhost
