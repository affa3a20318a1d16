// Every window as a person meets it who cannot see it or has no mouse: what can be used has a name and a
// kind, can be reached by Tab, and has a letter or is one of a kind that needs none.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/MainWindowController.h"
#include "standin/meetingclient/ClientWindow.h"
#include "tests/roads/Desk.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace roads {

namespace controls = mailhost::controls;

namespace {

class Accessibility : public testing::TestWithParam<QString> {};

bool isUsed(QAccessible::Role role) {
    switch (role) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::SpinBox:
    case QAccessible::List:
    case QAccessible::Table:
        return true;
    default:
        return false;
    }
}

// A part of a control that stands for it: the field of a spin box, the list of a chooser.
bool isPart(const QWidget *widget) {
    for (const QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        const QAccessibleInterface *around =
            QAccessible::queryAccessibleInterface(const_cast<QWidget *>(parent));
        if (around && (around->role() == QAccessible::SpinBox || around->role() == QAccessible::ComboBox ||
                       around->role() == QAccessible::Table))
            return true;
        if (parent->inherits("QAbstractSpinBox") || parent->inherits("QComboBox"))
            return true;
    }
    return false;
}

bool isInToolBar(const QWidget *widget) {
    for (const QWidget *parent = widget; parent; parent = parent->parentWidget())
        if (parent->inherits("QToolBar"))
            return true;
    return false;
}

// The keys of what is in a menu too; its tool tip names them.
bool namesItsKeys(const QAccessibleInterface *control) {
    return control->text(QAccessible::Description).endsWith(u')');
}

// One of several that share an arrow-key group: Tab reaches the one that is chosen.
bool isReachedByTab(const QWidget *widget) {
    return widget->focusPolicy() & Qt::TabFocus || qobject_cast<const QRadioButton *>(widget);
}

bool hasLabelWithALetter(const QWidget *widget) {
    for (const QLabel *label : widget->window()->findChildren<QLabel *>())
        if (label->buddy() == widget && label->text().contains(u'&'))
            return true;
    return false;
}

// What presses or chooses something has a letter or keys of its own, unless Enter or Escape press it. One of
// a group of choices is enough: arrow keys go to the others.
bool hasKeys(const QWidget *widget, QAccessibleInterface *control) {
    switch (control->role()) {
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::List:
    case QAccessible::Table:
        return true;
    default:
        break;
    }
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    if (!control->text(QAccessible::Accelerator).isEmpty() || (button && !button->shortcut().isEmpty()))
        return true;
    if (const auto *box = qobject_cast<const QDialogButtonBox *>(widget->parentWidget()))
        return box->buttonRole(const_cast<QAbstractButton *>(button)) == QDialogButtonBox::RejectRole;
    if (control->role() != QAccessible::RadioButton)
        return false;
    for (const QRadioButton *other : widget->parentWidget()->findChildren<QRadioButton *>())
        if (!other->shortcut().isEmpty() || hasLabelWithALetter(other))
            return true;
    return false;
}

QString called(const QAccessibleInterface *control) {
    const QObject *object = control->object();
    return QStringLiteral("%1 \"%2\" (%3)")
        .arg(object ? object->objectName() : QString(), control->text(QAccessible::Name))
        .arg(object ? QString::fromLatin1(object->metaObject()->className()) : QString());
}

QString described(const QString &where, const QAccessibleInterface *control) {
    return where + QStringLiteral(": ") + called(control);
}

void check(QAccessibleInterface *control, const QString &where, int &used) {
    const auto *widget = qobject_cast<QWidget *>(control->object());
    const QAccessible::Role role = control->role();
    if (widget && widget->isVisible() && isUsed(role) && !isPart(widget)) {
        ++used;
        EXPECT_FALSE(control->text(QAccessible::Name).trimmed().isEmpty())
            << qPrintable(described(where, control)) << " has no name";
        if (widget->isEnabled()) {
            EXPECT_TRUE(isReachedByTab(widget))
                << qPrintable(described(where, control)) << " is not reached by Tab";
            EXPECT_TRUE(hasKeys(widget, control) || (isInToolBar(widget) && namesItsKeys(control)))
                << qPrintable(described(where, control)) << " has no letter";
        }
    }
    if (widget && widget->isVisible() && widget->focusPolicy() & Qt::TabFocus && !isPart(widget)) {
        const bool isNamedGroup =
            role == QAccessible::Grouping && !control->text(QAccessible::Name).isEmpty();
        EXPECT_TRUE(isUsed(role) || isNamedGroup)
            << qPrintable(described(where, control)) << " is of no known kind: " << role;
    }
    for (int i = 0; i < control->childCount(); ++i)
        if (QAccessibleInterface *child = control->child(i))
            check(child, where, used);
}

// Checks everything below the window; a window without anything to use has not been looked at.
void check(QWidget *window, const QString &where) {
    ASSERT_TRUE(window) << qPrintable(where);
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window);
    ASSERT_TRUE(root) << qPrintable(where);
    int used = 0;
    check(root, where, used);
    EXPECT_GT(used, 0) << qPrintable(where);
}

