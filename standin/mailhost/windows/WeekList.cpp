#include "standin/mailhost/windows/WeekList.h"

#include "standin/mailhost/windows/ControlNames.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QStyledItemDelegate>

namespace mailhost {

namespace {

constexpr int dayRole = Qt::UserRole;
constexpr int occurrenceRole = Qt::UserRole + 1; // index in the list kept by the item
constexpr int todayRole = Qt::UserRole + 2;

const QColor &accent() {
    static const QColor color(0x1f, 0x6f, 0xc5);
    return color;
}

class OccurrenceItem : public QTreeWidgetItem {
public:
    OccurrenceItem(QTreeWidgetItem *day, Occurrence occurrence)
        : QTreeWidgetItem(day)
        , m_occurrence(std::move(occurrence)) {}
    [[nodiscard]] const Occurrence &occurrence() const { return m_occurrence; }

private:
    Occurrence m_occurrence;
};

QString timeText(const Occurrence &occurrence) {
    if (occurrence.allDay)
        return QObject::tr("All day");
    const QString end = occurrence.end.date() == occurrence.start.date()
                            ? occurrence.end.toString(u"HH:mm"_qs)
                            : occurrence.end.toString(u"ddd HH:mm"_qs);
    return occurrence.start.toString(u"HH:mm"_qs) + u" – "_qs + end;
}

// Draws a day as a heading and an appointment as a card with a bar of colour.
class WeekDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        return {option.rect.width(), index.parent().isValid() ? 46 : 38};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (index.parent().isValid())
            paintAppointment(painter, option, index);
        else
            paintDay(painter, option, index);
        painter->restore();
    }

private:
    static void paintDay(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) {
        const bool today = index.data(todayRole).toBool();
        QFont font = option.font;
        font.setBold(true);
        painter->setFont(font);
        painter->setPen(today ? accent() : option.palette.color(QPalette::WindowText));
        const QRect line = option.rect.adjusted(14, 8, -14, 0);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
        painter->setPen(today ? accent() : option.palette.color(QPalette::Mid));
        painter->drawLine(line.left(), option.rect.bottom(), line.right(), option.rect.bottom());
    }

    static void paintAppointment(QPainter *painter, const QStyleOptionViewItem &option,
                                 const QModelIndex &index) {
        const auto *item = static_cast<const QTreeWidget *>(option.widget)->itemFromIndex(index);
        const Occurrence &occurrence = static_cast<const OccurrenceItem *>(item)->occurrence();
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const QRect card = option.rect.adjusted(14, 3, -14, -2);
        QColor fill = accent();
        fill.setAlpha(selected ? 70 : 22);
        painter->setPen(selected && option.state.testFlag(QStyle::State_HasFocus) ? QPen(accent(), 1.2)
                                                                                  : Qt::NoPen);
        painter->setBrush(fill);
        painter->drawRoundedRect(card, 5, 5);
        painter->setPen(Qt::NoPen);
        painter->setBrush(accent());
        painter->drawRoundedRect(QRect(card.left(), card.top(), 4, card.height()), 2, 2);
        const QColor text = option.palette.color(QPalette::Text);
        QColor faint = text;
        faint.setAlpha(160);
        painter->setPen(faint);
        painter->drawText(QRect(card.left() + 16, card.top(), 118, card.height()), Qt::AlignVCenter,
                          timeText(occurrence));
        const QRect right = card.adjusted(142, 3, -12, -3);
        QFont bold = option.font;
        bold.setWeight(QFont::DemiBold);
        const QString subject =
            occurrence.summary.trimmed().isEmpty() ? QObject::tr("Untitled") : occurrence.summary;
        QString location = occurrence.location.simplified();
        QStringList notes;
        if (occurrence.isOccurrence)
            notes.append(QObject::tr("Repeats"));
        if (occurrence.hasMeetingRecord)
            notes.append(QObject::tr("Online meeting"));
        const QRect note(right.right() - 200, right.top(), 200, right.height());
        painter->drawText(note, Qt::AlignRight | Qt::AlignVCenter, notes.join(u"  ·  "_qs));
        const QRect words = right.adjusted(0, 0, notes.isEmpty() ? 0 : -210, 0);
        painter->setPen(text);
        painter->setFont(bold);
        const auto elided = [&](const QString &t) {
            return painter->fontMetrics().elidedText(t, Qt::ElideRight, words.width());
        };
        painter->drawText(words, Qt::AlignLeft | (location.isEmpty() ? Qt::AlignVCenter : Qt::AlignTop),
                          elided(subject));
        painter->setFont(option.font);
        painter->setPen(faint);
        painter->drawText(words, Qt::AlignLeft | Qt::AlignBottom, elided(location));
    }
};

} // namespace

