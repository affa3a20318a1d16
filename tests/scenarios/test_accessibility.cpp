// Rules for every window, for users who cannot see it or have no mouse.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/main/MainWindowController.h"
#include "standin/meetingclient/ClientWindow.h"
#include "tests/scenarios/Scenario.h"

using namespace scenarios;
namespace controls = mailhost::controls;

namespace {

using Roles = QList<QAccessible::Role>;

// Roles of controls that take text or use the arrow keys.
const Roles fields{QAccessible::EditableText, QAccessible::SpinBox, QAccessible::List, QAccessible::Table};
const Roles choices{QAccessible::Button,   QAccessible::ButtonMenu,  QAccessible::ButtonDropDown,
                    QAccessible::CheckBox, QAccessible::RadioButton, QAccessible::ComboBox};
// Roles of controls that represent their inner parts, such as the field of a spin box.
const Roles wholes{QAccessible::SpinBox, QAccessible::ComboBox, QAccessible::Table};

QAccessible::Role roleOf(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

QString textOf(QWidget *widget, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(widget)->text(kind).trimmed();
}

bool isInside(QWidget *widget, const Roles &roles) {
    QWidget *parent = widget->parentWidget();
    return parent && (roles.contains(roleOf(parent)) || isInside(parent, roles));
}

bool hasLetter(QWidget *widget) {
    const auto *button = qobject_cast<QAbstractButton *>(widget);
    return !textOf(widget, QAccessible::Accelerator).isEmpty() || (button && !button->shortcut().isEmpty()) ||
           std::ranges::any_of(widget->window()->findChildren<QLabel *>(), [widget](const QLabel *label) {
               return label->buddy() == widget && label->text().contains(u'&');
           });
}

// One letter is enough for a group of choices, because arrow keys reach the others. Escape presses a
// rejecting button. The keys of what is in a menu too are named by its tool tip.
bool hasKeys(QWidget *widget) {
    if (fields.contains(roleOf(widget)) || hasLetter(widget))
        return true;
    if (const auto *box = qobject_cast<QDialogButtonBox *>(widget->parentWidget()))
        return box->buttonRole(qobject_cast<QAbstractButton *>(widget)) == QDialogButtonBox::RejectRole;
    if (qobject_cast<QRadioButton *>(widget))
        return std::ranges::any_of(widget->parentWidget()->findChildren<QRadioButton *>(), hasLetter);
    return isInside(widget, {QAccessible::ToolBar}) &&
           textOf(widget, QAccessible::Description).endsWith(u')');
}

// Whether it is a control, which has a name and a role, is reached by Tab, and has a letter or is of a kind
// that needs none.
bool isAccessibleControl(QWidget *widget, const QString &where) {
    const bool takesTab = widget->focusPolicy() & Qt::TabFocus;
    const QString name = textOf(widget, QAccessible::Name);
    SCOPED_TRACE(qPrintable(u"%1: %2 \"%3\" %4"_s.arg(where, widget->objectName(), name,
                                                      QLatin1String(widget->metaObject()->className()))));
    if (!(fields + choices).contains(roleOf(widget))) {
        EXPECT_TRUE(!takesTab || (roleOf(widget) == QAccessible::Grouping && !name.isEmpty()))
            << "of no known kind: " << roleOf(widget);
        return false;
    }
    EXPECT_FALSE(name.isEmpty());
    // Tab reaches only the checked radio button of a group.
    EXPECT_TRUE(takesTab || qobject_cast<QRadioButton *>(widget) || !widget->isEnabled())
        << "not reached by Tab";
    EXPECT_TRUE(hasKeys(widget) || !widget->isEnabled()) << "has no letter";
    return true;
}

// A window without any control is a failure, too.
void expectAccessible(QWidget *window, const QString &where) {
    ASSERT_TRUE(window) << qPrintable(where);
    int controls = 0;
    for (QWidget *widget : window->findChildren<QWidget *>())
        if (widget->isVisible() && widget->window() == window && !isInside(widget, wholes))
            controls += isAccessibleControl(widget, where) ? 1 : 0;
    EXPECT_GT(controls, 0) << qPrintable(where);
}

// Tab reaches no control after one that is completely below it. The strip beside the fields is left out.
void expectReadingOrder(QWidget *window, const QString &where) {
    QList<QWidget *> stops;
    for (QWidget *next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain())
        if (next->isVisible() && next->window() == window && next->focusPolicy() & Qt::TabFocus &&
            !dynamic_cast<vlActionAdditionView *>(next->parentWidget()))
            stops.append(next);
    EXPECT_GT(stops.size(), 5) << qPrintable(where);
    const auto top = [window](const QWidget *widget) { return widget->mapTo(window, QPoint()).y(); };
    for (qsizetype i = 1; i < stops.size(); ++i)
        EXPECT_GT(top(stops[i]) + stops[i]->height(), top(stops[i - 1]))
            << qPrintable(where) << ": " << qPrintable(stops[i]->objectName()) << " comes after "
            << qPrintable(stops[i - 1]->objectName());
}

class Accessibility : public OnHosts {
protected:
    static QWidget *shownDialog() {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (qobject_cast<QDialog *>(widget) && widget->isVisible())
                return widget;
        return nullptr;
    }
    void clickOnSheet(const QString &button) {
        shownDialog()->findChild<QAbstractButton *>(button)->click();
        scenario.settle();
    }
    // The dialog that is up, which Escape closes again.
    void expectAccessibleDialog(const QString &where) {
        scenario.settle();
        expectAccessible(shownDialog(), where);
        QTest::keyClick(shownDialog(), Qt::Key_Escape);
        scenario.settle();
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, Accessibility, bothHosts);

} // namespace

TEST_P(Accessibility, OfTheEditorTheStripTheSheetAndTheAlerts) {
    scenario.client().setAccounts({QJsonObject{{"meetingNumber", 7}, {"invitation", "Dial 7"}}});
    expectAccessible(scenario.host().mainWindowController()->window(), u"main window"_s);
    mailhost::EditorWindow *editor = scenario.open(Scenario::invited);
    expectAccessible(editor, u"editor without a meeting"_s);
    scenario.clickAdd(editor);
    expectAccessible(shownDialog(), u"settings sheet"_s);
    clickOnSheet(u"requiredMeetingPswButton"_s);
    clickOnSheet(u"thirdPartyAudioButton"_s);
    expectAccessible(shownDialog(), u"settings sheet with a password and a text"_s);
    expectReadingOrder(shownDialog(), u"settings sheet"_s);
    clickOnSheet(u"bothButton"_s);
    clickOnSheet(u"requiredMeetingPswButton"_s);
    scenario.confirmSheet();
    expectAccessible(editor, u"editor with a meeting"_s);
    scenario.clickRemove(editor);
    scenario.clientQuits();
    scenario.clickAdd(editor);
    expectAccessibleDialog(u"client not running"_s);
}

TEST_P(Accessibility, OfTheHostsOwnDialogsAndTheClient) {
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::repeatButton), Qt::LeftButton);
    expectAccessibleDialog(u"recurrence"_s);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::timeZoneButton), Qt::LeftButton);
    scenario.settle();
    expectAccessible(editor, u"editor with its time zone"_s);
    expectReadingOrder(editor, u"editor"_s);
    auto *mainWindow = scenario.host().mainWindowController()->mainWindow();
    mainWindow->command(controls::customizeToolBarAction)->trigger();
    expectAccessibleDialog(u"tool-bar customisation"_s);
    QTest::mouseClick(editor->findChild<QWidget *>(controls::deleteButton), Qt::LeftButton);
    expectAccessibleDialog(u"question about deleting"_s);
    scenario.typeSubject(editor, u"Changed"_s);
    editor->close();
    expectAccessibleDialog(u"question about the changes"_s);
    scenario.close(editor);
    meetingclient::AnswerRules rules;
    meetingclient::ClientWindow client(scenario.client(), rules);
    client.show();
    client.findChild<QToolButton *>()->click(); // the panel that is closed at first
    expectAccessible(&client, u"meeting client"_s);
}