// From left to right, as the strip is read.
void checkStripOrder(QWidget *editor, const QString &where) {
    const QWidget *last = nullptr;
    int buttons = 0;
    for (const QWidget *next = editor->nextInFocusChain(); next != editor; next = next->nextInFocusChain()) {
        if (!next->inherits("QPushButton") || !next->isVisible() ||
            !dynamic_cast<const vlActionAdditionView *>(next->parentWidget()))
            continue;
        if (last) {
            EXPECT_LT(last->geometry().center().x(), next->geometry().center().x()) << qPrintable(where);
        }
        last = next;
        ++buttons;
    }
    EXPECT_EQ(buttons, 2) << qPrintable(where);
}

// By Tab, nothing is reached after what stands wholly below it. The strip has its place before the fields.
void checkReadingOrder(QWidget *window, const QString &where) {
    const QWidget *last = nullptr;
    int stops = 0;
    for (QWidget *next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain()) {
        if (!next->isVisible() || next->window() != window || !(next->focusPolicy() & Qt::TabFocus) ||
            dynamic_cast<const vlActionAdditionView *>(next->parentWidget()))
            continue;
        const int top = next->mapTo(window, QPoint()).y();
        if (last) {
            EXPECT_GT(top + next->height(), last->mapTo(window, QPoint()).y())
                << qPrintable(where) << ": " << qPrintable(next->objectName()) << " comes after "
                << qPrintable(last->objectName());
        }
        last = next;
        ++stops;
    }
    EXPECT_GT(stops, 5) << qPrintable(where);
}

QWidget *shownDialog() {
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (qobject_cast<QDialog *>(widget) && widget->isVisible())
            return widget;
    return nullptr;
}

} // namespace

TEST_P(Accessibility, OfTheEditorTheStripTheSheetAndTheAlerts) {
    Desk desk(GetParam());
    desk.client().setAccounts({QJsonObject{{"meetingNumber", 7}, {"invitation", "Dial 7"}}});
    check(desk.host().mainWindowController()->window(), QStringLiteral("main window"));
    mailhost::EditorWindow *editor = desk.open(Desk::invited);
    check(editor, QStringLiteral("editor without a meeting"));
    desk.clickAdd(editor);
    check(shownDialog(), QStringLiteral("settings sheet"));
    QTest::mouseClick(shownDialog()->findChild<QWidget *>(QStringLiteral("requiredMeetingPswButton")),
                      Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    desk.settle();
    shownDialog()->findChild<QAbstractButton *>(QStringLiteral("thirdPartyAudioButton"))->click();
    desk.settle();
    check(shownDialog(), QStringLiteral("settings sheet with a password and a text"));
    checkReadingOrder(shownDialog(), QStringLiteral("settings sheet"));
    shownDialog()->findChild<QAbstractButton *>(QStringLiteral("bothButton"))->click();
    QTest::mouseClick(shownDialog()->findChild<QWidget *>(QStringLiteral("requiredMeetingPswButton")),
                      Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    desk.confirmSheet();
    check(editor, QStringLiteral("editor with a meeting"));
    checkStripOrder(editor, QStringLiteral("with a meeting"));
    desk.clickRemove(editor);
    desk.settle();
    checkStripOrder(editor, QStringLiteral("without a meeting"));
    desk.clientQuits();
    desk.clickAdd(editor);
    desk.settle();
    check(shownDialog(), QStringLiteral("client not running"));
    desk.dismissAlert();
}

TEST_P(Accessibility, OfTheAlertThatTheClientIsSignedOut) {
    Desk desk(GetParam());
    desk.signedOut();
    desk.clickAdd(desk.open(Desk::plain));
    desk.settle();
    ASSERT_FALSE(Desk::alertText().isEmpty());
    check(shownDialog(), QStringLiteral("signed out"));
}

TEST_P(Accessibility, OfTheHostsOwnSheetsAndTheClient) {
    Desk desk(GetParam());
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::repeatButton), Qt::LeftButton);
    desk.settle();
    check(shownDialog(), QStringLiteral("recurrence"));
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::timeZoneButton), Qt::LeftButton);
    desk.settle();
    check(editor, QStringLiteral("editor with its time zone"));
    desk.host().mainWindowController()->mainWindow()->command(controls::customizeToolBarAction)->trigger();
    desk.settle();
    check(shownDialog(), QStringLiteral("tool-bar customisation"));
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    checkReadingOrder(editor, QStringLiteral("editor"));
    editor->findChild<QAbstractButton *>(controls::deleteButton)->click();
    desk.settle();
    check(shownDialog(), QStringLiteral("question about deleting"));
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    desk.settle();
    desk.typeSubject(editor, QStringLiteral("Changed"));
    editor->close();
    desk.settle();
    check(shownDialog() ? shownDialog() : editor, QStringLiteral("question about the changes"));
    editor->closeNow();
    desk.settle();
    meetingclient::AnswerRules rules;
    meetingclient::ClientWindow client(desk.client(), rules);
    client.show();
    check(&client, QStringLiteral("meeting client"));
}

INSTANTIATE_TEST_SUITE_P(Generations, Accessibility,
                         testing::Values(QStringLiteral("15.8"), QStringLiteral("16")), [](const auto &info) {
                             return info.param == QLatin1String("16") ? "newer" : "older";
                         });

} // namespace roads
