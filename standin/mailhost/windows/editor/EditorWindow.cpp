#include "standin/mailhost/windows/editor/EditorWindow.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/model/HostContext.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/JoinLink.h"
#include "standin/mailhost/windows/editor/RecurrenceSheet.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace mailhost {

namespace {

constexpr int narrowestHeader = 800; // points; keeps controls of other programs beside the times visible

// Opens the series of an editor that shows one of its days.
class EventViewResponder : public rt::Object {
public:
    explicit EventViewResponder(EditorViewController *controller)
        : rt::Object(rt::classNamed(u"OLCalendarEventViewResponder"_s))
        , m_controller(controller) {}
    void switchToRecurringSeries(const rt::Value &) {
        if (m_controller)
            m_controller.get()->switchToSeries();
    }

private:
    rt::Weak<EditorViewController> m_controller;
};

} // namespace

EditorWindow::EditorWindow(EditorWindowController *controller, std::unique_ptr<CalendarEvent> event)
    : m_windowController(controller) {
    build(*event->session());
    m_controller = std::make_unique<EditorViewController>(std::move(event), centralWidget(), m_form, m_body);
    m_seriesResponder = std::make_unique<EventViewResponder>(m_controller.get());
    buildMenu();
    connectController();
    showState();
    m_timeZone->setChecked(m_form->isInOtherZone());
    // Not on the first button, which typed text would press.
    m_form->subjectField()->setFocus();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (now && now->window() == this && !m_closed)
            m_controller->attachBodyEditor();
    });
}

void EditorWindow::build(const CalendarSession &session) {
    const bool newerGeneration = isNewerGeneration(session.options().hostVersion);
    const BookmarkMangling mangling = session.options().bookmarkMangling;
    resize(960, 780);
    setMinimumWidth(narrowestHeader);
    auto *view = new QWidget;
    auto *layout = new QVBoxLayout(view);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(buildToolBar());
    m_notice = new QLabel;
    m_notice->setObjectName(controls::noticeBar);
    m_notice->setContentsMargins(16, 7, 16, 7);
    m_notice->setAutoFillBackground(true);
    QPalette notice = m_notice->palette();
    notice.setColor(QPalette::Window, QColor(0xff, 0xf4, 0xce));
    notice.setColor(QPalette::WindowText, QColor(0x4a, 0x3b, 0x00));
    m_notice->setPalette(notice);
    layout->addWidget(m_notice);
    HeaderView *header = HeaderView::make(newerGeneration, QRectF(0, 0, 960, 270));
    layout->addWidget(header);
    m_form = new EditorForm(header, session);
    m_body = newerGeneration ? new BodyEdit(mangling) : new ComposeView(mangling);
    layout->addWidget(m_body, 1);
    setCentralWidget(view);
}

QPushButton *EditorWindow::addButton(const QString &name, const QString &text,
                                     const std::function<void()> &operation) {
    auto *button = new QPushButton(text, m_toolBar);
    button->setObjectName(name);
    button->setAccessibleName(QString(text).remove(u'&'));
    button->setAutoDefault(false);
    m_toolBar->layout()->addWidget(button);
    if (operation)
        connect(button, &QPushButton::clicked, this, operation);
    return button;
}

QWidget *EditorWindow::buildToolBar() {
    m_toolBar = new QWidget;
    auto *row = new QHBoxLayout(m_toolBar);
    row->setContentsMargins(12, 8, 12, 8);
    row->setSpacing(8);
    m_send = addButton(controls::sendButton, tr("Se&nd"), [this] { m_controller->requestSend(); });
    m_saveAndClose = addButton(controls::saveAndCloseButton, tr("Sa&ve && Close"),
                               [this] { m_controller->requestSaveAndClose(); });
    m_saveAndClose->setAccessibleName(tr("Save and close"));
    // The fields use all its letters as mnemonics.
    m_delete = addButton(controls::deleteButton, tr("Delete"), [this] { deleteAppointment(); });
    m_delete->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    m_delete->setToolTip(tr("Delete (%1)").arg(m_delete->shortcut().toString(QKeySequence::NativeText)));
    m_repeat =
        addButton(controls::repeatButton, tr("Re&peat…"), [this] { m_controller->openRecurrenceSheet(); });
    m_timeZone = addButton(controls::timeZoneButton, tr("Time &zone"), {});
    m_timeZone->setCheckable(true);
    connect(m_timeZone, &QPushButton::toggled, this,
            [this](bool shown) { m_form->timeZoneRow()->setVisible(shown); });
    row->addStretch(1);
    m_openSeries = addButton(controls::openSeriesButton, tr("&Open series"), [this] { openSeries(); });
    return m_toolBar;
}

