// The closing of windows, sheets and modal sessions.
#include "platform/toolkit/Windows.h"
#include "tests/support/Warnings.h"

#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

TEST(WindowClosing, IsReportedToObserversWhoseOwnersExist) {
    QWidget window;
    QStringList told;
    QObject owner;
    auto doomed = std::make_unique<QObject>();
    platform::observeWindowWillClose(&owner, [&](QWidget *closing) {
        EXPECT_EQ(closing, &window);
        told.append(u"first"_s);
        doomed.reset();
        platform::observeWindowWillClose(&owner, [&](QWidget *) { told.append(u"late"_s); });
        throw std::runtime_error("x");
    });
    platform::observeWindowWillClose(doomed.get(),
                                     [](QWidget *) { ADD_FAILURE() << "its owner is deleted"; });
    expectWarning(u"'s handler: "_s);
    platform::windowWillClose(&window);
    EXPECT_EQ(told, QStringList{u"first"_s});
    platform::windowWillClose(&window);
    EXPECT_EQ(told, (QStringList{u"first"_s, u"first"_s, u"late"_s}));
}

// --- sheets and modal sessions

bool takesClicks(QPushButton &button) {
    QSignalSpy clicks(&button, &QPushButton::clicked);
    QWindow *window = button.window()->windowHandle();
    QTest::mouseClick(window, Qt::LeftButton, {}, button.mapTo(button.window(), button.rect().center()));
    return clicks.count() == 1;
}

class Sheet : public testing::Test {
protected:
    Sheet() {
        parent->show();
        other->show();
    }

    void begin(QWidget *window) {
        platform::beginSheet(&sheet, window, [this](int result) { results.append(result); });
    }

    std::unique_ptr<QWidget> parent = std::make_unique<QWidget>();
    std::unique_ptr<QWidget> other = std::make_unique<QWidget>();
    QPushButton *parentButton = new QPushButton(u"p"_s, parent.get());
    QPushButton *otherButton = new QPushButton(u"o"_s, other.get());
    QMessageBox sheet; // application-modal unless it becomes a sheet
    QList<int> results;
    QWidget window;
    platform::ModalSession session;
};

TEST_F(Sheet, BlocksItsOwnWindowOnlyAndEndsOnce) {
    begin(parentButton); // a view stands for its window
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_FALSE(takesClicks(*parentButton));
    EXPECT_TRUE(takesClicks(*otherButton));
    sheet.done(7);
    sheet.done(8);
    EXPECT_TRUE(takesClicks(*parentButton));
    begin(nullptr);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_TRUE(takesClicks(*parentButton)) << "without a parent it blocks nothing";
    sheet.close();
    EXPECT_EQ(results, (QList<int>{7, QDialog::Rejected}));
}

TEST_F(Sheet, HasNoResultWhenItsParentIsDeletedFirst) {
    begin(parent.get());
    parent.reset();
    EXPECT_FALSE(sheet.isVisible());
    sheet.done(1);
    EXPECT_TRUE(results.isEmpty());
    begin(other.get());
    sheet.done(2);
    EXPECT_EQ(results, QList<int>{2});
}

TEST_F(Sheet, SurvivesAHandlerThatThrows) {
    expectWarning(u"a sheet's handler: x"_s);
    platform::beginSheet(&sheet, parent.get(), [](int) { throw std::runtime_error("x"); });
    sheet.accept();
    EXPECT_TRUE(takesClicks(*parentButton));
}

TEST_F(Sheet, AModalSessionBlocksEveryOtherWindowUntilItOrItsWindowEnds) {
    platform::ModalSession second;
    EXPECT_FALSE(session.begin(nullptr));
    EXPECT_TRUE(session.begin(&window));
    EXPECT_TRUE(session.isRunning() && window.isVisible());
    EXPECT_FALSE(takesClicks(*parentButton) || takesClicks(*otherButton));
    EXPECT_FALSE(second.begin(other.get()) || second.isRunning() || session.begin(other.get()));
    session.end();
    EXPECT_FALSE(session.isRunning() || window.isVisible());
    EXPECT_EQ(window.windowModality(), Qt::NonModal);
    EXPECT_TRUE(takesClicks(*parentButton));
    EXPECT_TRUE(second.begin(other.get()));
    EXPECT_TRUE(takesClicks(*otherButton));
    other.reset();
    EXPECT_FALSE(second.isRunning());
    EXPECT_TRUE(takesClicks(*parentButton));
    EXPECT_TRUE(session.begin(parent.get()));
}

} // namespace
