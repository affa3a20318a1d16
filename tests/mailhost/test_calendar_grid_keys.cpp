// The calendar grid under the keyboard: selection, walking, subjects typed in place, and what is read out.
#include "tests/mailhost/CalendarGridFixture.h"

namespace mailhost {
namespace {

TEST_F(CalendarGridTest, TheSubjectIsWrittenAnewInItsPlace) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    const auto begin = [this] {
        grid->select(u"a"_s);
        grid->beginRename();
        ASSERT_NE(rename(), nullptr);
        EXPECT_TRUE(rename()->hasFocus());
    };
    begin();
    QTest::keyClicks(rename(), u"Gamma"_s);
    QTest::keyClick(rename(), Qt::Key_Return);
    ASSERT_EQ(renamed.count(), 1);
    EXPECT_EQ(renamed[0][0].toString(), u"Gamma"_s);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    begin();
    QTest::keyClicks(rename(), u"Delta"_s);
    QTest::keyClick(rename(), Qt::Key_Escape);
    EXPECT_EQ(rename(), nullptr);
    EXPECT_TRUE(grid->hasFocus());
    begin();
    QTest::keyClick(rename(), Qt::Key_Return); // unchanged
    EXPECT_EQ(renamed.count(), 1);
    begin();
    QTest::keyClicks(rename(), u"Eps"_s);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middleOf(tile(u"b"_s)));
    ASSERT_EQ(renamed.count(), 2);
    EXPECT_EQ(renamed[1][0].toString(), u"Eps"_s);
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
}

TEST_F(CalendarGridTest, TypingGoesOnOverAChangeThatLeavesTheSubject) {
    const QSignalSpy renamed(grid, &CalendarGrid::renamed);
    grid->select(u"a"_s);
    grid->beginRename();
    QTest::keyClicks(rename(), u"Half"_s);
    week[0] = timed(u"a"_s, u"Alpha"_s, 3, QTime(15, 0), 60);
    show();
    ASSERT_NE(rename(), nullptr);
    EXPECT_EQ(rename()->text(), u"Half"_s);
    EXPECT_EQ(rename()->pos(), tile(u"a"_s)->pos());
    week[0].summary = u"Somebody was faster"_s;
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
        week.append(timed(u"daily"_s, u"Daily"_s, day, QTime(8, 0), 15));
        week.last().instanceId = QString::number(day);
        week.last().isOccurrence = true;
    }
    show();
    ASSERT_TRUE(grid->select(u"daily"_s, u"4"_s));
    EXPECT_EQ(grid->selectedMoment(), at(4, 8));
    week[4].start = at(2, 16);
    week[4].end = at(2, 17);
    show();
    ASSERT_TRUE(grid->selected());
    EXPECT_EQ(grid->selected()->instanceId, u"4"_s);
    EXPECT_EQ(grid->selectedMoment(), at(2, 16));
    EXPECT_TRUE(grid->selectedTile()->state().selected);
    ASSERT_TRUE(grid->select(u"daily"_s));
    EXPECT_EQ(grid->selected()->start, at(2, 16)); // the first that is shown
    EXPECT_FALSE(grid->select(u"nobody"_s));
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
    grid->select(u"a"_s);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->selected()->uid, u"trip"_s);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->selected()->uid, u"b"_s);
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
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        ASSERT_TRUE(grid->selected());
        EXPECT_EQ(QApplication::focusWidget(), grid->selectedTile()) << selectedBefore;
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), after) << selectedBefore;
        QTest::keyClick(window->windowHandle(), Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), grid->selectedTile()) << selectedBefore;
        QTest::keyClick(window->windowHandle(), Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), before) << selectedBefore;
    }
}

TEST_F(CalendarGridTest, TheKeyboardFollowsTheSelectedTileAndNeverLeavesTheGridWithIt) {
    grid->select(u"a"_s);
    EXPECT_EQ(QApplication::focusWidget(), tile(u"a"_s));
    QTest::keyClick(window->windowHandle(), Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), tile(u"trip"_s));
    QTest::keyClick(window->windowHandle(), Qt::Key_PageDown); // moves the view and not the selection
    EXPECT_EQ(QApplication::focusWidget(), tile(u"trip"_s));
    week.removeLast();
    show();
    EXPECT_EQ(QApplication::focusWidget(), grid);
    grid->select(u"b"_s);
    const QImage withKeyboard = tile(u"b"_s)->grab().toImage();
    QWidget other; // an editor, while the calendar changes
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_NE(tile(u"b"_s)->grab().toImage(), withKeyboard) << "it is seen which one has the keyboard";
    week.removeLast();
    show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(QApplication::focusWidget(), grid);
}

TEST_F(CalendarGridTest, EachTileSaysWhatItIs) {
    Occurrence &call = week[0];
    call.location = u"Room 4"_s;
    call.isOccurrence = true;
    call.hasMeetingRecord = true;
    call.summary.clear();
    show();
    grid->select(u"a"_s);
    const auto interface = [](QWidget *widget) { return QAccessible::queryAccessibleInterface(widget); };
    EXPECT_EQ(interface(tile(u"a"_s))->text(QAccessible::Name).remove(u":00"_s),
              u"Untitled, Monday 9 March, 10 to 11, Room 4, repeats, online meeting"_s);
    EXPECT_EQ(interface(tile(u"trip"_s))->text(QAccessible::Name),
              u"Trip, Tuesday 10 March to Wednesday 11 March, all day"_s);
    EXPECT_TRUE(interface(tile(u"a"_s))->state().focused);
    EXPECT_FALSE(interface(tile(u"b"_s))->state().selected);
    EXPECT_FALSE(interface(tile(u"b"_s))->state().focused);
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
