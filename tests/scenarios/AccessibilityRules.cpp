#include "tests/scenarios/AccessibilityRules.h"

#include "plugin/ui/strip/vlActionAdditionView.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace scenarios {

namespace {

using Roles = QList<QAccessible::Role>;

// Roles of controls that take text or use the arrow keys.
const Roles fields{QAccessible::EditableText, QAccessible::SpinBox, QAccessible::List, QAccessible::Table};
const Roles choices{QAccessible::Button,   QAccessible::ButtonMenu,  QAccessible::ButtonDropDown,
                    QAccessible::CheckBox, QAccessible::RadioButton, QAccessible::ComboBox};

QAccessible::Role roleOf(const QWidget *widget) {
    return QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget))->role();
}

template<typename Condition>
bool anyParent(const QWidget *widget, Condition holds) {
    const QWidget *parent = widget->parentWidget();
    return parent && (holds(parent) || anyParent(parent, holds));
}

// Whether the widget is an inner part of a control, such as the field of a spin box; the control represents
// it.
bool isPart(const QWidget *widget) {
    return anyParent(widget, [](const QWidget *parent) {
        return parent->inherits("QAbstractSpinBox") || parent->inherits("QComboBox") ||
               Roles{QAccessible::SpinBox, QAccessible::ComboBox, QAccessible::Table}.contains(
                   roleOf(parent));
    });
}

bool isOnStrip(const QWidget *widget) {
    return dynamic_cast<const vlActionAdditionView *>(widget->parentWidget());
}

// The keys of what is in a menu too are named by its tool tip.
bool isToolThatNamesItsKeys(const QWidget *widget, const QAccessibleInterface &control) {
    return anyParent(widget, [](const QWidget *parent) { return qobject_cast<const QToolBar *>(parent); }) &&
           control.text(QAccessible::Description).endsWith(u')');
}

bool hasLabelWithALetter(const QWidget *widget) {
    const auto labels = widget->window()->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [widget](const QLabel *label) {
        return label->buddy() == widget && label->text().contains(u'&');
    });
}

// One letter is enough for a group of choices, because arrow keys reach the others. Escape presses a
// rejecting button.
bool hasKeys(const QWidget *widget, const QAccessibleInterface &control) {
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    if (fields.contains(control.role()) || !control.text(QAccessible::Accelerator).isEmpty() ||
        (button && !button->shortcut().isEmpty()))
        return true;
    if (const auto *box = qobject_cast<const QDialogButtonBox *>(widget->parentWidget()))
        return box->buttonRole(const_cast<QAbstractButton *>(button)) == QDialogButtonBox::RejectRole;
    const auto group = widget->parentWidget()->findChildren<QRadioButton *>();
    return qobject_cast<const QRadioButton *>(widget) &&
           std::any_of(group.begin(), group.end(), [](const QRadioButton *other) {
               return !other->shortcut().isEmpty() || hasLabelWithALetter(other);
           });
}

// Returns false if it is not a control.
bool check(const QWidget *widget, const QString &where) {
    const QAccessibleInterface &control =
        *QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
    const bool takesTab = widget->focusPolicy() & Qt::TabFocus;
    const QString name = control.text(QAccessible::Name).trimmed();
    const std::string which = qPrintable(u"%1: %2 \"%3\" "_s.arg(where, widget->objectName(), name)) +
                              std::string(widget->metaObject()->className());
    if (!(fields + choices).contains(control.role())) {
        EXPECT_TRUE(!takesTab || (control.role() == QAccessible::Grouping && !name.isEmpty()))
            << which << " is of no known kind: " << control.role();
        return false;
    }
    EXPECT_FALSE(name.isEmpty()) << which << " has no name";
    if (widget->isEnabled()) {
        // Tab reaches only the checked radio button of a group.
        EXPECT_TRUE(takesTab || qobject_cast<const QRadioButton *>(widget))
            << which << " is not reached by Tab";
        EXPECT_TRUE(hasKeys(widget, control) || isToolThatNamesItsKeys(widget, control))
            << which << " has no letter";
    }
    return true;
}

// The visible widgets of the window that Tab reaches, in order.
QList<const QWidget *> tabStops(const QWidget *window) {
    QList<const QWidget *> stops;
    for (const QWidget *next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain())
        if (next->isVisible() && next->window() == window && next->focusPolicy() & Qt::TabFocus)
            stops.append(next);
    return stops;
}

} // namespace

void expectAccessible(QWidget *window, const QString &where) {
    ASSERT_TRUE(window) << qPrintable(where);
    int controls = 0;
    for (const QWidget *widget : window->findChildren<QWidget *>())
        if (widget->isVisible() && widget->window() == window && !isPart(widget))
            controls += check(widget, where) ? 1 : 0;
    EXPECT_GT(controls, 0) << qPrintable(where);
}

void expectReadingOrder(QWidget *window, const QString &where) {
    QList<const QWidget *> stops = tabStops(window);
    stops.removeIf(isOnStrip);
    EXPECT_GT(stops.size(), 5) << qPrintable(where);
    const auto top = [window](const QWidget *widget) { return widget->mapTo(window, QPoint()).y(); };
    for (qsizetype i = 1; i < stops.size(); ++i)
        EXPECT_GT(top(stops[i]) + stops[i]->height(), top(stops[i - 1]))
            << qPrintable(where) << ": " << qPrintable(stops[i]->objectName()) << " comes after "
            << qPrintable(stops[i - 1]->objectName());
}

void expectStripOrder(QWidget *editor, const QString &where) {
    QList<const QWidget *> buttons = tabStops(editor);
    buttons.removeIf([](const QWidget *widget) { return !isOnStrip(widget); });
    ASSERT_EQ(buttons.size(), 2) << qPrintable(where);
    EXPECT_LT(buttons[0]->geometry().center().x(), buttons[1]->geometry().center().x()) << qPrintable(where);
}

} // namespace scenarios
