// A view of one day or one week on a time scale. It shows the given appointments and changes nothing itself:
// every gesture ends with a signal, and its result becomes visible with the next show().
#pragma once

#include "standin/mailhost/windows/grid/GridDrag.h"
#include "standin/mailhost/windows/grid/GridScene.h"

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>
#include <array>

class QLineEdit;
class QScrollArea;

namespace mailhost {

class AllDayRow;
class DayColumns;
class EventTileView;
class GridHeader;
class GridSurface;

class CalendarGrid : public QWidget {
    Q_OBJECT
public:
    enum class Extent { Day = 1, Week = 7 };

    explicit CalendarGrid(QWidget *parent = nullptr);
    ~CalendarGrid() override;

    // Tiles that are made from now on get it; it may die.
    void setController(rt::Object *controller) { m_scene->controller = rt::Weak<>(controller); }

    // Shows the days from `first` on; `occurrences` is sorted by start and contains all that overlap them.
    // Keeps the selection if the appointment (or the same day of a series) is still shown. Keeps the scroll
    // position; the first call scrolls to the working hours.
    void show(const QList<Occurrence> &occurrences, const QDate &first, Extent extent, const QDate &today);
    [[nodiscard]] QDate firstDay() const { return m_scene->first; }
    [[nodiscard]] bool isShown(const QDate &day) const { return m_scene->dayOf(day) >= 0; }

    [[nodiscard]] std::optional<Occurrence> selected() const;
    // Selects the first shown tile of that appointment (and of that day of the series, if given). Returns
    // false if none is shown.
    bool select(const QString &uid, const QString &instanceId = QString());
    // The day and time that the user pointed at or moved to last, or that of the selected tile; invalid if
    // there is none. Midnight in the all-day row.
    [[nodiscard]] QDateTime selectedMoment() const;
    // The tile of the selected appointment (the first one if it has several), or nullptr. It has the keyboard
    // focus if the grid has it.
    [[nodiscard]] EventTileView *selectedTile() const;

    // Opens the in-place editor of the selected tile's subject. Does nothing without a selection.
    void beginRename();

Q_SIGNALS:
    void selectionMoved();
    void opened(); // request to open the selected appointment
    // The selected appointment was dragged to that start; midnight for all-day appointments.
    void moved(const QDateTime &start);
    // An edge of the selected appointment was dragged; the arguments are its new start and length.
    void resized(const QDateTime &start, qint64 seconds);
    // The user typed a new subject into the selected tile; not emitted for an unchanged one.
    void renamed(const QString &subject);
    // The user double-clicked an empty place.
    void newRequested(const QDateTime &start, bool allDay);
    // Requests the context menu at that position, for the selected appointment or, without a selection, for
    // the empty place.
    void menuRequested(const QPoint &globalPosition);
    // The user moved past the edge with the keyboard; the page has to turn by that number of days.
    void pageRequested(int days);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void connectInput(GridSurface *surface);
    void abandon(); // the gesture of the pointer
    [[nodiscard]] bool isDragging() const;
    void takeStyle();
    void arrange();
    void moveLine(); // of the current time
    [[nodiscard]] std::optional<GridPosition> placeAfterChange(const std::optional<Occurrence> &before,
                                                               const QDate &formerFirst) const;
    void keepRename(const std::optional<Occurrence> &before);
    void placeRename();
    void commitRename();
    void endRename();
    void setPlace(const std::optional<GridPosition> &place, bool reveal);
    void showPlace();
    void setFocusTile(EventTileView *tile);
    void reveal();
    [[nodiscard]] std::array<GridSurface *, 2> surfaces() const;
    [[nodiscard]] GridPosition placeOf(const GridPiece &piece) const;
    // The first shown piece of the appointment, or of that day of its series.
    [[nodiscard]] std::optional<GridPosition> find(const QString &uid, const QString &instanceId) const;
    [[nodiscard]] GridPosition firstPlace() const;
    void pointAt(int occurrence, bool allDay, const ClockPlace &place);
    void finishDrag(const Occurrence &occurrence, Grip grip, const TimeSpan &span);
    void walk(int key);
    void turnPage(const GridPosition &from, int days);
    void scrollPage(int direction);
    void activate(); // Return, a double click
    void askForMenuByKey();

    std::shared_ptr<GridScene> m_scene;
    GridHeader *m_header;
    QScrollArea *m_allDayArea;
    AllDayRow *m_allDay;
    QScrollArea *m_scroll;
    DayColumns *m_columns;
    QPointer<QLineEdit> m_rename;          // of the selected tile's subject
    std::optional<GridPosition> m_arrival; // on the next page; its day is counted from this page
    bool m_scrolled = false;               // was scrolled to the working hours
    bool m_menuByContext = false;          // the menu for the following key event is already open
    QBasicTimer m_minute;
};

} // namespace mailhost
