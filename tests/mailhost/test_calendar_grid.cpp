// The calendar grid under real pointer and key events, and what it tells assistive programs.
#include "standin/mailhost/windows/grid/CalendarGrid.h"
#include "standin/mailhost/windows/grid/GridAreas.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/Warnings.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace mailhost {
namespace {

const QDate monday(2026, 3, 9);

QDateTime at(int day, int hour, int minute = 0) {
    return QDateTime(monday.addDays(day), QTime(hour, minute));
}

Occurrence timed(const QString &uid, const QString &subject, const QDateTime &start, int minutes) {
    Occurrence occurrence;
    occurrence.uid = uid;
    occurrence.summary = subject;
    occurrence.start = start;
    occurrence.end = start.addSecs(minutes * 60);
    return occurrence;
}

// A grid in a window of its own, with two appointments and a trip in its week.
class CalendarGridTest : public testing::Test {
protected:
    void SetUp() override {
        defineTileClass();
        auto *layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(grid);
        window->resize(1100, 900);
        week.last().allDay = true;
        show();
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        grid->setFocus();
    }
    void TearDown() override {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show(int weeksLater = 0) {
        grid->show(week, monday.addDays(7 * weeksLater), CalendarGrid::Extent::Week, monday.addDays(1));
    }
    DayColumns *columns() const { return grid->findChild<DayColumns *>(); }
    template<typename T>
    QList<T *> visible() const {
        QList<T *> found = grid->findChildren<T *>();
        found.removeIf([](const T *widget) { return !widget->isVisible(); });
        return found;
    }
    QLineEdit *rename() const { return visible<QLineEdit>().value(0); }
    EventTileView *tile(const QString &uid) const {
        for (EventTileView *tile : visible<EventTileView>())
            if (tile->occurrence().uid == uid && !tile->isGhost())
                return tile;
        return nullptr;
    }
    int ghosts() const {
        const auto tiles = visible<EventTileView>();
        return int(std::count_if(tiles.begin(), tiles.end(), [](auto *tile) { return tile->isGhost(); }));
    }
    // Points in the window.
    QPoint middleOf(const EventTileView *tile) const {
        return tile->mapTo(window.get(), tile->rect().center());
    }
    QPoint emptyAt(int day, int minute) const {
        const QPoint point(left(day) + dayWidth() / 2, height(minute) + 3);
        return columns()->mapTo(window.get(), point);
    }
    int left(int day) const {
        const int gutter = GridStyle(grid).gutter;
        return gutter + (columns()->width() - gutter) * day / 7;
    }
    int dayWidth() const { return left(1) - left(0); }
    int height(int minutes) const { return columns()->yOf(minutes); }

    void click(const QPoint &point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(window->windowHandle(), button, {}, point);
    }
    void doubleClick(const QPoint &point) {
        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, point);
    }
    void press(const QPoint &point) { QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, point); }
    void moveTo(const QPoint &point) { QTest::mouseMove(window->windowHandle(), point); }
    void release(const QPoint &point) {
        QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, point);
    }
    void startDrag(const QPoint &from, const QPoint &to) {
        press(from);
        moveTo(from + (to - from) / 2);
        moveTo(to);
    }
    void drag(const QPoint &from, const QPoint &by) {
        startDrag(from, from + by);
        release(from + by);
    }
    void key(int key) { QTest::keyClick(window->windowHandle(), Qt::Key(key)); }

    ProcessZone zone{"Europe/Berlin"};
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    CalendarGrid *grid = new CalendarGrid;
    QList<Occurrence> week{timed(u"a"_s, u"Alpha"_s, at(0, 10), 60), timed(u"b"_s, u"Beta"_s, at(2, 11), 30),
                           timed(u"trip"_s, u"Trip"_s, at(1, 0), 2 * minutesPerDay)};
};

