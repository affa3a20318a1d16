// The calendar grid under a real pointer.
#include "tests/mailhost/CalendarGridFixture.h"

namespace mailhost {
namespace {

TEST_F(CalendarGridTest, AClickSelectsAndADoubleClickOpensOrBeginsANewOne) {
    const QSignalSpy opened(grid, &CalendarGrid::opened);
    const QSignalSpy fresh(grid, &CalendarGrid::newRequested);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_s)));
    ASSERT_TRUE(grid->selected());
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
    EXPECT_EQ(grid->selectedMoment(), at(2, 11));
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_s)));
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
                       allDay->mapTo(window.get(), QPoint(left(5) + 20, 8)));
    ASSERT_EQ(fresh.count(), 2);
    EXPECT_EQ(fresh[1][0].toDateTime(), at(5, 0));
    EXPECT_TRUE(fresh[1][1].toBool());
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(CalendarGridTest, ADragMovesAcrossTimesAndDaysAndShowsWhereItIsGoing) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QRect before = tile(u"a"_s)->geometry();
    startDrag(middleOf(tile(u"a"_s)), middleOf(tile(u"a"_s)) + QPoint(3 * dayWidth(), height(80)));
    EXPECT_EQ(ghosts(), 1);
    EXPECT_TRUE(tile(u"a"_s)->state().dimmed);
    EXPECT_EQ(tile(u"a"_s)->geometry(), before);
    release(middleOf(tile(u"a"_s)) + QPoint(3 * dayWidth(), height(80)));
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].toDateTime(), at(3, 11, 15));
    // Nothing has changed until somebody shows it.
    EXPECT_EQ(ghosts(), 0);
    EXPECT_EQ(tile(u"a"_s)->geometry(), before);
    EXPECT_FALSE(tile(u"a"_s)->state().dimmed);
    drag(middleOf(tile(u"trip"_s)), QPoint(2 * dayWidth(), 0));
    ASSERT_EQ(moved.count(), 2);
    EXPECT_EQ(moved[1][0].toDateTime(), at(3, 0));
}

TEST_F(CalendarGridTest, EdgesResize) {
    const QSignalSpy resized(grid, &CalendarGrid::resized);
    const auto edge = [this](const QString &uid, bool end) {
        const EventTileView *found = tile(uid);
        const QPoint inside = found->piece().allDay
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
    const QList<Case> cases{{u"a"_s, true, {0, height(45)}, at(0, 10), 105 * 60},
                            {u"a"_s, false, {0, -height(30)}, at(0, 9, 30), 90 * 60},
                            {u"a"_s, true, {0, -height(200)}, at(0, 10), 15 * 60},
                            {u"trip"_s, true, {dayWidth(), 0}, at(1, 0), 72 * hour},
                            {u"trip"_s, false, {dayWidth(), 0}, at(2, 0), 24 * hour}};
    for (int i = 0; i < cases.size(); ++i) {
        drag(edge(cases[i].uid, cases[i].end), cases[i].by);
        ASSERT_EQ(resized.count(), i + 1);
        EXPECT_EQ(resized[i][0].toDateTime(), cases[i].start) << i;
        EXPECT_EQ(resized[i][1].toLongLong(), cases[i].seconds) << i;
    }
    moveTo(edge(u"a"_s, true));
    EXPECT_EQ(columns()->cursor().shape(), Qt::SizeVerCursor);
    moveTo(middleOf(tile(u"a"_s)));
    EXPECT_EQ(columns()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(tile(u"a"_s)->state().hovered);
}

TEST_F(CalendarGridTest, WhatIsNoDragSendsNothing) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QPoint middle = middleOf(tile(u"a"_s));
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
    EXPECT_EQ(grid->selected()->uid, u"a"_s);
}

TEST_F(CalendarGridTest, WhateverChangesUnderAGestureEndsIt) {
    const QSignalSpy moved(grid, &CalendarGrid::moved);
    const QPoint middle = middleOf(tile(u"a"_s));
    const QPoint to = middle + QPoint(dayWidth(), height(60));
    const QList<std::pair<const char *, std::function<void()>>> changes{
        {"shown again", [this] { show(); }},
        {"gone from the list", [this] { grid->show({}, monday, CalendarGrid::Extent::Week, monday); }},
        {"another week", [this] { grid->show(week, monday.addDays(7), CalendarGrid::Extent::Week, monday); }},
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

TEST_F(CalendarGridTest, ARightClickSelectsBeforeItAsksForTheMenu) {
    QStringList selected;
    QObject::connect(grid, &CalendarGrid::menuRequested, window.get(),
                     [&] { selected.append(grid->selected() ? grid->selected()->uid : u"nothing"_s); });
    QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, middleOf(tile(u"b"_s)));
    QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, emptyAt(5, 13 * 60));
    EXPECT_EQ(selected, (QStringList{u"b"_s, u"nothing"_s}));
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
    EXPECT_NEAR(line()->geometry().right(), left(2), 2);
    grid->show(week, monday.addDays(7), CalendarGrid::Extent::Week, monday.addDays(1));
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(CalendarGridTest, TilesAreMadeThroughTheObjectRuntimeAndKeptForTheirAppointment) {
    static int made;
    made = 0;
    static rt::Method *method = nullptr;
    method = rt::instanceMethod(rt::classNamed(u"CCEventTileView"_s),
                                rt::Selector("initWithFrame:andController:andFillColor:isGhost:"));
    ASSERT_NE(method, nullptr);
    static rt::Implementation original;
    original = method->implementation;
    method->implementation = [](rt::Object *self, rt::Selector command, rt::Args arguments) {
        ++made;
        return original(self, command, arguments);
    };
    const QPointer<EventTileView> before = tile(u"b"_s);
    week.prepend(timed(u"new"_s, u"New"_s, 0, QTime(7, 0), 30));
    week[1].start = at(4, 10);
    week[1].end = at(4, 11);
    show();
    method->implementation = original;
    EXPECT_EQ(made, 1);
    EXPECT_EQ(tile(u"b"_s), before);
}

} // namespace
} // namespace mailhost