void EditorWindow::connectController() {
    using C = EditorViewController;
    connect(m_controller.get(), &C::stateChanged, this, &EditorWindow::showState);
    connect(m_controller.get(), &C::closeWanted, this, &EditorWindow::closeLater);
    connect(m_controller.get(), &C::failed, this,
            [this](const QString &message) { showOnly(showErrorMessage(this, message)); });
    connect(m_controller.get(), &C::sendDoubted, this, [this](const QString &problem, const auto &send) {
        ask(tr("Send the meeting as it is?"), problem,
            {{controls::sendAnywayButton, tr("&Send anyway"), QMessageBox::AcceptRole, send},
             {{}, tr("&Keep editing"), QMessageBox::RejectRole, {}}});
    });
}

void EditorWindow::buildMenu() {
    QMenu *menu = menuBar()->addMenu(tr("App&ointment"));
    m_save = menu->addAction(tr("&Save"), QKeySequence::Save, this, [this] { m_controller->requestSave(); });
    m_save->setObjectName(controls::saveAction);
    m_join = menu->addAction(QString(), QKeySequence(Qt::CTRL | Qt::Key_J), this,
                             [this] { openJoinLink(this, m_controller->joinLink()); });
    m_join->setObjectName(controls::joinAction);
    QAction *close = menu->addAction(tr("&Close"), QKeySequence::Close, this, [this] { this->close(); });
    close->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_F4)});
    // Applies outside of the fields, which have their own menus.
    centralWidget()->setContextMenuPolicy(Qt::ActionsContextMenu);
    centralWidget()->addActions(menu->actions());
}

void EditorWindow::showState() {
    const bool editable = m_controller->canEdit();
    const bool meeting = m_controller->isMeeting();
    const bool cancelling = m_controller->isCancelMode();
    const Appointment appointment = m_form->values();
    const QString subject =
        appointment.summary.trimmed().isEmpty() ? tr("Untitled") : appointment.summary.trimmed();
    setWindowTitle(subject + (meeting ? tr(" — Meeting[*]") : tr(" — Appointment[*]")));
    setWindowModified(m_controller->isDirty());
    m_send->setVisible(editable && (meeting || cancelling));
    m_send->setText(cancelling ? tr("Se&nd cancellation") : tr("Se&nd"));
    m_saveAndClose->setVisible(editable && !meeting && !cancelling);
    m_delete->setVisible(editable && !cancelling && m_controller->content()->isStored());
    const bool oneDay = m_controller->isOccurrenceOrException();
    m_repeat->setVisible(editable && !cancelling && !oneDay);
    m_repeat->setText(appointment.recurrenceRule.isEmpty()
                          ? tr("Re&peat…")
                          : tr("Re&peat: %1…").arg(recurrenceText(appointment.recurrenceRule)));
    m_repeat->setAccessibleName(m_repeat->text().remove(u'&'));
    m_openSeries->setVisible(oneDay && !cancelling);
    m_save->setEnabled(editable && !cancelling);
    offerJoin(m_join, m_controller->joinLink());
    QStringList notices;
    if (!m_controller->content()->isOwner())
        notices.append(tr("Only the organizer, %1, can change this meeting.").arg(appointment.organizerName));
    else if (oneDay && !cancelling)
        notices.append(tr("This is one day of a series. What you change here holds for this day only."));
    else if (m_controller->keepsStart() && !cancelling)
        notices.append(CalendarSession::startIsKept());
    if (cancelling)
        notices.append(tr("The attendees will be told that the meeting does not take place."));
    m_notice->setText(notices.join(u"   ·   "_s));
    m_notice->setVisible(!notices.isEmpty());
}

