// What the pointer does on the grid: clicks, drags and what lies between. It knows the surfaces and sends
// what was meant; whatever changes or goes away under it ends the gesture with nothing sent.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

#include <QBasicTimer>
#include <QScrollArea>

class QMouseEvent;

namespace mailhost {

class GridGestures : public QObject {
    Q_OBJECT
public:
    explicit GridGestures(QObject *parent = nullptr);
    // The surface is the widget of the scroll area.
    void watch(GridSurface *surface, QScrollArea *area);
    [[nodiscard]] bool isDragging() const { return m_phase == Phase::Dragging; }
    // Ends whatever goes on: the ghost is gone and nothing is sent.
    void abandon();

Q_SIGNALS:
    // A button goes down: before anything is looked for at that point.
    void touched();
    // `tile` may be nullptr: an empty place.
    void pointedAt(mailhost::GridSurface *surface, mailhost::EventTileView *tile,
                   const mailhost::ClockPlace &place);
    void opened();
    void newRequested(mailhost::GridSurface *surface, const mailhost::ClockPlace &place);
    void renameAsked();
    void menuAsked(const QPoint &globalPosition);
    void foldAsked(const QList<int> &occurrences, const QPoint &globalPosition);
    void dragged(const mailhost::Occurrence &occurrence, mailhost::Grip grip, const mailhost::TimeSpan &span);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    enum class Phase { Idle, Pressed, Dragging };
    void press(GridSurface *surface, QMouseEvent *event);
    void pressLeft(GridSurface *surface, const QPoint &point, const GridSurface::Hit &hit);
    void move(GridSurface *surface, QMouseEvent *event);
    void release(QMouseEvent *event);
    void doubleClick(GridSurface *surface, QMouseEvent *event);
    void hover(GridSurface *surface, const QPoint &point);
    void startDrag();
    void follow(const QPoint &point);
    void scrollNearEdge();

    QList<std::pair<QPointer<GridSurface>, QPointer<QScrollArea>>> m_areas;
    Phase m_phase = Phase::Idle;
    QPointer<GridSurface> m_surface;
    QPointer<EventTileView> m_tile;
    Occurrence m_occurrence;
    Grip m_grip = Grip::Body;
    bool m_holdsStart = true; // the piece that was taken has the appointment's begin
    bool m_mayRename = false;
    QPoint m_pressedAt; // in the surface
    QPoint m_pointer;   // on the screen
    ClockPlace m_from;
    TimeSpan m_span;
    QBasicTimer m_scrolling;
    QBasicTimer m_renaming;
};

} // namespace mailhost
