// Frames, windows with controllers, views, sheets and modal sessions.
#include "platform/runtime/Runtime.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "tests/support/Warnings.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace {

TEST(Frames, CountFromTheBottomOfTheParent) {
    QWidget parent;
    parent.resize(200, 100);
    QWidget view(&parent);
    platform::setBottomLeftFrame(&view, QRectF(10, 5, 50, 20));
    EXPECT_EQ(view.geometry(), QRect(10, 75, 50, 20));
    parent.resize(200, 150);
    EXPECT_EQ(platform::bottomLeftFrame(&view), QRectF(10, 55, 50, 20));
    platform::setBottomLeftFrame(&parent, QRectF(30, 40, 50, 60));
    EXPECT_EQ(platform::bottomLeftFrame(&parent), QRectF(30, 40, 50, 60)) << "without a parent as it was set";
    platform::setBottomLeftFrame(&view, QRectF(std::numeric_limits<double>::quiet_NaN(), 0, 1, 1));
    EXPECT_EQ(view.geometry(), QRect(10, 75, 50, 20));
    platform::setBottomLeftFrame(&view, QRectF(0, 0, 1e300, 20));
    EXPECT_EQ(view.width(), QWIDGETSIZE_MAX);
}

TEST(Windows, AreListedInOrderOfRegistrationWhileTheyExist) {
    rt::Class *cls = rt::defineClass(u"ToolkitTestObject"_s);
    auto first = std::make_unique<QWidget>();
    QWidget second;
    rt::Object one(cls);
    auto two = std::make_unique<rt::Object>(cls);
    platform::registerWindow(first.get(), &one);
    platform::registerWindow(&second, two.get());
    platform::registerWindow(first.get(), two.get());
    EXPECT_EQ(platform::orderedWindows(), (QList<QWidget *>{first.get(), &second}));
    EXPECT_EQ(platform::windowController(first.get()), two.get());
    platform::unregisterWindow(first.get());
    EXPECT_EQ(platform::windowController(first.get()), nullptr);
    platform::registerWindow(first.get(), &one);
    first.reset();
    EXPECT_EQ(platform::orderedWindows(), QList<QWidget *>{&second});
    platform::setApplicationDelegate(two.get());
    EXPECT_EQ(platform::applicationDelegate(), two.get());
    two.reset();
    EXPECT_EQ(platform::windowController(&second), nullptr);
    EXPECT_EQ(platform::applicationDelegate(), nullptr);
}

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

class ViewObject : public QLabel, public rt::Object {
public:
    explicit ViewObject(rt::Class *isa)
        : rt::Object(isa) {}
};

TEST(Views, HaveAKindByNameAndTextFieldsAValue) {
    rt::Class *base = rt::defineClass(u"ToolkitTestBaseView"_s);
    const ViewObject view(rt::defineClass(u"ToolkitTestView"_s, base));
    QLabel label;
    QLineEdit edit;
    QPushButton button(u"push"_s);
    const std::tuple<const QWidget *, const char *, bool> cases[] = {
        {&view, "ToolkitTestView", true}, {&view, "ToolkitTestBaseView", true}, {&view, "NSView", true},
        {&view, "OtherView", false},      {&label, "NSTextField", true},        {&edit, "NSTextField", true},
        {&button, "NSTextField", false},  {&button, "QAbstractButton", true},   {&button, "", false},
        {nullptr, "NSView", false},
    };
    for (const auto &[asked, kind, is] : cases)
        EXPECT_EQ(platform::isViewOfKind(asked, QString::fromUtf8(kind)), is) << kind;
    for (QWidget *field : {static_cast<QWidget *>(&label), static_cast<QWidget *>(&edit)}) {
        platform::setTextFieldValue(field, u"a"_s);
        EXPECT_EQ(platform::textFieldValue(field), u"a"_s);
        platform::setTextFieldValue(field, QString());
        EXPECT_FALSE(platform::textFieldValue(field).isNull());
    }
    EXPECT_TRUE(platform::textFieldValue(&button).isNull());
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

TEST_F(Sheet, SurvivesAHandlerThatThrowsOrDeletesIt) {
    platform::beginSheet(&sheet, parent.get(), [](int) { throw std::runtime_error("x"); });
    expectWarning(u"'s handler: "_s);
    sheet.accept();
    auto *dying = new QDialog;
    platform::beginSheet(dying, parent.get(), [dying](int) { dying->deleteLater(); });
    dying->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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

TEST_F(Sheet, AndModalSessionLeaveTheActivationToTheWindowBelow) {
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

} // namespace
