#include "standin/mailhost/windows/editor/EditorWindow.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/model/HostContext.h"

namespace mailhost {

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

// Through the method that takes an event: whoever follows what is opened learns of new ones there.
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

rt::Object *EditorWindowController::editorViewController() const {
    return m_window ? m_window->viewController() : nullptr;
}

QWidget *EditorWindowController::window() const {
    return m_window;
}

void EditorWindowController::close() {
    if (m_window)
        m_window->closeNow();
}

void EditorWindowController::windowClosed() {
    openControllers().removeAll(this);
    platform::unregisterWindow(m_window);
    deleteLater(); // with the window and everything in it, after what is at work now
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
}

} // namespace mailhost