TEST_F(CalendarGridTest, AClickSelectsAndADoubleClickOpensOrBeginsANewOne) {
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    const QSignalSpy fresh(grid, &CalendarGrid::newRequested);
    click(middleOf(tile(u"b"_s)));
    EXPECT_EQ(grid->selectedTile(), tile(u"b"_s));
    EXPECT_EQ(grid->selectedMoment(), at(2, 11));
    doubleClick(middleOf(tile(u"b"_s)));
    EXPECT_EQ(opened.count(), 1);
    QString asked; // for which the menu was wanted
    QObject::connect(grid, &CalendarGrid::menuRequested, window.get(),
                     [&] { asked = grid->selected().value_or(Occurrence()).uid; });
    click(middleOf(tile(u"a"_s)), Qt::RightButton);
    EXPECT_EQ(asked, u"a"_s);
    click(emptyAt(4, 13 * 60 + 20));
    EXPECT_FALSE(grid->selected());
    EXPECT_EQ(grid->selectedMoment(), at(4, 13));
    doubleClick(emptyAt(3, 14 * 60 + 40));
    doubleClick(grid->findChild<AllDayRow *>()->mapTo(window.get(), QPoint(left(5) + 20, 8)));
    ASSERT_EQ(fresh.count(), 2);
    EXPECT_EQ(fresh[0], (QVariantList{at(3, 14, 30), false}));
    EXPECT_EQ(fresh[1], (QVariantList{at(5, 0), true}));
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(CalendarGridTest, ADragMovesAcrossTimesAndDaysAndAnEdgeResizes) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QSignalSpy resized(grid, &CalendarGrid::resized);
    const auto gripOf = [this](const QString &uid, Grip grip) {
        const EventTileView *found = tile(uid);
        const int length = found->piece().allDay ? found->width() : found->height();
        const int along = grip == Grip::Body ? length / 2 : grip == Grip::End ? length - 2 : 1;
        return found->mapTo(window.get(), found->piece().allDay ? QPoint(along, found->height() / 2)
                                                                : QPoint(found->width() / 2, along));
    };
    struct Case {
        QString uid;
        Grip grip;
        QPoint by;
        QDateTime start;
        int minutes = 0;
    };
    const QList<Case> cases{{u"a"_s, Grip::Body, {3 * dayWidth(), height(80)}, at(3, 11, 15)},
                            {u"trip"_s, Grip::Body, {2 * dayWidth(), 0}, at(3, 0)},
                            {u"a"_s, Grip::End, {0, height(45)}, at(0, 10), 105},
                            {u"a"_s, Grip::Begin, {0, -height(30)}, at(0, 9, 30), 90},
                            {u"trip"_s, Grip::End, {dayWidth(), 0}, at(1, 0), 3 * minutesPerDay},
                            {u"trip"_s, Grip::Begin, {dayWidth(), 0}, at(2, 0), minutesPerDay}};
    const QRect before = tile(u"a"_s)->geometry();
    for (const Case &c : cases) {
        SCOPED_TRACE(qPrintable(u"%1 %2"_s.arg(c.uid).arg(int(c.grip))));
        drag(gripOf(c.uid, c.grip), c.by);
        const QSignalSpy &told = c.grip == Grip::Body ? moved : resized;
        ASSERT_FALSE(told.isEmpty());
        EXPECT_EQ(told.last()[0].toDateTime(), c.start);
        EXPECT_EQ(told.last().value(1).toLongLong(), c.minutes * 60);
    }
    EXPECT_EQ(moved.count() + resized.count(), cases.size());
    EXPECT_EQ(tile(u"a"_s)->geometry(), before) << "nothing has changed until somebody shows it";
    moveTo(gripOf(u"a"_s, Grip::End));
    EXPECT_EQ(columns()->cursor().shape(), Qt::SizeVerCursor);
    EXPECT_TRUE(tile(u"a"_s)->state().hovered);
}

