#include "standin/walkthrough/Input.h"

#include "standin/walkthrough/Report.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QRadioButton>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace walkthrough {

namespace {

constexpr int dragSteps = 8;
constexpr int longestWait = 3000; // milliseconds

bool canTake(QWidget *control) {
    if (!control || !control->isVisible() || !control->isEnabled())
        return false;
    const QWidget *modal = QApplication::activeModalWidget();
    return !modal || modal == control->window() || modal->isAncestorOf(control);
}

QWindow *windowOf(QWidget *control) {
    return control->window()->windowHandle();
}

// The desktop decides where a window is and how big, and takes its time.
bool isPlaced(QWidget *control, const QPoint &at) {
    const QWindow *window = windowOf(control);
    return window && window->isExposed() && window->size() == control->window()->size() &&
           control->window()->rect().contains(control->mapTo(control->window(), at));
}

// A user waits until a window that is in the way has closed.
bool waitUntilReady(QWidget *control, const QPoint &at) {
    const QPointer<QWidget> wanted(control);
    return control &&
           Report::waitFor([&] { return !wanted || (canTake(wanted) && isPlaced(wanted, at)); },
                           longestWait) &&
           wanted;
}

QPoint inWindow(const QWidget *control, const QPoint &at) {
    return control->mapTo(control->window(), at);
}

// There is no window manager that gives the focus back when a sheet has closed.
bool activate(QWidget *window) {
    if (!window || !window->isVisible() || !window->windowHandle())
        return false;
    if (!window->isActiveWindow()) {
        window->activateWindow();
        return QTest::qWaitForWindowActive(window);
    }
    return true;
}

QString plain(QString text) {
    text.remove(u'&');
    return text;
}

} // namespace

// A check box or radio button is as wide as its row but accepts clicks only on its mark and text.
bool click(QWidget *control) {
    if (!control)
        return false;
    const bool isChoice = qobject_cast<QCheckBox *>(control) || qobject_cast<QRadioButton *>(control);
    const QPoint middle = control->rect().center();
    return clickAt(control, isChoice ? QPoint(middle.y(), middle.y()) : middle);
}

bool clickAt(QWidget *control, const QPoint &point) {
    if (!waitUntilReady(control, point))
        return false;
    const QPoint at = inWindow(control, point);
    // Moves in from outside, because the toolkit ignores a move to the pointer's last position.
    QTest::mouseMove(windowOf(control), QPoint(1, 1));
    QTest::mouseMove(windowOf(control), at);
    QTest::mouseClick(windowOf(control), Qt::LeftButton, Qt::NoModifier, at);
    return true;
}

void hover(QWidget *control) {
    if (!waitUntilReady(control, control->rect().center()))
        return;
    QTest::mouseMove(windowOf(control), QPoint(1, 1)); // from outside
    QTest::mouseMove(windowOf(control), inWindow(control, control->rect().center()));
}

bool drag(QWidget *control, const QPoint &from, const QPoint &distance) {
    if (!waitUntilReady(control, from))
        return false;
    // The end of the gesture may delete the control.
    QWindow *window = windowOf(control);
    const QPoint begin = inWindow(control, from);
    QTest::mouseMove(window, begin);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, begin);
    for (int i = 1; i <= dragSteps; ++i)
        QTest::mouseMove(window, begin + distance * i / dragSteps);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, begin + distance);
    return true;
}

bool doubleClick(QWidget *control, const QPoint &at) {
    if (!waitUntilReady(control, at))
        return false;
    // A double click begins with a click, which selects.
    QTest::mouseClick(windowOf(control), Qt::LeftButton, Qt::NoModifier, inWindow(control, at));
    QTest::mouseDClick(windowOf(control), Qt::LeftButton, Qt::NoModifier, inWindow(control, at));
    return true;
}

bool press(QWidget *window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (!activate(window))
        return false;
    QTest::keyClick(window->windowHandle(), key, modifiers);
    return true;
}

bool type(QWidget *window, const QString &text) {
    if (!activate(window))
        return false;
    for (const QChar character : text)
        QTest::keyClick(window->windowHandle(), character.toLatin1());
    return true;
}

QWidget *shown(const QString &objectName) {
    for (QWidget *widget : QApplication::allWidgets())
        if (widget->objectName() == objectName && widget->isVisible())
            return widget;
    return nullptr;
}

QWidget *shownButton(const QString &text) {
    for (QWidget *widget : QApplication::allWidgets()) {
        const auto *button = qobject_cast<QAbstractButton *>(widget);
        if (button && button->isVisible() && plain(button->text()) == text)
            return widget;
    }
    return nullptr;
}

bool waitForButton(const QString &text) {
    return Report::waitFor([&text] { return shownButton(text) != nullptr; });
}

QMenu *openMenu(QWidget *control) {
    QMenu *menu = nullptr;
    const auto opened = [&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); };
    return click(control) && Report::waitFor(opened) ? menu : nullptr;
}

bool choose(QMenu *menu, int entry) {
    QList<QAction *> entries = menu ? menu->actions() : QList<QAction *>();
    entries.removeIf([](const QAction *action) { return !action->isVisible() || action->isSeparator(); });
    if (entry >= entries.size() || !entries[entry]->isEnabled())
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(entries[entry]).center());
    Report::settle();
    return true;
}

QMessageBox *alert() {
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

bool waitForAlert() {
    return Report::waitFor([] { return alert() != nullptr; });
}

bool dismissModal() {
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    return Report::waitFor([] { return QApplication::activeModalWidget() == nullptr; });
}

} // namespace walkthrough
