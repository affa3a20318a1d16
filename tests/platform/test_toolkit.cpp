// Frames, windows with controllers, sheets and modal sessions.
#include "platform/runtime/Runtime.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "tests/support/Warnings.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace {

rt::Class *testClass() {
    return rt::defineClass(u"ToolkitTestObject"_s);
}

class ViewObject : public QLabel, public rt::Object {
public:
    explicit ViewObject(rt::Class *isa)
        : rt::Object(isa) {}
};

// --- frames

TEST(Frames, CountFromTheBottomOfTheParent) {
    QWidget parent;
    parent.resize(200, 100);
    QWidget view(&parent);
    platform::setBottomLeftFrame(&view, QRectF(10, 5, 50, 20));
    EXPECT_EQ(view.geometry(), QRect(10, 75, 50, 20));
    EXPECT_EQ(platform::bottomLeftFrame(&view), QRectF(10, 5, 50, 20));
    parent.resize(200, 150);
    EXPECT_EQ(platform::bottomLeftFrame(&view), QRectF(10, 55, 50, 20));
    platform::setBottomLeftFrame(&parent, QRectF(30, 40, 50, 60));
    EXPECT_EQ(platform::bottomLeftFrame(&parent), QRectF(30, 40, 50, 60)) << "without a parent as it was set";
}

TEST(Frames, OfNothingOrWithoutNumbersAreLeft) {
    EXPECT_TRUE(platform::bottomLeftFrame(nullptr).isNull());
    platform::setBottomLeftFrame(nullptr, QRectF(0, 0, 1, 1));
    QWidget view;
    view.setGeometry(1, 2, 3, 4);
    platform::setBottomLeftFrame(&view, QRectF(std::numeric_limits<double>::quiet_NaN(), 0, 1, 1));
    EXPECT_EQ(view.geometry(), QRect(1, 2, 3, 4));
    platform::setBottomLeftFrame(&view, QRectF(0, 0, 1e300, 20));
    EXPECT_EQ(view.width(), QWIDGETSIZE_MAX);
}

// --- windows

TEST(Windows, StandInOrderOfRegistrationAndKeepTheirPlace) {
    QWidget first;
    QWidget second;
    rt::Object one(testClass());
    rt::Object two(testClass());
    platform::registerWindow(&first, &one);
    platform::registerWindow(&second, nullptr);
    platform::registerWindow(&first, &two);
    EXPECT_EQ(platform::orderedWindows(), (QList<QWidget *>{&first, &second}));
    EXPECT_EQ(platform::windowController(&first), &two);
    EXPECT_EQ(platform::windowController(&second), nullptr);
    platform::unregisterWindow(&first);
    EXPECT_EQ(platform::orderedWindows(), QList<QWidget *>{&second});
    EXPECT_EQ(platform::windowController(&first), nullptr);
}

TEST(Windows, DeadWindowsAndControllersAreForgotten) {
    auto window = std::make_unique<QWidget>();
    QWidget other;
    auto controller = std::make_unique<rt::Object>(testClass());
    platform::registerWindow(window.get(), controller.get());
    platform::registerWindow(&other, controller.get());
    window.reset();
    EXPECT_EQ(platform::orderedWindows(), QList<QWidget *>{&other});
    EXPECT_EQ(platform::windowController(&other), controller.get());
    controller.reset();
    EXPECT_EQ(platform::windowController(&other), nullptr);
    platform::registerWindow(nullptr, nullptr);
    platform::unregisterWindow(nullptr);
    EXPECT_EQ(platform::windowController(nullptr), nullptr);
    EXPECT_EQ(platform::orderedWindows().size(), 1);
}

TEST(Windows, ADeadApplicationDelegateIsNone) {
    auto delegate = std::make_unique<rt::Object>(testClass());
    platform::setApplicationDelegate(delegate.get());
    EXPECT_EQ(platform::applicationDelegate(), delegate.get());
    delegate.reset();
    EXPECT_EQ(platform::applicationDelegate(), nullptr);
    platform::setApplicationDelegate(nullptr);
    EXPECT_EQ(platform::applicationDelegate(), nullptr);
}