TEST_F(CalendarGridTest, WhateverChangesUnderAGestureEndsIt) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QPoint middle = middleOf(tile(u"a"_s));
    const QPoint to = middle + QPoint(dayWidth(), height(60));
    const QList<std::pair<const char *, std::function<void()>>> changes{
        {"shown again", [this] { show(); }},
        {"gone from the list", [this] { grid->show({}, monday, CalendarGrid::Extent::Week, monday); }},
        {"another week", [this] { show(1); }},
        {"another extent", [this] { grid->show(week, monday, CalendarGrid::Extent::Day, monday); }},
        {"Escape", [this] { key(Qt::Key_Escape); }},
        {"back again", [&] { moveTo(middle); }}};
    for (const auto &[name, change] : changes) {
        SCOPED_TRACE(name);
        show();
        startDrag(middle, to);
        EXPECT_EQ(ghosts(), 1);
        change();
        release(middle);
        EXPECT_EQ(ghosts(), 0);
    }
    show();
    drag(middle, QPoint(3, 3)); // a trembling click
    EXPECT_EQ(moved.count(), 0);
    // The whole grid may go with the answer to the signal.
    QObject::connect(grid, &CalendarGrid::moved, window.get(), [this] { delete grid; });
    drag(middle, QPoint(dayWidth(), 0));
    EXPECT_EQ(window->findChild<CalendarGrid *>(), nullptr);
}

TEST_F(CalendarGridTest, TheSubjectIsWrittenAnewInItsPlace) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    const auto type = [this](const QString &subject) {
        grid->select(u"a"_s);
        grid->beginRename();
        ASSERT_NE(rename(), nullptr);
        EXPECT_TRUE(rename()->hasFocus());
        QTest::keyClicks(rename(), subject);
        key(Qt::Key_Down); // does not reach the grid
        EXPECT_EQ(grid->selected()->uid, u"a"_s);
    };
    type(u"Gamma"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    type(u"Delta"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    type(QString());
    key(Qt::Key_Return); // unchanged
    type(u"Eps"_s);
    click(middleOf(tile(u"b"_s)));
    ASSERT_EQ(renamed.count(), 2);
    EXPECT_EQ(renamed[0][0].toString(), u"Gamma"_s);
    EXPECT_EQ(renamed[1][0].toString(), u"Eps"_s);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
    EXPECT_TRUE(grid->hasFocus());
}

TEST_F(CalendarGridTest, TypingGoesOnOverAChangeThatLeavesTheSubject) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    grid->select(u"a"_s);
    grid->beginRename();
    QTest::keyClicks(rename(), u"Half"_s);
    week[0] = timed(u"a"_s, u"Alpha"_s, at(3, 15), 60);
    show();
    ASSERT_NE(rename(), nullptr);
    EXPECT_EQ(rename()->text(), u"Half"_s);
    EXPECT_EQ(rename()->pos(), tile(u"a"_s)->pos());
    week[0].summary = u"Somebody was faster"_s;
    show();
    EXPECT_EQ(rename(), nullptr);
    EXPECT_EQ(renamed.count(), 0);
}

TEST_F(CalendarGridTest, TheKeyboardReachesEverythingAndTurnsThePage) {
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    const QSignalSpy fresh(grid, &CalendarGrid::newRequested);
    const QSignalSpy menu(grid, &CalendarGrid::menuRequested);
    grid->select(u"a"_s);
    key(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), tile(u"trip"_s));
    key(Qt::Key_PageDown); // moves the view and not the selection
    EXPECT_EQ(QApplication::focusWidget(), tile(u"trip"_s));
    key(Qt::Key_Right);
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(opened.count(), 1);
    QTest::keyClick(window->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    key(Qt::Key_Menu);
    EXPECT_EQ(menu.count(), 2);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    EXPECT_FALSE(grid->selected());
    key(Qt::Key_Return);
    ASSERT_EQ(fresh.count(), 1);
    EXPECT_EQ(fresh[0], (QVariantList{at(3, 10, 30), false}));
    QList<int> pages;
    QObject::connect(grid, &CalendarGrid::pageRequested, window.get(), [&](int days) {
        pages.append(days);
        show(grid->firstDay() == monday ? 1 : 0);
    });
    for (int i = 0; i < 4; ++i)
        key(Qt::Key_Right);
    EXPECT_EQ(grid->selectedMoment().date(), monday.addDays(7));
    key(Qt::Key_Left);
    EXPECT_EQ(pages, (QList<int>{7, -7}));
    EXPECT_EQ(grid->selectedMoment().date(), monday.addDays(6));
}

