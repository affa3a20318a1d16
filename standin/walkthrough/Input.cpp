#include "standin/walkthrough/Input.h"

#include "platform/services/Services.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QRadioButton>
#include <QTest>
#include <QWindow>

namespace walkthrough {

namespace {

constexpr int dragSteps = 8;
constexpr int shortWait = 3000; // milliseconds
int longestWait = std::numeric_limits<int>::max();

QPoint inWindow(const QWidget *control, const QPoint &at) {
    return control->mapTo(control->window(), at);
}

bool isInTheWay(const QWidget *modal, QWidget *control) {
    return modal && modal != control->window() && !modal->isAncestorOf(control);
}

// The desktop decides where a window is and how big, and takes its time.
bool canReach(QWidget *control, const QPoint &at) {
    const QWidget *top = control->window();
    const QWindow *window = top->windowHandle();
    return control->isVisible() && control->isEnabled() &&
           !isInTheWay(QApplication::activeModalWidget(), control) && window && window->isExposed() &&
           window->size() == top->size() && top->rect().contains(inWindow(control, at));
}

// Moves the pointer to that point of the control, after a wait: a user waits until a window that is in the
// way has closed. Returns the window, or nullptr on failure.
QWindow *moveTo(QWidget *control, const QPoint &at) {
    const QPointer<QWidget> wanted(control);
    if (!waitFor([&] { return !wanted || canReach(wanted, at); }, shortWait) || !wanted)
        return nullptr;
    QWindow *window = wanted->window()->windowHandle();
    // Moves in from outside, because the toolkit ignores a move to the pointer's last position.
    QTest::mouseMove(window, QPoint(1, 1));
    QTest::mouseMove(window, inWindow(wanted, at));
    return window;
}

// A check box or radio button is as wide as its row but accepts clicks only on its mark and text.
QPoint middleOf(const QWidget *control) {
    const bool isChoice =
        qobject_cast<const QCheckBox *>(control) || qobject_cast<const QRadioButton *>(control);
    const QPoint middle = control ? control->rect().center() : QPoint();
    return isChoice ? QPoint(middle.y(), middle.y()) : middle;
}

// There is no window manager that gives the focus back when a sheet has closed.
bool activate(QWidget *window) {
    if (!window || !window->isVisible() || !window->windowHandle())
        return false;
    if (window->isActiveWindow())
        return true;
    window->activateWindow();
    return QTest::qWaitForWindowActive(window);
}

} // namespace

bool waitFor(const std::function<bool()> &condition, int milliseconds) {
    return QTest::qWaitFor(condition, std::min(milliseconds, longestWait));
}

void waitLessFromNowOn() {
    longestWait = shortWait;
}

void settle(double seconds) {
    // This timer fires after all timers that are due before it.
    bool due = false;
    platform::services().runLoop->callAfter(seconds, [&due] { due = true; });
    waitFor([&due] { return due; });
}

bool click(QWidget *control) {
    const QPoint at = middleOf(control);
    QWindow *window = moveTo(control, at);
    if (window)
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, inWindow(control, at));
    return window != nullptr;
}

bool doubleClick(QWidget *control) {
    QWindow *window = moveTo(control, middleOf(control));
    if (!window)
        return false;
    const QPoint at = inWindow(control, middleOf(control));
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at); // selects
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, at);
    return true;
}

bool hover(QWidget *control) {
    return moveTo(control, middleOf(control)) != nullptr;
}

bool drag(QWidget *control, const QPoint &from, const QPoint &distance) {
    QWindow *window = moveTo(control, from);
    if (!window)
        return false;
    // The end of the gesture may delete the control.
    const QPoint begin = inWindow(control, from);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, begin);
    for (int i = 1; i <= dragSteps; ++i)
        QTest::mouseMove(window, begin + distance * i / dragSteps);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, begin + distance);
    return true;
}

bool press(QWidget *window, QKeyCombination key) {
    if (!activate(window))
        return false;
    QTest::keyClick(window->windowHandle(), key.key(), key.keyboardModifiers());
    return true;
}

bool type(QWidget *window, const QString &text) {
    if (!activate(window))
        return false;
    for (const QChar character : text)
        QTest::keyClick(window->windowHandle(), character.toLatin1());
    return true;
}

QString pluginText(const QString &key) {
    QString text = platform::services().pluginBundle->localizedString(key, key, u"Localizable_prl"_s);
    return text.remove(u'&').trimmed();
}

QWidget *shown(const QString &objectName) {
    for (QWidget *widget : QApplication::allWidgets())
        if (widget->objectName() == objectName && widget->isVisible())
            return widget;
    return nullptr;
}

QAbstractButton *shownButton(const QString &key, const QWidget *window) {
    for (QWidget *widget : QApplication::allWidgets()) {
        auto *button = qobject_cast<QAbstractButton *>(widget);
        if (button && button->isVisible() && (!window || button->window() == window) &&
            button->text().remove(u'&') == pluginText(key))
            return button;
    }
    return nullptr;
}

bool waitForButton(const QString &key) {
    return waitFor([&key] { return shownButton(key) != nullptr; });
}

QMenu *openMenu(QWidget *control) {
    QMenu *menu = nullptr;
    const auto opened = [&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); };
    return click(control) && waitFor(opened) ? menu : nullptr;
}

bool choose(QMenu *menu, int entry) {
    QList<QAction *> entries = menu ? menu->actions() : QList<QAction *>();
    entries.removeIf([](const QAction *action) { return !action->isVisible() || action->isSeparator(); });
    if (entry >= entries.size() || !entries[entry]->isEnabled())
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(entries[entry]).center());
    settle();
    return true;
}

QMessageBox *alert() {
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

bool waitForAlert() {
    return waitFor([] { return alert() != nullptr; });
}

bool dismissModal() {
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    return waitFor([] { return QApplication::activeModalWidget() == nullptr; });
}

} // namespace walkthrough