TEST(WindowClosing, IsToldToObserversWhoseOwnersLive) {
    QWidget window;
    QList<QWidget *> told;
    auto owner = std::make_unique<QObject>();
    QObject other;
    platform::observeWindowWillClose(owner.get(), [&](QWidget *closing) { told.append(closing); });
    platform::observeWindowWillClose(&other, [](QWidget *) { throw std::runtime_error("x"); });
    platform::observeWindowWillClose(nullptr, [&](QWidget *) { told.append(nullptr); });
    expectWarning(u"'s handler: "_s);
    platform::windowWillClose(&window);
    owner.reset();
    platform::windowWillClose(&window);
    EXPECT_EQ(told, QList<QWidget *>{&window});
}

TEST(WindowClosing, AHandlerMayEndAnotherOnesOwnerAndAddMore) {
    QWidget window;
    QObject owner;
    auto doomed = std::make_unique<QObject>();
    int late = 0;
    platform::observeWindowWillClose(&owner, [&](QWidget *) {
        doomed.reset();
        platform::observeWindowWillClose(&owner, [&late](QWidget *) { ++late; });
    });
    platform::observeWindowWillClose(doomed.get(), [](QWidget *) { ADD_FAILURE() << "its owner is dead"; });
    platform::windowWillClose(&window);
    EXPECT_EQ(late, 0);
    platform::windowWillClose(&window);
    EXPECT_EQ(late, 1);
}

// --- views

