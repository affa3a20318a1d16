// The calendar grid under a real pointer and keyboard.
#include "standin/mailhost/windows/AllDayRow.h"
#include "standin/mailhost/windows/CalendarGrid.h"
#include "standin/mailhost/windows/DayColumns.h"
#include "standin/mailhost/windows/TileRename.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/Warnings.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace mailhost {
namespace {

class CalendarGridTest : public testing::Test {
protected:
    const QDate monday{2026, 3, 9};

    void SetUp() override {
        defineTileClass();
        window = std::make_unique<QWidget>();
        grid = new CalendarGrid;
        auto *layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(grid);
        window->resize(1100, 900);
        grid->setClock([this] { return QDateTime(monday.addDays(1), QTime(11, 20)); });
        week = {timed(u"a"_qs, u"Alpha"_qs, 0, QTime(10, 0), 60),
                timed(u"b"_qs, u"Beta"_qs, 2, QTime(11, 0), 30), wholeDays(u"trip"_qs, u"Trip"_qs, 1, 2)};
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

    Occurrence timed(const QString &uid, const QString &subject, int day, const QTime &from, int minutes) {
        Occurrence occurrence;
        occurrence.uid = uid;
        occurrence.summary = subject;
        occurrence.start = QDateTime(monday.addDays(day), from);
        occurrence.end = occurrence.start.addSecs(minutes * 60);
        return occurrence;
    }
    Occurrence wholeDays(const QString &uid, const QString &subject, int day, int days) {
        Occurrence occurrence = timed(uid, subject, day, QTime(0, 0), days * 24 * 60);
        occurrence.allDay = true;
        return occurrence;
    }
    void show(CalendarGrid::Extent extent = CalendarGrid::Extent::Week) {
        grid->show(week, monday, extent, monday.addDays(1));
    }
    DayColumns *columns() const { return grid->findChild<DayColumns *>(); }
    TileRename *rename() const {
        for (TileRename *found : grid->findChildren<TileRename *>())
            if (found->isVisible())
                return found;
        return nullptr;
    }
    EventTileView *tile(const QString &uid) const {
        for (EventTileView *tile : grid->tiles())
            if (tile->occurrence().uid == uid)
                return tile;
        return nullptr;
    }
    // In the window.
    QPoint middleOf(const EventTileView *tile) const {
        return tile->mapTo(window.get(), tile->rect().center());
    }
    QPoint emptyAt(int day, int minute) const {
        const DayEdges edges = edgesNow();
        const QPoint point((edges.left(day) + edges.left(day + 1)) / 2, columns()->yOf(minute) + 3);
        return columns()->mapTo(window.get(), point);
    }
    DayEdges edgesNow() const { return {GridStyle(grid).gutter, columns()->width(), int(grid->extent())}; }
    int dayWidth() const { return edgesNow().left(1) - edgesNow().left(0); }
    int height(int minutes) const { return columns()->yOf(minutes); }
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
    int ghosts() const {
        int count = 0;
        for (const EventTileView *tile : grid->findChildren<EventTileView *>())
            count += tile->isGhost() && tile->isVisible();
        return count;
    }
    QDateTime at(int day, int hour, int minute = 0) const {
        return QDateTime(monday.addDays(day), QTime(hour, minute));
    }

    ProcessZone zone{"Europe/Berlin"};
    std::unique_ptr<QWidget> window;
    CalendarGrid *grid = nullptr;
    QList<Occurrence> week;
};

TEST_F(CalendarGridTest, AClickSelectsAndADoubleClickOpensOrBeginsANewOne) {
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    const QSignalSpy fresh(grid, &CalendarGrid::newRequested);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_qs)));
    ASSERT_TRUE(grid->selected());
    EXPECT_EQ(grid->selected()->uid, u"b"_qs);
    EXPECT_EQ(grid->selectedMoment(), at(2, 11));
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_qs)));
    EXPECT_EQ(opened.count(), 1);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, emptyAt(4, 13 * 60 + 20));
    EXPECT_FALSE(grid->selected());
    EXPECT_EQ(grid->selectedMoment(), at(4, 13));
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, emptyAt(3, 14 * 60 + 40));
    ASSERT_EQ(fresh.count(), 1);
    EXPECT_EQ(fresh[0][0].toDateTime(), at(3, 14, 30));
    EXPECT_FALSE(fresh[0][1].toBool());
    auto *allDay = grid->findChild<AllDayRow *>();
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {},
                       allDay->mapTo(window.get(), QPoint(edgesNow().left(5) + 20, 8)));
    ASSERT_EQ(fresh.count(), 2);
    EXPECT_EQ(fresh[1][0].toDateTime(), at(5, 0));
    EXPECT_TRUE(fresh[1][1].toBool());
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(CalendarGridTest, ADragMovesAcrossTimesAndDaysAndShowsWhereItIsGoing) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QRect before = tile(u"a"_qs)->geometry();
    startDrag(middleOf(tile(u"a"_qs)), middleOf(tile(u"a"_qs)) + QPoint(3 * dayWidth(), height(80)));
    EXPECT_EQ(ghosts(), 1);
    EXPECT_TRUE(tile(u"a"_qs)->state().dimmed);
    EXPECT_EQ(tile(u"a"_qs)->geometry(), before);
    release(middleOf(tile(u"a"_qs)) + QPoint(3 * dayWidth(), height(80)));
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].toDateTime(), at(3, 11, 15));
    // Nothing has changed until somebody shows it.
    EXPECT_EQ(ghosts(), 0);
    EXPECT_EQ(tile(u"a"_qs)->geometry(), before);
    EXPECT_FALSE(tile(u"a"_qs)->state().dimmed);
    drag(middleOf(tile(u"trip"_qs)), QPoint(2 * dayWidth(), 0));
    ASSERT_EQ(moved.count(), 2);
    EXPECT_EQ(moved[1][0].toDateTime(), at(3, 0));
}

