#include "standin/mailhost/windows/grid/GridController.h"

#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/grid/EventTileView.h"

namespace mailhost {

GridViewController::GridViewController(CalendarGrid *calendar)
    : rt::Object(rt::classNamed(u"CCGridViewController"_s))
    , m_calendar(calendar) {
    calendar->setController(this);
}

void GridViewController::setSession(CalendarSession *session) {
    m_session = session;
    m_event.reset();
}

std::unique_ptr<CalendarEvent> GridViewController::newEventForSelection() const {
    const std::optional<Occurrence> occurrence = m_calendar ? m_calendar->selected() : std::nullopt;
    if (!occurrence || !m_session)
        return nullptr;
    const bool oneDay = occurrence->isOccurrence && !occurrence->isException;
    auto event =
        std::make_unique<CalendarEvent>(m_session.data(), occurrence->uid, occurrence->recurrenceId, oneDay);
    if (oneDay)
        event->setOccurrence(*occurrence);
    return event;
}

rt::Object *GridViewController::selectedEvent() {
    std::unique_ptr<CalendarEvent> event = newEventForSelection();
    if (event && m_event && event->isSame(*m_event)) {
        m_event->setOccurrence(*m_calendar->selected()); // its series may have been moved
        return m_event.get();
    }
    if (m_event)
        rt::temporary(std::move(m_event)); // recent callers may still use it
    m_event = std::move(event);
    return m_event.get();
}

GridViewWrapper::GridViewWrapper(CalendarGrid *calendar)
    : rt::Object(rt::classNamed(u"OLCalendarGridViewWrapper"_s))
    , m_controller(calendar) {}

void GridViewWrapper::tell(const QString &message) const {
    if (errorPresenter())
        errorPresenter()(m_controller.view()->window(), message);
}

bool GridViewWrapper::mayChange(const CalendarEvent *event) const {
    if (!event || !event->session())
        return false;
    if (!event->isOwner())
        tell(QObject::tr("Only the organizer can change this meeting."));
    return event->isOwner();
}

bool GridViewWrapper::store(CalendarEvent *event, const Appointment &appointment) {
    MutableCalendarEvent record(event->session(), appointment);
    const bool stored = rt::integerValue(rt::send(&record, "saveRecord")) == 0;
    if (!stored)
        tell(event->session()->lastError());
    return stored;
}

namespace {

constexpr double secondsPerDay = 24 * 60 * 60;

// A time of the same kind at another instant.
CalendarTime movedTo(const CalendarTime &time, const QDateTime &instant) {
    CalendarTime moved = time;
    moved.value = instant.toTimeZone(zoneOf(time));
    if (time.kind == CalendarTime::Kind::Floating)
        moved.value = QDateTime(moved.value.date(), moved.value.time());
    return moved;
}

// Whole days are counted on the calendar: around a change of the clocks they have 23 or 25 hours.
void moveTo(Appointment &appointment, const QDateTime &start, double seconds) {
    if (appointment.start.kind != CalendarTime::Kind::Date) {
        appointment.start = movedTo(appointment.start, start);
        appointment.end = movedTo(appointment.end, start.addMSecs(qint64(seconds * 1000)));
        return;
    }
    const QDate first = start.toLocalTime().date();
    const qint64 days = std::max<qint64>(1, qRound64(seconds / secondsPerDay));
    appointment.start.value = first.startOfDay();
    appointment.end.value = first.addDays(days).startOfDay();
}

} // namespace

bool GridViewWrapper::putTo(rt::Object *date, CalendarEvent *event, std::optional<double> seconds) {
    const auto *start = dynamic_cast<CalendarDate *>(date);
    if (!start || !mayChange(event))
        return false;
    Appointment appointment = event->changeable();
    const double former = double(appointment.start.value.msecsTo(appointment.end.value)) / 1000;
    moveTo(appointment, start->dateUTC(), seconds.value_or(former));
    return store(event, appointment);
}

bool GridViewWrapper::dragResizedEvent(rt::Object *event, const rt::Value &, rt::Object *startDate,
                                       double seconds, const rt::Value &, bool, bool) {
    return seconds >= 0 && putTo(startDate, dynamic_cast<CalendarEvent *>(event), seconds);
}

bool GridViewWrapper::performDrag(const rt::Value &, const rt::Value &, rt::Object *date, const rt::Value &) {
    return putTo(date, dynamic_cast<CalendarEvent *>(m_controller.selectedEvent()), std::nullopt);
}

bool GridViewWrapper::subjectChanged(const QString &subject, rt::Object *object, const rt::Value &) {
    auto *event = dynamic_cast<CalendarEvent *>(object);
    if (!mayChange(event))
        return false;
    Appointment appointment = event->changeable();
    appointment.summary = subject;
    return store(event, appointment);
}

void defineGridClasses() {
    addMethods(rt::defineClass(u"CCGridViewController"_s),
               {{"view", bind<&GridViewController::view>, "@@:"},
                {"selectedEvent", bind<&GridViewController::selectedEvent>, "@@:"}});
    addMethods(rt::defineClass(u"OLCalendarGridViewWrapper"_s),
               {{"gridViewController", bind<&GridViewWrapper::gridViewController>, "@@:"},
                {"gridViewControllers", bind<&GridViewWrapper::gridViewControllers>, "@@:"},
                {"dragResizedEvent:withTileView:withStartDate:duration:inProgress:partialStart:partialEnd:",
                 bind<&GridViewWrapper::dragResizedEvent>, "B@:@@@d^cBB"},
                {"performDragFrom:to:forDate:inProgress:", bind<&GridViewWrapper::performDrag>, "B@:@@@^c"},
                {"subjectChanged:forEvent:andTileView:", bind<&GridViewWrapper::subjectChanged>, "B@:@@@"}});
    defineTileClass();
}

} // namespace mailhost
