// The base class of both areas of the calendar grid with tiles: the time scale and the all-day row.
#pragma once

#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/mailhost/windows/grid/GridDrag.h"

#include <QPointer>

namespace mailhost {

// The horizontal positions of the days, after the gutter of the hour labels.
struct DayEdges {
    int gutter = 0;
    int width = 0; // of everything
    int days = 1;
    [[nodiscard]] int left(int day) const { return gutter + (width - gutter) * day / days; }
    [[nodiscard]] int dayAt(int x) const; // the nearest one
    friend bool operator==(const DayEdges &a, const DayEdges &b) = default;
};

// The present content of the grid.
struct GridContents {
    QList<Occurrence> occurrences;
    GridLayout layout;
    QDate first;
    int days = 7;
    QDate today;
};

// Emits the changes that the pointer makes. A gesture is cancelled if its appointment changes or disappears.
class GridSurface : public QWidget {
    Q_OBJECT
public:
    explicit GridSurface(QWidget *parent);
    void setStyle(std::shared_ptr<const GridStyle> style);
    void setController(rt::Object *controller) { m_controller = controller; }
    void setContents(std::shared_ptr<const GridContents> contents);
    void setEdges(const DayEdges &edges);

    [[nodiscard]] virtual bool isAllDay() const = 0;
    // The day and time at that point, or the nearest if it is outside.
    [[nodiscard]] virtual ClockPlace placeAt(const QPoint &point) const = 0;
    // Sets the place of the cursor, which shows the keyboard's position or a click on an empty place; hides
    // it for an invalid date.
    void setCursorPlace(const ClockPlace &place);

    // The existing tiles of that appointment from left to right.
    [[nodiscard]] QList<EventTileView *> tilesOf(int occurrence) const;
    [[nodiscard]] int occurrenceOf(const EventTileView *tile) const; // -1: none
    void setSelected(int occurrence);                                // -1: none
    [[nodiscard]] bool isDragging() const { return m_hold && m_hold->dragging; }
    // Cancels the gesture: removes the ghost and emits nothing.
    void abandon();

Q_SIGNALS:
    void resized();
    // Emitted at a button press, before the search for a tile at that point.
    void touched();
    // `tile` may be nullptr: an empty place.
    void pointedAt(mailhost::EventTileView *tile, const mailhost::ClockPlace &place);
    void opened();
    void newRequested(const mailhost::ClockPlace &place);
    void menuAsked(const QPoint &globalPosition);
    void dragged(const mailhost::Occurrence &occurrence, mailhost::Grip grip, const mailhost::TimeSpan &span);
    // A tile got the keyboard focus, or an assistive program pressed it.
    void reached(mailhost::EventTileView *tile, bool pressed);

protected:
    // A planned tile: its name, its place, and the ends that it shows.
    struct TilePlan {
        QString key;
        int occurrence = 0;
        QRect frame;
        TileEnds ends;
    };
    [[nodiscard]] virtual QList<TilePlan> plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                                               bool ghost) const = 0;
    virtual void placed() {}
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *) override { Q_EMIT resized(); }
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *) override { setHovered(nullptr); }
    void hideEvent(QHideEvent *) override { abandon(); }

    [[nodiscard]] const GridStyle &style() const { return *m_style; }
    [[nodiscard]] const GridContents &contents() const { return *m_contents; }
    [[nodiscard]] const DayEdges &edges() const { return m_edges; }
    [[nodiscard]] const ClockPlace &cursorPlace() const { return m_cursor; }
    [[nodiscard]] static QString keyOf(const Occurrence &occurrence, int piece);

private:
    using Tile = QPointer<EventTileView>;
    struct Placed {
        Tile tile;
        int occurrence = 0;
    };
    struct Hit {
        EventTileView *tile = nullptr;
        Grip grip = Grip::Body;
    };
    // The tile on which the left button is down.
    struct Hold {
        Tile tile;
        QPoint point;
        DragStart start;
        bool dragging = false;
        TimeSpan span; // where it is now; none before the first move
    };
    [[nodiscard]] EventTileView *newTile(bool ghost);
    void place();
    void showStates();
    [[nodiscard]] Hit hitAt(const QPoint &point) const;
    [[nodiscard]] ClockPlace slotAt(const QPoint &point) const;
    void hover(const QPoint &point);
    void setHovered(EventTileView *tile);
    void follow(const QPoint &point);
    // Shows the appointment at the dragged position and dims its tiles.
    void showGhost(const Occurrence &dragged);
    void hideGhost();

    std::shared_ptr<const GridStyle> m_style;
    std::shared_ptr<const GridContents> m_contents;
    rt::Weak<rt::Object> m_controller;
    DayEdges m_edges;
    ClockPlace m_cursor;
    QMultiHash<QString, Tile> m_tiles; // by key: the same tile for the same appointment
    QList<Placed> m_placed;
    QList<Tile> m_ghosts;
    Tile m_hovered;
    std::optional<Hold> m_hold;
    int m_selected = -1;
    int m_dimmed = -1;
};

} // namespace mailhost