TEST(Views, AreAskedForTheirKindByName) {
    rt::Class *base = rt::defineClass(u"ToolkitTestBaseView"_s);
    const ViewObject view(rt::defineClass(u"ToolkitTestView"_s, base));
    const QLabel label;
    const QLineEdit edit;
    const QPushButton button;
    struct Case {
        const QWidget *view;
        const char *kind;
        bool is;
    };
    const Case cases[] = {
        {&view, "ToolkitTestView", true}, {&view, "ToolkitTestBaseView", true},
        {&view, "NSView", true},          {&view, "OtherView", false},
        {&label, "NSView", true},         {&label, "NSTextField", true},
        {&edit, "NSTextField", true},     {&button, "NSTextField", false},
        {&button, "QPushButton", true},   {&button, "QAbstractButton", true},
        {&button, "QLabel", false},       {&button, "", false},
        {nullptr, "NSView", false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(platform::isViewOfKind(c.view, QString::fromUtf8(c.kind)), c.is) << c.kind;
}

TEST(Views, TextFieldsHaveAValueAndOthersHaveNone) {
    QLabel label;
    QLineEdit edit;
    QPushButton button(u"push"_s);
    for (QWidget *field : {static_cast<QWidget *>(&label), static_cast<QWidget *>(&edit)}) {
        EXPECT_FALSE(platform::textFieldValue(field).isNull());
        platform::setTextFieldValue(field, u"a"_s);
        EXPECT_EQ(platform::textFieldValue(field), u"a"_s);
        platform::setTextFieldValue(field, QString());
        EXPECT_EQ(platform::textFieldValue(field), u""_s);
    }
    platform::setTextFieldValue(&button, u"a"_s);
    EXPECT_EQ(button.text(), u"push"_s);
    EXPECT_TRUE(platform::textFieldValue(&button).isNull());
    EXPECT_TRUE(platform::textFieldValue(nullptr).isNull());
    platform::setTextFieldValue(nullptr, u"a"_s);
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
    void SetUp() override {
        for (QWidget *shown : {parent.get(), other.get()}) {
            shown->resize(200, 100);
            shown->show();
        }
    }

    void begin(QWidget *window) {
        platform::beginSheet(&sheet, window, [this](int result) { results.append(result); });
    }

    std::unique_ptr<QWidget> parent = std::make_unique<QWidget>();
    std::unique_ptr<QWidget> other = std::make_unique<QWidget>();
    QPushButton *parentButton = new QPushButton(u"p"_s, parent.get());
    QPushButton *otherButton = new QPushButton(u"o"_s, other.get());
    QDialog sheet;
    QList<int> results;
};

TEST_F(Sheet, BlocksItsOwnWindowOnlyAndReturnsAtOnce) {
    EXPECT_TRUE(takesClicks(*parentButton));
    begin(parentButton); // a view stands for its window
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_FALSE(takesClicks(*parentButton));
    EXPECT_TRUE(takesClicks(*otherButton));
    sheet.accept();
    EXPECT_TRUE(takesClicks(*parentButton));
    EXPECT_EQ(results, QList<int>{QDialog::Accepted});
}

TEST_F(Sheet, EndsOnceAndCanBeginAgain) {
    begin(parent.get());
    sheet.done(7);
    sheet.done(8);
    begin(parent.get());
    sheet.close();
    EXPECT_EQ(results, (QList<int>{7, QDialog::Rejected}));
}

TEST_F(Sheet, WithoutAParentBlocksNothing) {
    begin(nullptr);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_TRUE(takesClicks(*parentButton));
    sheet.reject();
    EXPECT_EQ(results, QList<int>{QDialog::Rejected});
}

TEST_F(Sheet, DoesNotEndWhenItsParentDiesFirst) {
    begin(parent.get());
    parent.reset();
    EXPECT_FALSE(sheet.isVisible());
    sheet.done(1);
    EXPECT_TRUE(results.isEmpty());
    begin(other.get());
    sheet.done(2);
    EXPECT_EQ(results, QList<int>{2});
}

TEST_F(Sheet, SurvivesAHandlerThatThrowsOrDeletesIt) {
    platform::beginSheet(&sheet, parent.get(), [](int) { throw std::runtime_error("x"); });
    expectWarning(u"'s handler: "_s);
    sheet.accept();
    auto *dying = new QDialog;
    platform::beginSheet(dying, parent.get(), [dying](int) { dying->deleteLater(); });
    dying->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(takesClicks(*parentButton));
    platform::beginSheet(nullptr, parent.get(), {});
    platform::beginSheet(&sheet, parent.get(), {});
    sheet.accept();
}

TEST_F(Sheet, AModalSessionBlocksEveryOtherWindowUntilItEnds) {
    QWidget window;
    platform::ModalSession session;
    EXPECT_FALSE(session.begin(nullptr));
    EXPECT_TRUE(session.begin(&window));
    EXPECT_TRUE(session.isRunning());
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(takesClicks(*parentButton));
    EXPECT_FALSE(takesClicks(*otherButton));
    session.end();
    session.end();
    EXPECT_FALSE(session.isRunning());
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.windowModality(), Qt::NonModal);
    EXPECT_TRUE(takesClicks(*parentButton));
}

TEST_F(Sheet, AndModalSessionLeaveTheActivationToTheWindowBelow) {
    QWidget window;
    platform::ModalSession session;
    parent->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(parent.get()));
    begin(parent.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
    sheet.accept();
    EXPECT_TRUE(QTest::qWaitForWindowActive(parent.get()));
    session.begin(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    session.end();
    EXPECT_TRUE(QTest::qWaitForWindowActive(parent.get()));
}

TEST_F(Sheet, ASecondModalSessionIsRefusedUntilTheFirstHasEnded) {
    QWidget window;
    platform::ModalSession second;
    {
        platform::ModalSession first;
        EXPECT_TRUE(first.begin(&window));
        EXPECT_FALSE(second.begin(other.get()));
        EXPECT_FALSE(second.isRunning());
        EXPECT_FALSE(first.begin(other.get()));
    }
    EXPECT_TRUE(second.begin(other.get()));
    EXPECT_TRUE(takesClicks(*otherButton));
}

TEST_F(Sheet, AModalSessionEndsWithItsWindow) {
    platform::ModalSession first;
    EXPECT_TRUE(first.begin(other.get()));
    other.reset();
    EXPECT_FALSE(first.isRunning());
    EXPECT_TRUE(takesClicks(*parentButton));
    first.end();
    QWidget window;
    platform::ModalSession second;
    EXPECT_TRUE(second.begin(&window));
}

} // namespace
