// The base class of both areas of the calendar grid with tiles: the time scale and the all-day row.
#pragma once

#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/mailhost/windows/grid/GridDrag.h"

#include <QPointer>

namespace mailhost {

// Emits the changes that the pointer makes. The grid cancels a gesture before the scene changes.
class GridSurface : public QWidget {
    Q_OBJECT
public:
    // A press of the pointer gives the focus to `grid`.
    GridSurface(std::shared_ptr<const GridScene> scene, QWidget *grid);

    [[nodiscard]] virtual bool isAllDay() const = 0;
    // Shows the scene. An appointment that was shown before keeps its tile.
    virtual void showScene();
    // Shows the scene's place, if it is in this area.
    void showPlace();
    // The tiles of that appointment from left to right.
    [[nodiscard]] QList<EventTileView *> tilesOf(int occurrence) const;
    [[nodiscard]] bool isDragging() const { return m_hold && m_hold->dragging; }
    // Cancels the gesture: removes the ghost and emits nothing.
    void abandon();

Q_SIGNALS:
    void resized();
    // -1: an empty place.
    void pointedAt(int occurrence, const mailhost::ClockPlace &place);
    void activated(); // a double click at the place pointed at, or a press by an assistive program
    void dragged(const mailhost::Occurrence &occurrence, mailhost::Grip grip, const mailhost::TimeSpan &span);
    void reached(int occurrence); // its tile got the keyboard focus

protected:
    // The clock time at that height, or the nearest if it is outside; 0 for whole days.
    [[nodiscard]] virtual int minuteAt(int y) const = 0;
    [[nodiscard]] virtual QRect frameOf(const GridPiece &piece) const = 0;
    void resizeEvent(QResizeEvent *) override { Q_EMIT resized(); }
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void leaveEvent(QEvent *) override { setHovered(nullptr); }

    [[nodiscard]] const GridScene &scene() const { return *m_scene; }
    // The day of the cursor, which shows a place without appointment; -1: not in this area.
    [[nodiscard]] int cursorDay() const;

private:
    struct Hit {
        EventTileView *tile = nullptr;
        Grip grip = Grip::Body;
    };
    // The tile on which the left button is down.
    struct Hold {
        QPointer<EventTileView> tile;
        QPoint point;
        DragStart start;
        bool dragging = false;
        TimeSpan span; // where it is now; none before the first move
    };
    [[nodiscard]] EventTileView *newTile(bool ghost);
    [[nodiscard]] Hit hitAt(const QPoint &point) const;
    [[nodiscard]] ClockPlace placeAt(const QPoint &point) const;
    [[nodiscard]] ClockPlace slotAt(const QPoint &point) const;
    void hover(const QPoint &point);
    void setHovered(EventTileView *tile);
    void follow(const QPoint &point); // shows the appointment where it is dragged
    void hideGhost();

    std::shared_ptr<const GridScene> m_scene;
    QList<EventTileView *> m_tiles;
    QList<EventTileView *> m_ghosts;
    QPointer<EventTileView> m_hovered;
    std::optional<Hold> m_hold;
    bool m_endedDrag = false; // the last press did nothing else, so it opens no menu
};

} // namespace mailhost