TEST_F(CalendarGridTest, EdgesResize) {
    const QSignalSpy resized(grid, &CalendarGrid::resized);
    const auto edge = [this](const QString &uid, bool end) {
        const EventTileView *found = tile(uid);
        const QPoint inside = found->ends().allDay
                                  ? QPoint(end ? found->width() - 2 : 1, found->height() / 2)
                                  : QPoint(found->width() / 2, end ? found->height() - 2 : 1);
        return found->mapTo(window.get(), inside);
    };
    struct Case {
        QString uid;
        bool end;
        QPoint by;
        QDateTime start;
        qint64 seconds;
    };
    constexpr int hour = 3600;
    const QList<Case> cases{{u"a"_qs, true, {0, height(45)}, at(0, 10), 105 * 60},
                            {u"a"_qs, false, {0, -height(30)}, at(0, 9, 30), 90 * 60},
                            {u"a"_qs, true, {0, -height(200)}, at(0, 10), 15 * 60},
                            {u"trip"_qs, true, {dayWidth(), 0}, at(1, 0), 72 * hour},
                            {u"trip"_qs, false, {dayWidth(), 0}, at(2, 0), 24 * hour}};
    for (int i = 0; i < cases.size(); ++i) {
        drag(edge(cases[i].uid, cases[i].end), cases[i].by);
        ASSERT_EQ(resized.count(), i + 1);
        EXPECT_EQ(resized[i][0].toDateTime(), cases[i].start) << i;
        EXPECT_EQ(resized[i][1].toLongLong(), cases[i].seconds) << i;
    }
    moveTo(edge(u"a"_qs, true));
    EXPECT_EQ(columns()->cursor().shape(), Qt::SizeVerCursor);
    moveTo(middleOf(tile(u"a"_qs)));
    EXPECT_EQ(columns()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(tile(u"a"_qs)->state().hovered);
}

TEST_F(CalendarGridTest, WhatIsNoDragSendsNothing) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QPoint middle = middleOf(tile(u"a"_qs));
    drag(middle, QPoint(3, 3)); // a trembling click
    startDrag(middle, middle + QPoint(dayWidth(), 0));
    EXPECT_EQ(ghosts(), 1);
    QTest::keyClick(grid, Qt::Key_Escape);
    EXPECT_EQ(ghosts(), 0);
    release(middle + QPoint(dayWidth(), 0));
    startDrag(middle, middle + QPoint(dayWidth(), 0));
    moveTo(middle); // back again
    release(middle);
    EXPECT_EQ(moved.count(), 0);
    EXPECT_EQ(grid->selected()->uid, u"a"_qs);
}

TEST_F(CalendarGridTest, ADragNearTheEdgeScrolls) {
    window->resize(1100, 500);
    QTest::qWait(1);
    QScrollBar *bar = nullptr;
    for (QScrollArea *area : grid->findChildren<QScrollArea *>())
        if (area->widget() == columns())
            bar = area->verticalScrollBar();
    ASSERT_NE(bar, nullptr);
    const int before = bar->value();
    const QPoint middle = middleOf(tile(u"a"_qs));
    startDrag(middle, QPoint(middle.x(), window->height() - 2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->value() > before; }));
    QTest::keyClick(grid, Qt::Key_Escape);
}

