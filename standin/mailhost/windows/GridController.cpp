#include "standin/mailhost/windows/GridController.h"

#include "standin/mailhost/model/Bind.h"

#include <QPainter>

namespace mailhost {

GridViewController::GridViewController(WeekList *list)
    : rt::Object(rt::classNamed(u"CCGridViewController"_qs))
    , m_list(list) {}

void GridViewController::setSession(CalendarSession *session) {
    m_session = session;
    m_event.reset();
}

std::unique_ptr<CalendarEvent> GridViewController::newEventForSelection() const {
    const std::optional<Occurrence> occurrence = m_list ? m_list->selected() : std::nullopt;
    if (!occurrence || !m_session)
        return nullptr;
    const bool oneDay = occurrence->isOccurrence && !occurrence->isException;
    auto event =
        std::make_unique<CalendarEvent>(m_session.data(), occurrence->uid, occurrence->recurrenceId, oneDay);
    if (oneDay)
        event->setOccurrenceTimes(occurrence->start, occurrence->end);
    return event;
}

rt::Object *GridViewController::selectedEvent() {
    std::unique_ptr<CalendarEvent> event = newEventForSelection();
    const bool same = event && m_event && event->UUID() == m_event->UUID() &&
                      event->isOccurrence() == m_event->isOccurrence() &&
                      event->stored().recurrenceId == m_event->stored().recurrenceId;
    if (same)
        return m_event.get();
    if (m_event)
        rt::temporary(std::move(m_event)); // whoever was just given it may still use it
    m_event = std::move(event);
    return m_event.get();
}

GridViewWrapper::GridViewWrapper(WeekList *list)
    : rt::Object(rt::classNamed(u"OLCalendarGridViewWrapper"_qs))
    , m_controller(list) {}

bool GridViewWrapper::mayChange(const CalendarEvent *event) const {
    if (!event || !event->session())
        return false;
    QString reason;
    if (!event->isOwner())
        reason = QObject::tr("Only the organizer can change this meeting.");
    else if (event->isOccurrence())
        reason = QObject::tr("This is one day of a series. Open the series to change it.");
    if (!reason.isNull() && errorPresenter())
        errorPresenter()(m_controller.view()->window(), reason);
    return reason.isNull();
}

bool GridViewWrapper::store(CalendarEvent *event, const Appointment &appointment) {
    MutableCalendarEvent record(event->session(), appointment);
    if (rt::integerValue(rt::send(&record, "saveRecord")) == 0)
        return true;
    if (errorPresenter())
        errorPresenter()(m_controller.view()->window(), event->session()->lastError());
    return false;
}

namespace {

// The same kind of time, moved to another instant.
CalendarTime movedTo(const CalendarTime &time, const QDateTime &instant) {
    CalendarTime moved = time;
    if (time.kind == CalendarTime::Kind::Date)
        moved.value = QDateTime(instant.toLocalTime().date(), QTime(0, 0));
    else
        moved.value = instant.toTimeZone(zoneOf(time));
    if (time.kind == CalendarTime::Kind::Floating)
        moved.value = QDateTime(moved.value.date(), moved.value.time());
    return moved;
}

} // namespace

bool GridViewWrapper::dragResizedEvent(rt::Object *object, const rt::Value &, rt::Object *startDate,
                                       double seconds, const rt::Value &, bool, bool) {
    auto *event = dynamic_cast<CalendarEvent *>(object);
    const auto *start = dynamic_cast<CalendarDate *>(startDate);
    if (!start || seconds < 0 || !mayChange(event))
        return false;
    Appointment appointment = event->appointment();
    appointment.start = movedTo(appointment.start, start->dateUTC());
    appointment.end = movedTo(appointment.end, start->dateUTC().addMSecs(qint64(seconds * 1000)));
    return store(event, appointment);
}

bool GridViewWrapper::performDrag(const rt::Value &, const rt::Value &, rt::Object *date, const rt::Value &) {
    auto *event = dynamic_cast<CalendarEvent *>(m_controller.selectedEvent());
    const auto *start = dynamic_cast<CalendarDate *>(date);
    if (!start || !mayChange(event))
        return false;
    Appointment appointment = event->appointment();
    const qint64 length = appointment.start.value.msecsTo(appointment.end.value);
    appointment.start = movedTo(appointment.start, start->dateUTC());
    appointment.end = movedTo(appointment.end, start->dateUTC().addMSecs(length));
    return store(event, appointment);
}

bool GridViewWrapper::subjectChanged(const QString &subject, rt::Object *object, const rt::Value &) {
    auto *event = dynamic_cast<CalendarEvent *>(object);
    if (!mayChange(event))
        return false;
    Appointment appointment = event->appointment();
    appointment.summary = subject;
    return store(event, appointment);
}

EventTileView::EventTileView()
    : rt::Object(rt::classNamed(u"CCEventTileView"_qs)) {}

rt::Object *EventTileView::initWithFrame(const QRectF &frame, rt::Object *, const rt::Value &fillColor,
                                         bool isGhost) {
    setGeometry(frame.toAlignedRect());
    m_fill = fillColor.value<QColor>();
    m_ghost = isGhost;
    return this;
}

void EventTileView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setOpacity(m_ghost ? 0.5 : 1.0);
    painter.fillRect(rect(), m_fill.isValid() ? m_fill : palette().color(QPalette::Highlight));
}

void defineGridClasses() {
    rt::Class *view = rt::defineClass(u"NSView"_qs);
    addMethods(rt::defineClass(u"CCGridViewController"_qs),
               {{"view", bind<&GridViewController::view>, "@@:"},
                {"selectedEvent", bind<&GridViewController::selectedEvent>, "@@:"}});
    addMethods(rt::defineClass(u"OLCalendarGridViewWrapper"_qs),
               {{"gridViewController", bind<&GridViewWrapper::gridViewController>, "@@:"},
                {"gridViewControllers", bind<&GridViewWrapper::gridViewControllers>, "@@:"},
                {"dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
                 bind<&GridViewWrapper::dragResizedEvent>, "B@:@@@d^cBB"},
                {"performDragFrom:to:forDate:inProgress:", bind<&GridViewWrapper::performDrag>, "B@:@@@^c"},
                {"subjectChanged:forEvent:andTileView:", bind<&GridViewWrapper::subjectChanged>, "B@:@@@"}});
    addMethods(rt::defineClass(u"CCEventTileView"_qs, view),
               {{"initWithFrame:andController:andFillColor:isGhost:", bind<&EventTileView::initWithFrame>,
                 "@@:ffff@@B"}});
}

} // namespace mailhost
