// One day or one week on a time scale: what the person sees of the calendar and takes hold of. It shows what
// it was given and changes nothing itself: every gesture ends in a signal, and what it leads to is seen with
// the next show(). Until then everything stands where it stood.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QWidget>
#include <optional>

namespace mailhost {

class EventTileView;

class CalendarGrid : public QWidget {
    Q_OBJECT
public:
    enum class Extent { Day = 1, Week = 7 };

    explicit CalendarGrid(QWidget *parent = nullptr);

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
    // The day and time that the person pointed at or moved to last, or of the selected tile; null (invalid)
    // when nothing was. An all-day row gives midnight.
    [[nodiscard]] QDateTime selectedMoment() const;
    // The tile of the selected appointment (its first, when it goes over several days); nullptr when none is.
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
    // The person turns pages with the keyboard past the edge, by that many days.
    void pageRequested(int days);
};

} // namespace mailhost
