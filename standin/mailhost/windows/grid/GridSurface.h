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

// The tiles of a surface, which are used again for other appointments: the same tile for the same one.
class TilePool {
public:
    TilePool(QWidget *surface, bool ghosts)
        : m_surface(surface)
        , m_ghosts(ghosts) {}
    void setController(rt::Object *controller) { m_controller = controller; }
    // One visible-to-be tile for each key, in their order; the others are hidden. Keys are unique.
    QList<EventTileView *> assign(const QStringList &keys, const std::shared_ptr<const GridStyle> &style);

private:
    QWidget *m_surface;
    bool m_ghosts;
    rt::Weak<rt::Object> m_controller;
    QHash<QString, QPointer<EventTileView>> m_used;
    QList<QPointer<EventTileView>> m_spare;
};

class GridSurface : public QWidget {
    Q_OBJECT
public:
    struct Hit {
        EventTileView *tile = nullptr;
        Grip grip = Grip::Body;
        bool onSubject = false;
    };

    explicit GridSurface(QWidget *parent);
    void setStyle(std::shared_ptr<const GridStyle> style);
    void setController(rt::Object *controller);
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
    void setSelected(int occurrence, bool focused);                  // -1: none
    void setHovered(EventTileView *tile);
    // The appointment as it is while it is being dragged; its tiles are dimmed.
    void showGhost(int original, const Occurrence &dragged);
    void hideGhost();
    [[nodiscard]] QList<EventTileView *> ghosts() const;

Q_SIGNALS:
    void resized();

protected:
    // One tile to be: its name, its place, and the ends that it shows.
    struct TilePlan {
        QString key;
        int occurrence = 0;
        QRect frame;
        TileEnds ends;
        bool folded = false; // shown only while it is selected
    };
    [[nodiscard]] virtual QList<TilePlan> plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                                               bool ghost) = 0;
    virtual void placed() {}
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    [[nodiscard]] const GridStyle &style() const { return *m_style; }
    [[nodiscard]] const GridContents &contents() const { return *m_contents; }
    [[nodiscard]] const DayEdges &edges() const { return m_edges; }
    [[nodiscard]] const ClockPlace &cursorPlace() const { return m_cursor; }
    [[nodiscard]] static QString keyOf(const Occurrence &occurrence, int piece);

private:
    struct Placed {
        QPointer<EventTileView> tile;
        int occurrence = 0;
        bool folded = false;
    };
    void place();
    void showState(const Placed &placed);

    std::shared_ptr<const GridStyle> m_style;
    std::shared_ptr<const GridContents> m_contents;
    DayEdges m_edges;
    ClockPlace m_cursor;
    TilePool m_tiles;
    TilePool m_ghostTiles;
    QList<Placed> m_placed;
    QList<QPointer<EventTileView>> m_ghosts;
    QPointer<EventTileView> m_hovered;
    int m_selected = -1;
    bool m_focused = false;
    int m_dimmed = -1;
};

} // namespace mailhost
