#include "standin/mailhost/windows/main/MainWindowController.h"

#include "platform/toolkit/ToolbarCustomization.h"
#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/JoinLink.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"

#include <QFileInfo>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>

namespace mailhost {

namespace {

constexpr int halfHour = 30 * 60; // seconds

QString titleOf(const QDate &first, int days) {
    const QLocale locale;
    if (days == 1)
        return locale.toString(first, u"dddd, d MMMM yyyy"_s);
    const QDate last = first.addDays(days - 1);
    const QString from = locale.toString(first, first.month() == last.month() ? u"d"_s : u"d MMMM"_s);
    return QObject::tr("%1 – %2").arg(from, locale.toString(last, u"d MMMM yyyy"_s));
}

} // namespace

QDate mondayOf(const QDate &day) {
    return day.addDays(1 - day.dayOfWeek());
}

MainWindowController::MainWindowController(std::function<QDate()> today)
    : rt::Object(rt::classNamed(u"ERageMainWindowController"_s))
    , m_today(std::move(today))
    , m_day(m_today())
    , m_window(std::make_unique<MainWindow>())
    , m_forSelected(new QActionGroup(m_window.get()))
    , m_grid(std::make_unique<GridViewWrapper>(m_window->calendar()))
    , m_commands(std::make_unique<AppointmentCommands>(m_window.get(), m_grid.get())) {
    platform::registerWindow(m_window.get(), this);
    m_forSelected->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    buildMenus();
    connectCalendar();
    m_window->toolBar()->setDelegate(this);
}

void MainWindowController::connectCalendar() {
    CalendarGrid *calendar = m_window->calendar();
    AppointmentCommands *commands = m_commands.get();
    connect(calendar, &CalendarGrid::selectionMoved, this, &MainWindowController::showState);
    connect(calendar, &CalendarGrid::opened, commands, &AppointmentCommands::openSelected);
    connect(calendar, &CalendarGrid::moved, commands, &AppointmentCommands::moveTo);
    connect(calendar, &CalendarGrid::resized, commands, &AppointmentCommands::resizeTo);
    connect(calendar, &CalendarGrid::renamed, commands, &AppointmentCommands::renameTo);
    connect(calendar, &CalendarGrid::newRequested, this, &MainWindowController::newAt);
    connect(calendar, &CalendarGrid::menuRequested, this, &MainWindowController::showMenu);
    connect(calendar, &CalendarGrid::pageRequested, this, [this](int days) { showDay(m_day.addDays(days)); });
}

void MainWindowController::setSession(CalendarSession *session) {
    if (m_session)
        disconnect(m_session, nullptr, this, nullptr);
    m_session = session;
    m_grid->controller()->setSession(session);
    if (session)
        connect(session, &CalendarSession::changed, this, &MainWindowController::refresh);
    refresh();
}

QDate MainWindowController::firstShown() const {
    return m_extent == CalendarGrid::Extent::Week ? mondayOf(m_day) : m_day;
}

void MainWindowController::refresh() {
    const int days = int(m_extent);
    const QDate first = firstShown();
    QList<Occurrence> shown;
    if (m_session)
        shown = m_session->file().occurrences(first.startOfDay(), first.addDays(days).startOfDay());
    m_window->calendar()->show(shown, first, m_extent, m_today());
    m_window->showTitle(titleOf(first, days),
                        m_session ? QFileInfo(m_session->file().path()).fileName() : QString());
    showState();
}

void MainWindowController::showDay(const QDate &day) {
    if (!day.isValid())
        return;
    m_day = day;
    refresh();
}

void MainWindowController::showExtent(CalendarGrid::Extent extent) {
    const QDate pointed = m_window->calendar()->selectedMoment().date();
    if (extent == CalendarGrid::Extent::Day && m_window->calendar()->isShown(pointed))
        m_day = pointed;
    m_extent = extent;
    refresh();
}

void MainWindowController::turnPages(int pages) {
    showDay(m_day.addDays(pages * int(m_extent)));
}

NewPlace MainWindowController::placeOfNew() const {
    if (m_askedPlace)
        return *m_askedPlace;
    const QDate today = m_today();
    const QDateTime pointed = m_window->calendar()->selectedMoment();
    const bool pointedHere = m_window->calendar()->isShown(pointed.date());
    if (pointedHere && pointed.time() != QTime(0, 0))
        return {pointed, false};
    const QDate day = pointedHere                            ? pointed.date()
                      : m_window->calendar()->isShown(today) ? today
                                                             : firstShown();
    const QTime now = QTime::currentTime();
    const int halfHours = std::min(45, now.hour() * 2 + now.minute() / 30 + 1);
    return {day == today ? QDateTime(day, QTime(halfHours / 2, halfHours % 2 * 30))
                         : QDateTime(day, QTime(9, 0)),
            false};
}

void MainWindowController::newAt(const QDateTime &start, bool allDay) {
    m_askedPlace = NewPlace{start, allDay};
    newAppointment();
    m_askedPlace.reset();
}

void MainWindowController::newAppointment() {
    rt::send(editorWindowClass(), "showWindowForNewEvent");
}

void MainWindowController::buildMenus() {
    QMenu *file = m_window->menuBar()->addMenu(tr("&File"));
    m_window->addCommand(file, controls::newAppointmentAction, tr("New &appointment"), QKeySequence::New,
                         [this] { newAppointment(); });
    m_window->addCommand(
        file, controls::newMeetingAction, tr("New &meeting"), QKeySequence(tr("Ctrl+Shift+N")),
        [this] { rt::send(platform::applicationDelegate(), "newCalendarMeeting:", rt::fromObject(this)); });
    file->addSeparator();
    m_window->addCommand(file, controls::newWindowAction, tr("New &window"), QKeySequence(tr("Ctrl+Alt+N")),
                         [this] { Q_EMIT anotherWindowWanted(); });
    m_window->addCommand(file, {}, tr("&Close window"), QKeySequence(tr("Ctrl+W")),
                         [this] { m_window->close(); });
    m_window->addCommand(file, {}, tr("&Quit"), QKeySequence(tr("Ctrl+Q")), [this] { Q_EMIT quitWanted(); });
    buildEditMenu();
    buildViewMenu();
}

void MainWindowController::buildEditMenu() {
    using A = AppointmentCommands;
    using Operation = std::function<void(A &)>;
    QMenu *edit = m_window->menuBar()->addMenu(tr("&Edit"));
    const auto add = [this, edit](const QString &name, const QString &text, const QKeySequence &keys,
                                  const Operation &operation) {
        return m_window->addCommand(edit, name, text, keys, [this, operation] { operation(*m_commands); });
    };
    const auto addForSelected = [this, &add](const QString &name, const QString &text,
                                             const QKeySequence &keys, const Operation &operation) {
        m_forSelected->addAction(add(name, text, keys, operation));
    };
    const auto addChange = [&addForSelected](const QString &name, const QString &text, const QString &keys,
                                             int start, int end) {
        addForSelected(name, text, QKeySequence(keys),
                       [start, end](A &commands) { commands.changeBy(start, end); });
    };
    add(controls::undoAction, tr("&Undo"), QKeySequence::Undo, &A::undo);
    add(controls::redoAction, tr("&Redo"), QKeySequence::Redo, &A::redo);
    edit->addSeparator();
    addForSelected(controls::openAction, tr("&Open"), QKeySequence(tr("Ctrl+O")), &A::openSelected);
    add(controls::openSeriesAction, tr("Open &series"), QKeySequence(tr("Ctrl+Shift+O")), &A::openSeries);
    add(controls::joinAction, QString(), QKeySequence(tr("Ctrl+J")), &A::join);
    addForSelected(controls::renameAction, tr("Re&name"), QKeySequence(tr("F2")), &A::renameSelected);
    edit->addSeparator();
    addChange(controls::earlierAction, tr("Move &earlier"), tr("Ctrl+Up"), -halfHour, -halfHour);
    addChange(controls::laterAction, tr("Move &later"), tr("Ctrl+Down"), halfHour, halfHour);
    addForSelected(controls::dayEarlierAction, tr("Move to the day &before"),
                   QKeySequence(tr("Ctrl+Shift+Left")), [](A &commands) { commands.moveByDays(-1); });
    addForSelected(controls::dayLaterAction, tr("Move to the day &after"),
                   QKeySequence(tr("Ctrl+Shift+Right")), [](A &commands) { commands.moveByDays(1); });
    edit->addSeparator();
    addChange(controls::longerAction, tr("End la&ter"), tr("Ctrl+Shift+Down"), 0, halfHour);
    addChange(controls::shorterAction, tr("End earl&ier"), tr("Ctrl+Shift+Up"), 0, -halfHour);
    addChange(controls::startLaterAction, tr("Start later"), tr("Ctrl+Alt+Down"), halfHour, 0);
    addChange(controls::startEarlierAction, tr("Start earlier"), tr("Ctrl+Alt+Up"), -halfHour, 0);
    edit->addSeparator();
    addForSelected(controls::cancelMeetingAction, tr("&Cancel meeting…"),
                   QKeySequence(tr("Ctrl+Shift+Delete")), &A::cancelSelected);
    addForSelected(controls::deleteAction, tr("&Delete…"), QKeySequence::Delete, &A::deleteSelected);
}

void MainWindowController::buildViewMenu() {
    QMenu *view = m_window->menuBar()->addMenu(tr("&View"));
    m_window->addCommand(view, controls::todayAction, tr("&Today"), QKeySequence(tr("Ctrl+T")),
                         [this] { showDay(m_today()); });
    m_window->addCommand(view, controls::previousAction, tr("&Previous"), QKeySequence(tr("Ctrl+Left")),
                         [this] { turnPages(-1); });
    m_window->addCommand(view, controls::nextAction, tr("&Next"), QKeySequence(tr("Ctrl+Right")),
                         [this] { turnPages(1); });
    view->addSeparator();
    auto *extents = new QActionGroup(m_window.get());
    for (QAction *action :
         {m_window->addCommand(view, controls::dayViewAction, tr("&Day"), QKeySequence(tr("Ctrl+1")),
                               [this] { showExtent(CalendarGrid::Extent::Day); }),
          m_window->addCommand(view, controls::weekViewAction, tr("&Week"), QKeySequence(tr("Ctrl+2")),
                               [this] { showExtent(CalendarGrid::Extent::Week); })}) {
        action->setCheckable(true);
        extents->addAction(action);
    }
    view->addSeparator();
    m_window->addCommand(view, controls::customizeToolBarAction, tr("Customise tool-&bar…"), QKeySequence(),
                         [this] { platform::customizeToolbar(m_window->toolBar()); });
}

void MainWindowController::showState() {
    const std::optional<Occurrence> selected = m_window->calendar()->selected();
    m_forSelected->setEnabled(selected.has_value());
    m_window->command(controls::openSeriesAction)->setEnabled(selected && !selected->instanceId.isEmpty());
    offerJoin(m_window->command(controls::joinAction), m_commands->joinLink());
    const auto offer = [this](const QString &name, const QString &text, const QString &what) {
        m_window->command(name)->setEnabled(!what.isNull());
        m_window->command(name)->setText(what.isNull() ? text : text + u' ' + what);
    };
    offer(controls::undoAction, tr("&Undo"), m_session ? m_session->undoText() : QString());
    offer(controls::redoAction, tr("&Redo"), m_session ? m_session->redoText() : QString());
    m_window
        ->command(m_extent == CalendarGrid::Extent::Day ? controls::dayViewAction : controls::weekViewAction)
        ->setChecked(true);
}

void MainWindowController::showMenu(const QPoint &position) {
    auto *menu = new QMenu(m_window.get());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QStringList names = m_window->calendar()->selected()
                                  ? QStringList{controls::openAction,
                                                controls::openSeriesAction,
                                                controls::joinAction,
                                                controls::renameAction,
                                                QString(),
                                                controls::cancelMeetingAction,
                                                controls::deleteAction}
                                  : QStringList{controls::newAppointmentAction, controls::newMeetingAction,
                                                QString(), controls::todayAction};
    for (const QString &name : names) {
        if (name.isNull())
            menu->addSeparator();
        else
            menu->addAction(m_window->command(name));
    }
    menu->popup(position);
}

rt::Value MainWindowController::toolBarItem(const rt::Value &, const QString &identifier, bool) {
    std::unique_ptr<platform::ToolbarItem> &item = m_toolBarItems[identifier];
    if (!item)
        item = makeToolBarItem(identifier, m_window.get());
    return rt::fromObject(item.get());
}

AppDelegate::AppDelegate()
    : rt::Object(rt::classNamed(u"ErageAppDelegate"_s)) {}

void AppDelegate::newCalendarMeeting(const rt::Value &) {
    rt::send(editorWindowClass(), "showWindowForNewMeeting");
}

void defineMainWindowClasses() {
    using C = MainWindowController;
    addMethods(rt::defineClass(u"ERageMainWindowController"_s),
               {{"window", bind<&C::window>, "@@:"},
                {"toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", bind<&C::toolBarItem>, "@@:@@B"},
                {"toolbarDefaultItemIdentifiers:", bind<&C::defaultIdentifiers>, "@@:@"},
                {"toolbarAllowedItemIdentifiers:", bind<&C::allowedIdentifiers>, "@@:@"}});
    addMethods(rt::defineClass(u"ErageAppDelegate"_s),
               {{"newCalendarMeeting:", bind<&AppDelegate::newCalendarMeeting>, "v@:@"}});
}

} // namespace mailhost
