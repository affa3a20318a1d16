#include "standin/mailhost/windows/grid/GridAccessibility.h"

#include "standin/mailhost/windows/grid/CalendarGrid.h"
#include "standin/mailhost/windows/grid/EventTileView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLocale>

namespace mailhost {

namespace {

QString dayText(const QDate &date) {
    return QLocale().toString(date, u"dddd d MMMM"_s);
}

QString timeText(const Occurrence &occurrence) {
    const QDateTime start = occurrence.start.toLocalTime();
    const QDateTime end = occurrence.end.toLocalTime();
    const QLocale locale;
    if (occurrence.allDay) {
        const QDate last = std::max(start.date(), end.date().addDays(-1));
        return last == start.date()
                   ? QObject::tr("%1, all day").arg(dayText(last))
                   : QObject::tr("%1 to %2, all day").arg(dayText(start.date()), dayText(last));
    }
    const QString to = end.date() == start.date()
                           ? locale.toString(end.time(), QLocale::ShortFormat)
                           : dayText(end.date()) + u' ' + locale.toString(end.time(), QLocale::ShortFormat);
    return QObject::tr("%1, %2 to %3")
        .arg(dayText(start.date()), locale.toString(start.time(), QLocale::ShortFormat), to);
}

CalendarGrid *gridOf(const QWidget *widget) {
    for (QWidget *above = widget ? widget->parentWidget() : nullptr; above; above = above->parentWidget())
        if (auto *grid = qobject_cast<CalendarGrid *>(above))
            return grid;
    return nullptr;
}

class AccessibleTile : public QAccessibleWidget {
public:
    explicit AccessibleTile(EventTileView *tile)
        : QAccessibleWidget(tile, QAccessible::ListItem) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && tile() ? spokenName(tile()) : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        state.selectable = true;
        state.selected = tile() && tile()->state().selected;
        state.focused = tile() && tile()->state().focused;
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString &name) override {
        CalendarGrid *grid = gridOf(tile());
        if (!grid || !actionNames().contains(name))
            return;
        const QString uid = tile()->occurrence().uid;
        grid->setFocus(Qt::OtherFocusReason);
        if (grid->select(uid, tile()->occurrence().instanceId) && name == pressAction())
            Q_EMIT grid->opened();
    }

private:
    [[nodiscard]] EventTileView *tile() const { return static_cast<EventTileView *>(object()); }
};

class AccessibleGrid : public QAccessibleWidget {
public:
    explicit AccessibleGrid(CalendarGrid *grid)
        : QAccessibleWidget(grid, QAccessible::Grouping, QObject::tr("Calendar")) {}

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Description || !grid())
            return QAccessibleWidget::text(kind);
        const QDateTime moment = grid()->selectedMoment();
        return moment.isValid() ? dayText(moment.date()) + u", "_s +
                                      QLocale().toString(moment.time(), QLocale::ShortFormat)
                                : QString();
    }
    QAccessibleInterface *focusChild() const override {
        EventTileView *tile = grid() ? grid()->selectedTile() : nullptr;
        return tile ? QAccessible::queryAccessibleInterface(tile) : QAccessibleWidget::focusChild();
    }

private:
    [[nodiscard]] CalendarGrid *grid() const { return static_cast<CalendarGrid *>(object()); }
};

QAccessibleInterface *make(const QString &, QObject *object) {
    if (auto *tile = qobject_cast<EventTileView *>(object))
        return new AccessibleTile(tile);
    if (auto *grid = qobject_cast<CalendarGrid *>(object))
        return new AccessibleGrid(grid);
    return nullptr;
}

} // namespace

QString spokenName(const EventTileView *tile) {
    const Occurrence &occurrence = tile->occurrence();
    QStringList parts{TileTexts::subjectOf(occurrence), timeText(occurrence),
                      occurrence.location.simplified()};
    if (occurrence.isOccurrence || occurrence.isException)
        parts.append(QObject::tr("repeats"));
    if (occurrence.hasMeetingRecord)
        parts.append(QObject::tr("online meeting"));
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

void installGridAccessibility() {
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(make), true);
}

void announce(CalendarGrid *grid, EventTileView *tile) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent moved(tile ? static_cast<QObject *>(tile) : grid,
                           tile ? QAccessible::Focus : QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&moved);
}

} // namespace mailhost