QDate mondayOf(const QDate &day) {
    return day.addDays(1 - day.dayOfWeek());
}

WeekList::WeekList(QWidget *parent)
    : QTreeWidget(parent) {
    setObjectName(controls::weekList);
    setAccessibleName(tr("Appointments of the week"));
    setColumnCount(1);
    header()->hide();
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setFrameShape(QFrame::NoFrame);
    setUniformRowHeights(false);
    setItemDelegate(new WeekDelegate(this));
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *item) {
        if (item->parent())
            Q_EMIT opened();
    });
    connect(this, &QTreeWidget::currentItemChanged, this, &WeekList::selectionMoved);
}

QTreeWidgetItem *WeekList::addDay(const QDate &day, const QDate &today, bool empty) {
    auto *item = new QTreeWidgetItem(this);
    QString text = QLocale().toString(day, u"dddd, d MMMM"_qs);
    if (day == today)
        text += tr("  —  Today");
    else if (empty)
        text += tr("  —  nothing planned");
    item->setText(0, text);
    item->setData(0, dayRole, day);
    item->setData(0, todayRole, day == today);
    item->setFlags(Qt::ItemIsEnabled);
    return item;
}

void WeekList::addRow(QTreeWidgetItem *day, const Occurrence &occurrence) {
    auto *item = new OccurrenceItem(day, occurrence);
    item->setData(0, dayRole, day->data(0, dayRole));
    // What a screen reader says; the delegate draws the parts.
    item->setData(0, Qt::AccessibleTextRole,
                  timeText(occurrence) + u", "_qs + occurrence.summary + u", "_qs + occurrence.location);
    item->setToolTip(0, occurrence.location);
}

void WeekList::show(const CalendarSession &session, const QDate &day, const QDate &today) {
    const std::optional<Occurrence> before = selected();
    clear();
    const QDate monday = mondayOf(day);
    const QList<Occurrence> all =
        session.file().occurrences(monday.startOfDay(), monday.addDays(7).startOfDay());
    for (int i = 0; i < 7; ++i) {
        const QDate date = monday.addDays(i);
        QList<Occurrence> rows;
        for (const Occurrence &occurrence : all) {
            const QDate first = std::max(occurrence.start.date(), monday);
            const bool lasts =
                occurrence.start < date.addDays(1).startOfDay() && occurrence.end > date.startOfDay();
            if (occurrence.allDay ? lasts : first == date)
                rows.append(occurrence);
        }
        QTreeWidgetItem *heading = addDay(date, today, rows.isEmpty());
        for (const Occurrence &occurrence : std::as_const(rows))
            addRow(heading, occurrence);
    }
    expandAll();
    if (before && select(before->uid))
        return;
    // A new appointment begins on the day that is selected: today's, where the week has it.
    const bool hasToday = monday <= today && today < monday.addDays(7);
    setCurrentItem(topLevelItem(hasToday ? int(monday.daysTo(today)) : 0));
}

std::optional<Occurrence> WeekList::selected() const {
    const QTreeWidgetItem *item = currentItem();
    if (!item || !item->parent())
        return std::nullopt;
    return static_cast<const OccurrenceItem *>(item)->occurrence();
}

bool WeekList::select(const QString &uid) {
    for (int i = 0; i < topLevelItemCount(); ++i) {
        for (int j = 0; j < topLevelItem(i)->childCount(); ++j) {
            auto *item = static_cast<OccurrenceItem *>(topLevelItem(i)->child(j));
            if (item->occurrence().uid != uid)
                continue;
            setCurrentItem(item);
            return true;
        }
    }
    return false;
}

QDate WeekList::selectedDay() const {
    return currentItem() ? currentItem()->data(0, dayRole).toDate() : QDate();
}

void WeekList::keyPressEvent(QKeyEvent *event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selected())
        Q_EMIT opened();
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace mailhost