void EditorWindow::ask(const QString &text, const QString &detail, const QList<MessageChoice> &choices) {
    showOnly(showMessage(this, text, detail, choices));
}

void EditorWindow::showOnly(QMessageBox *message) {
    if (m_message)
        m_message->deleteLater(); // its answer may be being handled now
    m_message = message;
}

void EditorWindow::deleteAppointment() {
    // A hook may refuse the deletion; the window stays open then.
    const auto remove = [this] {
        if (rt::boolValue(rt::send(m_controller->content(), "deleteEventNow")))
            closeLater();
    };
    ask(tr("Delete this appointment?"), tr("It is taken out of the calendar for good."),
        {{controls::deleteConfirmButton, tr("&Delete"), QMessageBox::DestructiveRole, remove},
         {{}, tr("&Keep"), QMessageBox::RejectRole, {}}});
}

void EditorWindow::openSeries() {
    const auto open = [this] {
        rt::send(m_seriesResponder.get(), "switchToRecurringSeries:", rt::fromWidget(m_openSeries));
    };
    if (!m_controller->isDirty())
        return open();
    askToSave(tr("Save the changes to this day?"), [this, open](bool save) {
        if (!save || rt::boolValue(rt::send(m_controller.get(), "save")))
            open();
    });
}

void EditorWindow::askToSave(const QString &question, const std::function<void(bool save)> &answered) {
    if (m_message && m_message->isVisible())
        return;
    ask(question, tr("They are lost if you do not save them."),
        {{controls::saveChangesButton, tr("&Save"), QMessageBox::AcceptRole, [answered] { answered(true); }},
         {controls::discardChangesButton, tr("&Don't save"), QMessageBox::DestructiveRole,
          [answered] { answered(false); }},
         {controls::keepEditingButton, tr("&Cancel"), QMessageBox::RejectRole, {}}});
}

void EditorWindow::closeLater() {
    QTimer::singleShot(0, this, &EditorWindow::closeNow);
}

void EditorWindow::closeNow() {
    if (m_closed)
        return;
    m_closed = true;
    platform::windowWillClose(this);
    hide();
    m_windowController->windowClosed();
}

void EditorWindow::closeEvent(QCloseEvent *event) {
    if (m_closed)
        return;
    event->ignore();
    if (!m_controller->isDirty() || !m_controller->canEdit())
        return closeNow();
    askToSave(tr("Save the changes to this appointment?"), [this](bool save) {
        if (save)
            rt::send(m_controller.get(), "saveAndCloseWindow:", true);
        else
            closeLater();
    });
}

namespace {

QList<EditorWindowController *> &openControllers() {
    static auto *controllers = new QList<EditorWindowController *>;
    return *controllers;
}

// A new appointment of half an hour or of one day, or nullptr without a calendar.
std::unique_ptr<CalendarEvent> newEvent() {
    const HostContext &context = HostContext::instance();
    if (!context.session)
        return nullptr;
    Appointment draft;
    draft.uid = CalendarFile::newUid();
    const NewPlace place =
        context.placeOfNew ? context.placeOfNew() : NewPlace{QDateTime::currentDateTime(), false};
    const QDateTime zoned = place.start.toTimeZone(QTimeZone::systemTimeZone());
    const QString zone = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    if (place.allDay) {
        const QDate day = place.start.date();
        draft.start = {CalendarTime::Kind::Date, day.startOfDay(), {}};
        draft.end = {CalendarTime::Kind::Date, day.addDays(1).startOfDay(), {}};
    } else {
        draft.start = {CalendarTime::Kind::Zoned, zoned, zone};
        draft.end = {CalendarTime::Kind::Zoned, zoned.addSecs(30 * 60), zone};
    }
    return std::make_unique<CalendarEvent>(context.session.data(), draft);
}

rt::Value showEvent(rt::Object *, rt::Selector, rt::Args arguments) {
    return rt::fromObject(EditorWindowController::showFor(rt::objectValue(arguments[0]), false));
}

rt::Value showCancellation(rt::Object *, rt::Selector, rt::Args arguments) {
    return rt::fromObject(EditorWindowController::showFor(rt::objectValue(arguments[0]), true));
}

// Uses the method that takes an event, because other code hooks it to notice new editors.
rt::Value showNew(rt::Object *self, const char *selector) {
    std::unique_ptr<CalendarEvent> event = newEvent();
    return event ? rt::send(self, selector, rt::fromObject(event.release())) : rt::Value();
}

rt::Value showNewMeeting(rt::Object *self, rt::Selector, rt::Args) {
    return showNew(self, "showWindowForMeeting:");
}

rt::Value showNewEvent(rt::Object *self, rt::Selector, rt::Args) {
    return showNew(self, "showWindowForEvent:");
}

} // namespace

