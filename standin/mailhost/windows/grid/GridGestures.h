// What the pointer does on the grid: clicks, drags and what lies between. It knows the surfaces and sends
// what was meant; whatever changes or goes away under it ends the gesture with nothing sent.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

class QMouseEvent;

namespace mailhost {

class GridGestures : public QObject {
    Q_OBJECT
public:
    explicit GridGestures(QObject *parent = nullptr);
    void watch(GridSurface *surface) { surface->installEventFilter(this); }
    [[nodiscard]] bool isDragging() const { return m_hold && m_hold->dragging; }
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
    void menuAsked(const QPoint &globalPosition);
    void dragged(const mailhost::Occurrence &occurrence, mailhost::Grip grip, const mailhost::TimeSpan &span);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // The tile on which the left button is down.
    struct Hold {
        QPointer<GridSurface> surface;
        QPointer<EventTileView> tile;
        QPoint point;
        DragStart start;
        bool dragging = false;
        TimeSpan span; // where it is now; none before the first move
    };
    void press(GridSurface *surface, const QMouseEvent *event);
    void move(GridSurface *surface, const QMouseEvent *event);
    void release();
    void doubleClick(GridSurface *surface, const QMouseEvent *event);
    static void hover(GridSurface *surface, const QPoint &point);
    void follow(const QPoint &point);

    std::optional<Hold> m_hold;
};

} // namespace mailhost