TEST_F(CalendarGridTest, WhateverChangesUnderAGestureEndsIt) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QPoint middle = middleOf(tile(u"a"_qs));
    const QPoint to = middle + QPoint(dayWidth(), height(60));
    const QList<std::pair<const char *, std::function<void()>>> changes{
        {"shown again", [this] { show(); }},
        {"gone from the list", [this] { grid->show({}, monday, CalendarGrid::Extent::Week, monday); }},
        {"another week", [this] { grid->show(week, monday.addDays(7), CalendarGrid::Extent::Week, monday); }},
        {"the tile dies", [this] { delete tile(u"a"_qs); }},
        {"another extent", [this] { show(CalendarGrid::Extent::Day); }}};
    for (const auto &[name, change] : changes) {
        for (const bool dragging : {false, true}) {
            SCOPED_TRACE(name);
            show();
            press(middle);
            if (dragging)
                moveTo(to);
            change();
            moveTo(to + QPoint(5, 5));
            release(to);
            EXPECT_EQ(ghosts(), 0);
            EXPECT_EQ(moved.count(), 0);
        }
    }
    show();
    drag(middle, QPoint(dayWidth(), 0)); // and the next one works
    EXPECT_EQ(moved.count(), 1);
    // The whole grid goes with the answer to the signal.
    QObject::connect(grid, &CalendarGrid::moved, window.get(), [this] { delete grid; });
    drag(middle, QPoint(dayWidth(), 0));
}

TEST_F(CalendarGridTest, TheSubjectIsWrittenAnewInItsPlace) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    const auto begin = [this] {
        grid->select(u"a"_qs);
        grid->beginRename();
        ASSERT_NE(rename(), nullptr);
        EXPECT_TRUE(rename()->hasFocus());
    };
    begin();
    QTest::keyClicks(rename(), u"Gamma"_qs);
    QTest::keyClick(rename(), Qt::Key_Return);
    ASSERT_EQ(renamed.count(), 1);
    EXPECT_EQ(renamed[0][0].toString(), u"Gamma"_qs);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    begin();
    QTest::keyClicks(rename(), u"Delta"_qs);
    QTest::keyClick(rename(), Qt::Key_Escape);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    begin();
    QTest::keyClick(rename(), Qt::Key_Return); // unchanged
    EXPECT_EQ(renamed.count(), 1);
    begin();
    QTest::keyClicks(rename(), u"Eps"_qs);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_qs)));
    ASSERT_EQ(renamed.count(), 2);
    EXPECT_EQ(renamed[1][0].toString(), u"Eps"_qs);
    EXPECT_EQ(grid->selected()->uid, u"b"_qs);
}

TEST_F(CalendarGridTest, ASlowSecondClickOnTheSubjectRenames) {
    const QPoint subject = tile(u"a"_qs)->mapTo(window.get(), tile(u"a"_qs)->subjectRect().center());
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, subject);
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    EXPECT_EQ(rename(), nullptr); // the first one only selects
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, subject);
    EXPECT_TRUE(QTest::qWaitFor([this] { return rename() != nullptr; }, 2000));
}

TEST_F(CalendarGridTest, TypingGoesOnOverAChangeThatLeavesTheSubject) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    grid->select(u"a"_qs);
    grid->beginRename();
    QTest::keyClicks(rename(), u"Half"_qs);
    week[0] = timed(u"a"_qs, u"Alpha"_qs, 3, QTime(15, 0), 60);
    show();
    ASSERT_NE(rename(), nullptr);
    EXPECT_EQ(rename()->text(), u"Half"_qs);
    EXPECT_EQ(rename()->pos(), tile(u"a"_qs)->pos());
    week[0].summary = u"Somebody was faster"_qs;
    show();
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    grid->beginRename();
    week.removeFirst();
    show();
    EXPECT_EQ(rename(), nullptr);
    EXPECT_EQ(renamed.count(), 0);
}