QList<EditorWindowController *> EditorWindowController::open() {
    return openControllers();
}

EditorWindowController *EditorWindowController::showFor(rt::Object *object, bool cancelMode) {
    auto *event = dynamic_cast<CalendarEvent *>(object);
    if (!event || !event->session())
        return nullptr;
    std::unique_ptr<CalendarEvent> owned(event);
    for (EditorWindowController *controller : std::as_const(openControllers())) {
        EditorWindow *window = controller->m_window;
        const CalendarEvent *shown = window ? window->viewController()->content() : nullptr;
        if (!shown || !shown->isSame(*event))
            continue;
        controller->m_otherEvents.push_back(std::move(owned));
        window->show();
        window->activateWindow();
        return controller;
    }
    auto *controller = new EditorWindowController(std::move(owned));
    if (cancelMode)
        rt::send(controller->m_window->viewController(), "setIsCancelMode:", true);
    controller->m_window->viewController()->attachBodyEditor();
    controller->m_window->show();
    controller->m_window->activateWindow();
    return controller;
}

EditorWindowController::EditorWindowController(std::unique_ptr<CalendarEvent> event)
    : rt::Object(rt::classNamed(u"ERCalendarEventEditorWindowController"_s))
    , m_window(new EditorWindow(this, std::move(event))) {
    openControllers().append(this);
    platform::registerWindow(m_window, this);
}

EditorWindowController::~EditorWindowController() {
    openControllers().removeAll(this);
    delete m_window;
}

void EditorWindowController::windowClosed() {
    openControllers().removeAll(this);
    platform::unregisterWindow(m_window);
    deleteLater(); // deletes the window and its content after the running calls
}

rt::Class *editorWindowClass() {
    return rt::classNamed(u"ERCalendarEventEditorWindowController"_s);
}

rt::Object *showEditorFor(std::unique_ptr<CalendarEvent> event) {
    const char *selector = event->isMeeting() ? "showWindowForMeeting:" : "showWindowForEvent:";
    return rt::objectValue(rt::send(editorWindowClass(), selector, rt::fromObject(event.release())));
}

void defineEditorWindowClasses() {
    rt::Class *cls = rt::defineClass(u"ERCalendarEventEditorWindowController"_s);
    addMethods(cls, {{"editorViewController", bind<&EditorWindowController::editorViewController>, "@@:"},
                     {"window", bind<&EditorWindowController::window>, "@@:"},
                     {"close", bind<&EditorWindowController::close>, "v@:"}});
    addMethods(cls->metaclass(), {{"showWindowForMeeting:", &showEvent, "@@:@"},
                                  {"showWindowForNewMeeting", &showNewMeeting, "@@:"},
                                  {"showWindowForEvent:", &showEvent, "@@:@"},
                                  {"showWindowForNewEvent", &showNewEvent, "@@:"},
                                  {"showCancellationWindowForMeeting:", &showCancellation, "@@:@"}});
    addMethods(rt::defineClass(u"OLCalendarEventViewResponder"_s),
               {{"switchToRecurringSeries:", bind<&EventViewResponder::switchToRecurringSeries>, "v@:@"}});
}

} // namespace mailhost
