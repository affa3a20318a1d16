// The calendar view as the host's object model shows it: what is selected, and changes made in place.
#pragma once

#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/model/CalendarEvent.h"
#include "standin/mailhost/windows/grid/CalendarGrid.h"

namespace mailhost {

class GridViewController : public rt::Object {
public:
    explicit GridViewController(CalendarGrid *calendar);
    void setSession(CalendarSession *session);
    [[nodiscard]] QWidget *view() const { return m_calendar; }
    // The event of the selected row; nullptr when none is. Lives until another is selected.
    [[nodiscard]] rt::Object *selectedEvent();
    // A new event object for the selected row, which the caller takes.
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

    // Each changes the stored appointment; one day of a series becomes an exception. False when it may not be
    // changed (it is another's) or cannot be written; the person has been told why.
    bool dragResizedEvent(rt::Object *event, const rt::Value &tile, rt::Object *startDate, double seconds,
                          const rt::Value &inProgress, bool partialStart, bool partialEnd);
    bool performDrag(const rt::Value &from, const rt::Value &to, rt::Object *date,
                     const rt::Value &inProgress);
    bool subjectChanged(const QString &subject, rt::Object *event, const rt::Value &tile);

private:
    void tell(const QString &message) const;
    // Without seconds it keeps its length.
    bool putTo(rt::Object *date, CalendarEvent *event, std::optional<double> seconds);
    bool store(CalendarEvent *event, const Appointment &appointment);
    [[nodiscard]] bool mayChange(const CalendarEvent *event) const;
    GridViewController m_controller;
};

void defineGridClasses();

} // namespace mailhost
