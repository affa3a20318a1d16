// Every window, for users who cannot see it or have no mouse.
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/main/MainWindowController.h"
#include "standin/meetingclient/ClientWindow.h"
#include "tests/scenarios/AccessibilityRules.h"
#include "tests/scenarios/Scenario.h"

#include <QToolButton>

using namespace scenarios;
namespace controls = mailhost::controls;

namespace {

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
    expectStripOrder(editor, u"with a meeting"_s);
    scenario.clickRemove(editor);
    expectStripOrder(editor, u"without a meeting"_s);
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
