// What the two areas of the calendar grid that hold tiles have in common: the time scale and the all-day row.
#pragma once

#include "standin/mailhost/windows/grid/EventTileView.h"
#include "standin/mailhost/windows/grid/GridDrag.h"

#include <QPointer>

namespace mailhost {

// Where the days stand from left to right, behind the gutter of the hour labels.
struct DayEdges {
    int gutter = 0;
    int width = 0; // of everything
    int days = 1;
    [[nodiscard]] int left(int day) const { return gutter + (width - gutter) * day / days; }
    [[nodiscard]] int dayAt(int x) const; // the nearest one
    friend bool operator==(const DayEdges &a, const DayEdges &b) = default;
};

// What the grid shows at the moment.
struct GridContents {
    QList<Occurrence> occurrences;
    GridLayout layout;
    QDate first;
    int days = 7;
    QDate today;
};

class GridSurface : public QWidget {
    Q_OBJECT
public:
    struct Hit {
        EventTileView *tile = nullptr;
        Grip grip = Grip::Body;
    };

    explicit GridSurface(QWidget *parent);
    void setStyle(std::shared_ptr<const GridStyle> style);
    void setController(rt::Object *controller) { m_controller = controller; }
    void setContents(std::shared_ptr<const GridContents> contents);
    void setEdges(const DayEdges &edges);

    [[nodiscard]] virtual bool isAllDay() const = 0;
    // The day and time at that point; the nearest when it lies outside.
    [[nodiscard]] virtual ClockPlace placeAt(const QPoint &point) const = 0;
    [[nodiscard]] Hit hitAt(const QPoint &point) const;
    // Where the cursor of the keyboard and of a click on an empty place stands; an invalid date: nowhere.
    void setCursorPlace(const ClockPlace &place);

    // The tiles of that appointment from left to right; those that lie there no more are left out.
    [[nodiscard]] QList<EventTileView *> tilesOf(int occurrence) const;
    [[nodiscard]] int occurrenceOf(const EventTileView *tile) const; // -1: none
    void setSelected(int occurrence);                                // -1: none
    void setHovered(EventTileView *tile);
    // The appointment as it is while it is being dragged; its tiles are dimmed.
    void showGhost(int original, const Occurrence &dragged);
    void hideGhost();

Q_SIGNALS:
    void resized();
    // A tile got the keyboard, or an assistive program pressed it.
    void reached(mailhost::EventTileView *tile, bool pressed);

protected:
    // One tile to be: its name, its place, and the ends that it shows.
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
    void resizeEvent(QResizeEvent *event) override;

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
    [[nodiscard]] EventTileView *newTile(bool ghost);
    void place();
    void showStates();

    std::shared_ptr<const GridStyle> m_style;
    std::shared_ptr<const GridContents> m_contents;
    rt::Weak<rt::Object> m_controller;
    DayEdges m_edges;
    ClockPlace m_cursor;
    QMultiHash<QString, Tile> m_tiles; // by key: the same tile for the same appointment
    QList<Placed> m_placed;
    QList<Tile> m_ghosts;
    Tile m_hovered;
    int m_selected = -1;
    int m_dimmed = -1;
};

} // namespace mailhost