TEST_F(CalendarGridTest, ArrowsGoFromOneToTheNextInTheDay) {
    week += {timed(u"c"_s, u"Gamma"_s, at(1, 9), 60), timed(u"d"_s, u"Delta"_s, at(1, 9, 30), 60)};
    show();
    grid->select(u"c"_s);
    const std::pair<Qt::Key, QString> steps[] = {
        {Qt::Key_Down, u"d"_s}, {Qt::Key_Down, {}},      {Qt::Key_Down, {}},       {Qt::Key_Up, u"d"_s},
        {Qt::Key_Up, u"c"_s},   {Qt::Key_Up, u"trip"_s}, {Qt::Key_Up, u"trip"_s},  {Qt::Key_End, u"d"_s},
        {Qt::Key_Down, {}},     {Qt::Key_Down, {}},      {Qt::Key_Home, u"trip"_s}};
    for (const auto &[arrow, uid] : steps) {
        key(arrow);
        EXPECT_EQ(grid->selected().value_or(Occurrence()).uid, uid) << arrow;
    }
}

TEST_F(CalendarGridTest, TheGridIsOneStopForTab) {
    auto *before = new QLineEdit;
    auto *after = new QLineEdit;
    qobject_cast<QVBoxLayout *>(window->layout())->insertWidget(0, before);
    window->layout()->addWidget(after);
    before->show();
    after->show();
    QWidget::setTabOrder(before, grid);
    QWidget::setTabOrder(grid, after);
    for (const bool selectedBefore : {false, true}) {
        before->setFocus();
        key(Qt::Key_Tab);
        ASSERT_TRUE(grid->selected());
        EXPECT_EQ(QApplication::focusWidget(), grid->selectedTile()) << selectedBefore;
        key(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), after) << selectedBefore;
        key(Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), grid->selectedTile()) << selectedBefore;
        key(Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), before) << selectedBefore;
    }
}

TEST_F(CalendarGridTest, TheKeyboardNeverLeavesTheGridWithATile) {
    grid->select(u"b"_s);
    QWidget other; // an editor, while the calendar changes
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    week.removeAt(1);
    show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(QApplication::focusWidget(), grid);
}

TEST_F(CalendarGridTest, EachTileSaysWhatItIs) {
    week[0].location = u"Room 4"_s;
    week[0].isOccurrence = true;
    week[0].hasMeetingRecord = true;
    week[0].summary.clear();
    show();
    grid->select(u"a"_s);
    const auto interface = [](QWidget *widget) { return QAccessible::queryAccessibleInterface(widget); };
    EXPECT_EQ(interface(tile(u"a"_s))->text(QAccessible::Name).remove(u":00"_s),
              u"Untitled, Monday 9 March, 10 to 11, Room 4, repeats, online meeting"_s);
    EXPECT_EQ(interface(tile(u"trip"_s))->text(QAccessible::Name),
              u"Trip, Tuesday 10 March to Wednesday 11 March, all day"_s);
    EXPECT_TRUE(interface(tile(u"a"_s))->state().focused);
    EXPECT_TRUE(interface(tile(u"a"_s))->state().selected);
    EXPECT_FALSE(interface(tile(u"b"_s))->state().selected);
    EXPECT_EQ(interface(tile(u"a"_s))->role(), QAccessible::ListItem);
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    interface(tile(u"b"_s))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened.count(), 1);
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
    EXPECT_EQ(interface(grid)->text(QAccessible::Description).remove(u":00"_s), u"Wednesday 11 March, 11"_s);
    EXPECT_EQ(interface(grid)->text(QAccessible::Name), u"Calendar"_s);
}

} // namespace
} // namespace mailhost
