// A grid in a window of its own, with two appointments and a trip in its week.
#pragma once

#include "standin/mailhost/windows/grid/CalendarGrid.h"
#include "standin/mailhost/windows/grid/GridAreas.h"
#include "standin/mailhost/windows/grid/TileRename.h"
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
        week = {timed(u"a"_s, u"Alpha"_s, 0, QTime(10, 0), 60), timed(u"b"_s, u"Beta"_s, 2, QTime(11, 0), 30),
                wholeDays(u"trip"_s, u"Trip"_s, 1, 2)};
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
        for (EventTileView *tile : grid->findChildren<EventTileView *>())
            if (tile->occurrence().uid == uid && tile->isVisible() && !tile->isGhost())
                return tile;
        return nullptr;
    }
    // In the window.
    QPoint middleOf(const EventTileView *tile) const {
        return tile->mapTo(window.get(), tile->rect().center());
    }
    QPoint emptyAt(int day, int minute) const {
        const QPoint point(left(day) + dayWidth() / 2, columns()->yOf(minute) + 3);
        return columns()->mapTo(window.get(), point);
    }
    int left(int day) const { return GridStyle(grid).gutter + day * dayWidth(); } // of the week's days
    int dayWidth() const { return (columns()->width() - GridStyle(grid).gutter) / 7; }
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

} // namespace mailhost
