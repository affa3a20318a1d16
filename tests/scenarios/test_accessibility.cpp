// Every window as a person meets it who cannot see it or has no mouse: what can be used has a name and a
// kind, can be reached by Tab, and has a letter or is one of a kind that needs none.
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/main/MainWindowController.h"
#include "standin/meetingclient/ClientWindow.h"
#include "tests/scenarios/Scenario.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace scenarios {

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
    return u"%1 \"%2\" (%3)"_s
        .arg(object ? object->objectName() : QString(), control->text(QAccessible::Name))
        .arg(object ? QString::fromLatin1(object->metaObject()->className()) : QString());
}

QString described(const QString &where, const QAccessibleInterface *control) {
    return where + u": "_s + called(control);
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
    Scenario scenario(GetParam());
    scenario.client().setAccounts({QJsonObject{{"meetingNumber", 7}, {"invitation", "Dial 7"}}});
    check(scenario.host().mainWindowController()->window(), u"main window"_s);
    mailhost::EditorWindow *editor = scenario.open(Scenario::invited);
    check(editor, u"editor without a meeting"_s);
    scenario.clickAdd(editor);
    check(shownDialog(), u"settings sheet"_s);
    QTest::mouseClick(shownDialog()->findChild<QWidget *>(u"requiredMeetingPswButton"_s), Qt::LeftButton,
                      Qt::NoModifier, QPoint(8, 8));
    scenario.settle();
    shownDialog()->findChild<QAbstractButton *>(u"thirdPartyAudioButton"_s)->click();
    scenario.settle();
    check(shownDialog(), u"settings sheet with a password and a text"_s);
    checkReadingOrder(shownDialog(), u"settings sheet"_s);
    shownDialog()->findChild<QAbstractButton *>(u"bothButton"_s)->click();
    QTest::mouseClick(shownDialog()->findChild<QWidget *>(u"requiredMeetingPswButton"_s), Qt::LeftButton,
                      Qt::NoModifier, QPoint(8, 8));
    scenario.confirmSheet();
    check(editor, u"editor with a meeting"_s);
    checkStripOrder(editor, u"with a meeting"_s);
    scenario.clickRemove(editor);
    scenario.settle();
    checkStripOrder(editor, u"without a meeting"_s);
    scenario.clientQuits();
    scenario.clickAdd(editor);
    scenario.settle();
    check(shownDialog(), u"client not running"_s);
    scenario.dismissAlert();
}

TEST_P(Accessibility, OfTheAlertThatTheClientIsSignedOut) {
    Scenario scenario(GetParam());
    scenario.signedOut();
    scenario.clickAdd(scenario.open(Scenario::plain));
    scenario.settle();
    ASSERT_FALSE(Scenario::alertText().isEmpty());
    check(shownDialog(), u"signed out"_s);
}

TEST_P(Accessibility, OfTheHostsOwnSheetsAndTheClient) {
    Scenario scenario(GetParam());
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::repeatButton), Qt::LeftButton);
    scenario.settle();
    check(shownDialog(), u"recurrence"_s);
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::timeZoneButton), Qt::LeftButton);
    scenario.settle();
    check(editor, u"editor with its time zone"_s);
    scenario.host()
        .mainWindowController()
        ->mainWindow()
        ->command(controls::customizeToolBarAction)
        ->trigger();
    scenario.settle();
    check(shownDialog(), u"tool-bar customisation"_s);
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    checkReadingOrder(editor, u"editor"_s);
    editor->findChild<QAbstractButton *>(controls::deleteButton)->click();
    scenario.settle();
    check(shownDialog(), u"question about deleting"_s);
    QTest::keyClick(shownDialog(), Qt::Key_Escape);
    scenario.settle();
    scenario.typeSubject(editor, u"Changed"_s);
    editor->close();
    scenario.settle();
    check(shownDialog() ? shownDialog() : editor, u"question about the changes"_s);
    editor->closeNow();
    scenario.settle();
    meetingclient::AnswerRules rules;
    meetingclient::ClientWindow client(scenario.client(), rules);
    client.show();
    check(&client, u"meeting client"_s);
}

INSTANTIATE_TEST_SUITE_P(Generations, Accessibility, testing::Values(u"15.8"_s, u"16"_s),
                         [](const auto &info) {
                             return info.param == QLatin1String("16") ? "newer" : "older";
                         });

} // namespace scenarios
