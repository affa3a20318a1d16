// The calendar view in the host's object model: the selection, and changes made in place.
#pragma once

#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/model/CalendarEvent.h"
#include "standin/mailhost/windows/grid/CalendarGrid.h"

namespace mailhost {

class GridViewController : public rt::Object {
public:
    explicit GridViewController(CalendarGrid *calendar);
    void setSession(CalendarSession *session);
    [[nodiscard]] CalendarSession *session() const { return m_session; }
    [[nodiscard]] QWidget *view() const { return m_calendar; }
    // The selected event, or nullptr. Valid until the selection changes.
    [[nodiscard]] rt::Object *selectedEvent();
    // A new object for the selected event, owned by the caller.
    [[nodiscard]] std::unique_ptr<CalendarEvent> newEventForSelection() const;

private:
    QPointer<CalendarGrid> m_calendar;
    QPointer<CalendarSession> m_session;
    std::unique_ptr<CalendarEvent> m_event;
};

class GridViewWrapper : public rt::Object {
public:
    explicit GridViewWrapper(CalendarGrid *calendar);
    [[nodiscard]] GridViewController *controller() { return &m_controller; }
    [[nodiscard]] rt::Object *gridViewController() { return &m_controller; }
    [[nodiscard]] QVariantList gridViewControllers() { return {rt::fromObject(&m_controller)}; }

    // Each changes the stored appointment; a day of a series becomes an exception. Returns false, after a
    // message to the user, if the appointment belongs to another person or cannot be written.
    bool dragResizedEvent(rt::Object *event, const rt::Value &tile, rt::Object *startDate, double seconds,
                          const rt::Value &inProgress, bool partialStart, bool partialEnd);
    bool performDrag(const rt::Value &from, const rt::Value &to, rt::Object *date,
                     const rt::Value &inProgress);
    bool subjectChanged(const QString &subject, rt::Object *event, const rt::Value &tile);

private:
    void tell(const QString &message) const;
    // Without `seconds` the event keeps its length.
    bool putTo(rt::Object *date, CalendarEvent *event, std::optional<double> seconds);
    bool store(CalendarEvent *event, const Appointment &appointment);
    [[nodiscard]] bool mayChange(const CalendarEvent *event) const;
    GridViewController m_controller;
};

void defineGridClasses();

} // namespace mailhost
