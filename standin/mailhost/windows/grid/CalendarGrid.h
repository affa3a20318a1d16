// One day or one week on a time scale: what the user sees of the calendar and takes hold of. It shows what
// it was given and changes nothing itself: every gesture ends in a signal, and what it leads to is seen with
// the next show(). Until then everything stands where it stood.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include "standin/mailhost/windows/grid/GridDrag.h"
#include "standin/mailhost/windows/grid/GridNavigator.h"

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <optional>

class QScrollArea;

namespace rt {
class Object;
}

namespace mailhost {

class AllDayRow;
class DayColumns;
class EventTileView;
class GridHeader;
class GridSurface;
class TileRename;
struct GridContents;
struct GridStyle;

class CalendarGrid : public QWidget {
    Q_OBJECT
public:
    enum class Extent { Day = 1, Week = 7 };

    explicit CalendarGrid(QWidget *parent = nullptr);
    ~CalendarGrid() override;

    // What tiles are told as their controller; held weakly, may be nullptr.
    void setController(rt::Object *controller);
    // Where the time of the line on today comes from; the desktop's, until it is set.
    void setClock(std::function<QDateTime()> now);

    // Shows the days from `first` on; `occurrences` is sorted by start and holds whatever overlaps them. What
    // was selected stays selected where it is still shown (the same day of a series, wherever it has moved
    // to). The scroll position stays; the first time it is put to the working hours.
    void show(const QList<Occurrence> &occurrences, const QDate &first, Extent extent, const QDate &today);
    [[nodiscard]] QDate firstDay() const;
    [[nodiscard]] Extent extent() const;

    [[nodiscard]] std::optional<Occurrence> selected() const;
    // The first shown one of that appointment (and of that day of the series, when given); false when none
    // is shown.
    bool select(const QString &uid, const QString &instanceId = QString());
    // The day and time that the user pointed at or moved to last, or of the selected tile; null (invalid)
    // when nothing was. An all-day row gives midnight.
    [[nodiscard]] QDateTime selectedMoment() const;
    // The tile of the selected appointment (its first, when it goes over several days); nullptr when none is.
    // It has the keyboard focus when the grid has it.
    [[nodiscard]] EventTileView *selectedTile() const;
    [[nodiscard]] QList<EventTileView *> tiles() const; // in reading order

    // Opens the in-place editor of the selected tile's subject; nothing without a selection.
    void beginRename();

Q_SIGNALS:
    void selectionMoved();
    void opened(); // the selected one is to be opened
    // The selected one was dragged: it is to begin then. All-day ones begin at midnight.
    void moved(const QDateTime &start);
    // An edge of the selected one was dragged: it is to begin then and take that long.
    void resized(const QDateTime &start, qint64 seconds);
    // A new subject was typed into the selected tile; not sent for an unchanged one.
    void renamed(const QString &subject);
    // A double click on an empty place.
    void newRequested(const QDateTime &start, bool allDay);
    // The context menu of the selected one (or of the empty place: nothing is selected) is asked for there.
    void menuRequested(const QPoint &globalPosition);
    // The user turns pages with the keyboard past the edge, by that many days.
    void pageRequested(int days);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void connectInput(GridSurface *surface);
    void abandon(); // what the pointer does
    [[nodiscard]] bool isDragging() const;
    void takeStyle();
    void arrange();
    void moveLine(); // of the current time
    [[nodiscard]] std::optional<GridPosition> placeAfterChange(const std::optional<Occurrence> &before,
                                                               const QDate &formerFirst) const;
    [[nodiscard]] int indexOf(const Occurrence &occurrence) const; // -1: not shown
    void keepRename(const std::optional<Occurrence> &before);
    void placeRename();
    void finishRename(const QString &subject);
    void setPlace(const std::optional<GridPosition> &place, bool reveal);
    void showPlace();
    void setFocusTile(EventTileView *tile);
    void reveal();
    [[nodiscard]] std::array<GridSurface *, 2> surfaces() const;
    [[nodiscard]] GridSurface *surfaceOf(int occurrence) const;
    [[nodiscard]] std::optional<GridPosition> placeOf(int occurrence) const;
    [[nodiscard]] QDateTime momentOf(const GridPosition &place) const;
    [[nodiscard]] GridPosition firstPlace() const;
    void pointAt(GridSurface *surface, EventTileView *tile, const ClockPlace &place);
    void finishDrag(const Occurrence &occurrence, Grip grip, const TimeSpan &span);
    void walk(WalkStep step);
    void turnPage(const GridPosition &from, int days);
    void scrollPage(int direction);
    void activate(); // Return
    void askForMenuByKey();

    std::shared_ptr<const GridStyle> m_style;
    std::shared_ptr<const GridContents> m_contents;
    GridHeader *m_header;
    QWidget *m_rule; // below the all-day row
    QScrollArea *m_allDayArea;
    AllDayRow *m_allDay;
    QScrollArea *m_scroll;
    DayColumns *m_columns;
    QPointer<TileRename> m_rename;
    GridNavigator m_walk;
    std::optional<GridPosition> m_place;
    std::optional<ClockPlace> m_arrival; // where the keyboard goes with the next page
    bool m_arrivesAllDay = false;
    bool m_scrolled = false;      // put to the working hours
    bool m_menuByContext = false; // the key that follows has had its menu
    std::function<QDateTime()> m_now;
    QBasicTimer m_minute;
};

} // namespace mailhost