TEST_F(CalendarGridTest, TheSelectionFollowsTheDayOfItsSeries) {
    for (int day = 3; day < 6; ++day) {
        week.append(timed(u"daily"_qs, u"Daily"_qs, day, QTime(8, 0), 15));
        week.last().instanceId = QString::number(day);
        week.last().isOccurrence = true;
    }
    show();
    ASSERT_TRUE(grid->select(u"daily"_qs, u"4"_qs));
    EXPECT_EQ(grid->selectedMoment(), at(4, 8));
    week[4].start = at(2, 16);
    week[4].end = at(2, 17);
    show();
    ASSERT_TRUE(grid->selected());
    EXPECT_EQ(grid->selected()->instanceId, u"4"_qs);
    EXPECT_EQ(grid->selectedMoment(), at(2, 16));
    EXPECT_TRUE(grid->selectedTile()->state().selected);
    ASSERT_TRUE(grid->select(u"daily"_qs));
    EXPECT_EQ(grid->selected()->start, at(2, 16)); // the first that is shown
    EXPECT_FALSE(grid->select(u"nobody"_qs));
    const QSignalSpy selection(grid, &CalendarGrid::selectionMoved);
    week.removeAt(4);
    show();
    EXPECT_FALSE(grid->selected());
    EXPECT_EQ(grid->selectedTile(), nullptr);
    EXPECT_EQ(selection.count(), 1);
    EXPECT_EQ(grid->selectedMoment(), at(2, 16)); // the place stays
    grid->show(week, monday.addDays(7), CalendarGrid::Extent::Week, monday);
    EXPECT_EQ(grid->selectedMoment(), at(9, 16)); // and turns with the pages
}

TEST_F(CalendarGridTest, TheKeyboardReachesEverythingAndTurnsThePage) {
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    const QSignalSpy fresh(grid, &CalendarGrid::newRequested);
    const QSignalSpy menu(grid, &CalendarGrid::menuRequested);
    EXPECT_FALSE(grid->selectedMoment().isValid());
    grid->select(u"a"_qs);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->selected()->uid, u"trip"_qs);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->selected()->uid, u"b"_qs);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(opened.count(), 1);
    QTest::keyClick(grid, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(grid, Qt::Key_Menu);
    EXPECT_EQ(menu.count(), 2);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_FALSE(grid->selected());
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Return);
    ASSERT_EQ(fresh.count(), 1);
    EXPECT_EQ(fresh[0][0].toDateTime(), grid->selectedMoment());
    EXPECT_EQ(grid->selectedMoment().date(), monday.addDays(3));
    QList<int> pages;
    QObject::connect(grid, &CalendarGrid::pageRequested, window.get(), [&](int days) {
        pages.append(days);
        grid->show(week, grid->firstDay().addDays(days), CalendarGrid::Extent::Week, monday);
    });
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(pages, QList<int>{7});
    EXPECT_EQ(grid->selectedMoment().date(), monday.addDays(7));
    QTest::keyClick(grid, Qt::Key_Left);
    EXPECT_EQ(pages, (QList<int>{7, -7}));
    EXPECT_EQ(grid->selectedMoment().date(), monday.addDays(6));
}

TEST_F(CalendarGridTest, ARightClickSelectsBeforeItAsksForTheMenu) {
    QStringList selected;
    QObject::connect(grid, &CalendarGrid::menuRequested, window.get(),
                     [&] { selected.append(grid->selected() ? grid->selected()->uid : u"nothing"_qs); });
    QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, middleOf(tile(u"b"_qs)));
    QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, emptyAt(5, 13 * 60));
    EXPECT_EQ(selected, (QStringList{u"b"_qs, u"nothing"_qs}));
}

TEST_F(CalendarGridTest, WhatThereIsNoRoomForIsFoldedAwayAndStillReached) {
    for (int i = 0; i < 12; ++i)
        week.append(timed(u"many%1"_qs.arg(i), u"Many"_qs, 4, QTime(9, 0), 60));
    show();
    int shown = 0;
    for (const EventTileView *tile : grid->tiles()) {
        shown += tile->occurrence().uid.startsWith(u"many") && tile->isVisible();
        EXPECT_TRUE(!tile->isVisible() || tile->width() >= 30);
    }
    EXPECT_GT(shown, 0);
    EXPECT_LT(shown, 12);
    const QPoint mark(edgesNow().left(5) - 16, columns()->yOf(9 * 60) + 6);
    EXPECT_EQ(columns()->foldedAt(mark).size(), 12 - shown);
    for (const char *missing : {"raise()", "grabbing the keyboard"}) // of the platform without a display
        expectWarning(QString::fromLatin1(missing));
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, columns()->mapTo(window.get(), mark));
    auto *menu = grid->findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 12 - shown);
    menu->actions().last()->trigger();
    menu->close();
    ASSERT_TRUE(grid->selected());
    EXPECT_TRUE(grid->selectedTile()->isVisible());
}

TEST_F(CalendarGridTest, ADayWithAClockChangeDropsOnTheClock) {
    const QDate sunday(2026, 3, 29);
    Occurrence early = timed(u"early"_qs, u"Early"_qs, 0, QTime(0, 0), 0);
    early.start = QDateTime(sunday, QTime(1, 0));
    early.end = early.start.addSecs(3600); // at 3:00 on the clock
    week = {early};
    grid->show(week, sunday, CalendarGrid::Extent::Day, sunday);
    grid->select(u"early"_qs);
    QTest::qWait(1);
    EXPECT_EQ(tile(u"early"_qs)->height(), columns()->yOf(180) - columns()->yOf(60) - 1);
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QSignalSpy resized(grid, &CalendarGrid::resized);
    const QPoint top = tile(u"early"_qs)->mapTo(window.get(), QPoint(200, 20));
    drag(top, QPoint(0, height(90)));
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].toDateTime().toUTC(), QDateTime(sunday, QTime(1, 30), Qt::UTC)); // 2:30 is 3:30
    const QPoint bottom =
        tile(u"early"_qs)->mapTo(window.get(), QPoint(200, tile(u"early"_qs)->height() - 2));
    drag(bottom, QPoint(0, height(60)));
    ASSERT_EQ(resized.count(), 1);
    EXPECT_EQ(resized[0][1].toLongLong(), 2 * 3600); // 1:00 to 4:00 on the clock
}

TEST_F(CalendarGridTest, TheLineOfTheCurrentTimeIsOnTodayOnly) {
    const auto line = [this]() -> QWidget * {
        for (QWidget *child : columns()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            if (!qobject_cast<EventTileView *>(child))
                return child;
        return nullptr;
    };
    ASSERT_NE(line(), nullptr);
    EXPECT_TRUE(line()->isVisible());
    EXPECT_NEAR(line()->geometry().center().y(), columns()->yOf(11 * 60 + 20), 1);
    EXPECT_NEAR(line()->geometry().right(), edgesNow().left(2), 2);
    grid->show(week, monday.addDays(7), CalendarGrid::Extent::Week, monday.addDays(1));
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(CalendarGridTest, EachTileSaysWhatItIs) {
    Occurrence &call = week[0];
    call.location = u"Room 4"_qs;
    call.isOccurrence = true;
    call.hasMeetingRecord = true;
    call.summary.clear();
    show();
    grid->select(u"a"_qs);
    const auto interface = [](QWidget *widget) { return QAccessible::queryAccessibleInterface(widget); };
    EXPECT_EQ(interface(tile(u"a"_qs))->text(QAccessible::Name).remove(u":00"_qs),
              u"Untitled, Monday 9 March, 10 to 11, Room 4, repeats, online meeting"_qs);
    EXPECT_EQ(interface(tile(u"trip"_qs))->text(QAccessible::Name),
              u"Trip, Tuesday 10 March to Wednesday 11 March, all day"_qs);
    EXPECT_TRUE(interface(tile(u"a"_qs))->state().focused);
    EXPECT_FALSE(interface(tile(u"b"_qs))->state().selected);
    EXPECT_EQ(interface(grid)->focusChild()->object(), tile(u"a"_qs));
    EXPECT_EQ(interface(grid)->text(QAccessible::Name), u"Calendar"_qs);
}

TEST_F(CalendarGridTest, TilesAreMadeThroughTheObjectRuntimeAndKeptForTheirAppointment) {
    static int made;
    made = 0;
    static rt::Method *method = nullptr;
    method = rt::instanceMethod(rt::classNamed(u"CCEventTileView"_qs),
                                rt::Selector("initWithFrame:andController:andFillColor:isGhost:"));
    ASSERT_NE(method, nullptr);
    static rt::Implementation original;
    original = method->implementation;
    method->implementation = [](rt::Object *self, rt::Selector command, rt::Args arguments) {
        ++made;
        return original(self, command, arguments);
    };
    const QPointer<EventTileView> before = tile(u"b"_qs);
    week.prepend(timed(u"new"_qs, u"New"_qs, 0, QTime(7, 0), 30));
    week[1].start = at(4, 10);
    week[1].end = at(4, 11);
    show();
    method->implementation = original;
    EXPECT_EQ(made, 1);
    EXPECT_EQ(tile(u"b"_qs), before);
}

} // namespace
} // namespace mailhost
