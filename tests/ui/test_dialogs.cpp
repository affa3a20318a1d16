#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/ui/dialogs/dialogPorts.h"
#include "plugin/ui/dialogs/vlProgressUIMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/ui/UiFixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QtTest/QTest>

namespace {

const QString launchKey = u"Button_LaunchClient"_s;
const QString cancelKey = u"Button_Cancel"_s;
const QString removeKey = u"Button_OKGot"_s;
const QString clientExecutable = u"/client"_s;

void press(QDialog *alert, const QString &text) {
    for (QAbstractButton *button : alert->findChildren<QAbstractButton *>())
        if (button->text() == text)
            return button->click();
    FAIL() << "no button " << qPrintable(text);
}

} // namespace

class Dialogs : public UiTest {
protected:
    // The host's version is in its own property list.
    void installHost(const QString &version) {
        const QString host = documents.filePath(u"host"_s);
        QDir().mkpath(host + u"/Contents"_s);
        platform::services().propertyLists->write(host + u"/Contents/Info.plist"_s,
                                                  QVariantMap{{"CFBundleShortVersionString", version}});
        desktop.workspace->bundles = {
            {keyOutlookIdentifier, host, QString()},
            {kVelausIdentify, u"/Applications/Parlo Meetings.app"_s, clientExecutable}};
    }
    QMessageBox *alert() {
        const QList<QDialog *> shown = dialogs();
        return shown.isEmpty() ? nullptr : qobject_cast<QMessageBox *>(shown.last());
    }
    QWidget window;
    DialogRequestFeedback feedback;
    DialogWorkflowAlerts alerts;
};

TEST_F(Dialogs, ShowTheMessageToTheLetter) {
    const QString message = u"%d of %s <b>bold</b> 100%\n&amp;"_s;
    window.show();
    feedback.showAlertMessage(&window, message);
    ASSERT_TRUE(alert());
    auto *label = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
    ASSERT_TRUE(label);
    EXPECT_EQ(label->text(), message);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_TRUE(alert()->text().isEmpty());
    EXPECT_FALSE(alert()->iconPixmap().isNull());
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(alert()->buttons().size(), 1);
    press(alert(), u"OK"_s);
    EXPECT_FALSE(alert());
}

TEST_F(Dialogs, PutAShortMessageBesideTheImage) {
    alerts.showAlertMessage(nullptr, u"Hello"_s);
    ASSERT_TRUE(alert());
    const auto *icon = alert()->findChild<QLabel *>(u"qt_msgboxex_icon_label"_s);
    const auto *message = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
    ASSERT_TRUE(icon && message);
    EXPECT_NEAR(icon->geometry().center().y(), message->geometry().center().y(), 6);
    EXPECT_TRUE(message->alignment() & Qt::AlignVCenter);
}

TEST_F(Dialogs, StandAloneWithoutAWindow) {
    alerts.showAlertMessage(nullptr, u"Hello"_s);
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->windowModality(), Qt::NonModal);
    QTest::keyClick(alert(), Qt::Key_Escape);
    EXPECT_FALSE(alert());
}

TEST_F(Dialogs, GoWhenTheirWindowDies) {
    auto parent = std::make_unique<QWidget>();
    parent->show();
    feedback.showClientError(parent.get(), u"Not running"_s);
    ASSERT_TRUE(alert());
    parent.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(alert());
}

TEST_F(Dialogs, LaunchTheClientThroughTheAgentOnlyOnNewerHosts) {
    const struct {
        const char *host;
        QString button; // null: Escape
        int agentMessages;
        int processes;
    } cases[] = {
        {"15.9", launchKey, 1, 0}, {"16.0", launchKey, 1, 0}, {"15.8", launchKey, 0, 1},
        {"15.9", cancelKey, 0, 0}, {"15.8", cancelKey, 0, 0}, {"15.9", QString(), 0, 0},
    };
    window.show();
    for (const auto &row : cases) {
        installHost(QString::fromUtf8(row.host));
        desktop.bus->clearPosted();
        desktop.workspace->started.clear();
        feedback.showClientError(&window, u"Not running"_s);
        ASSERT_TRUE(alert());
        EXPECT_EQ(alert()->defaultButton()->text(), echo(launchKey));
        if (row.button.isNull())
            QTest::keyClick(alert(), Qt::Key_Escape);
        else
            press(alert(), echo(row.button));
        ASSERT_EQ(desktop.bus->posted().size(), row.agentMessages) << row.host;
        if (row.agentMessages > 0) {
            const auto &posted = desktop.bus->posted().first();
            EXPECT_EQ(posted.name, VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT);
            EXPECT_EQ(posted.userInfo, (platform::TextMap{{"actionId", "2"}}));
        }
        EXPECT_EQ(desktop.workspace->started.size(), row.processes) << row.host;
    }
}

TEST_F(Dialogs, RemoveTheMeetingOfTheEditorTheyAreAbout) {
    HostEditorWindow first;
    HostEditorWindow second;
    const auto lastCommand = [&first] { return first.context()->meetingAction; };
    for (HostEditorWindow *editor : {&first, &second}) {
        editor->window->show();
        editor->open();
        editor->strip().attachOutlookERCalendarEventEditorWindowController(editor);
    }
    first.context()->meetingKey = u"key"_s;
    first.strip().onUIChanged(StripState::MeetingAttached);

    alerts.showRemoveMeetingWarning(&first.editor, first.window);
    press(alert(), echo(cancelKey));
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdNone);

    alerts.showRemoveMeetingWarning(&first.editor, first.window);
    QMessageBox *aboutFirst = alert();
    alerts.showRemoveMeetingWarning(&second.editor, second.window); // shows no meeting: nothing to remove
    press(aboutFirst, echo(removeKey));
    EXPECT_NE(lastCommand(), MeetingCommand::CmdNone);
}

TEST_F(Dialogs, RemoveNothingWhenTheEditorIsGone) {
    QWidget parent;
    parent.show();
    {
        HostEditorWindow editor;
        alerts.showRemoveMeetingWarning(&editor.editor, &parent);
    }
    press(alert(), echo(removeKey));
    EXPECT_EQ(vlMeetingMgr::sharedInstance().getMeetingAction(), MeetingCommand::CmdNone);
}

TEST_F(Dialogs, ShowProgressWhenTheAnswerTakesLongAndNothingBefore) {
    constexpr double delay = vlProgressWindowController::delaySeconds;
    vlProgressUIMgr progress;
    progress.closeCommunication();
    progress.showCommunication(nullptr);
    EXPECT_TRUE(progress.showProgressWindow());
    desktop.runLoop->advance(delay / 2);
    progress.showCommunication(nullptr); // does not begin the delay anew
    EXPECT_FALSE(progress.progressWindowController().window());
    desktop.runLoop->advance(delay / 2);
    const QWidget *shown = progress.progressWindowController().window();
    ASSERT_TRUE(shown);
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(shown->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(shown->findChild<QLabel *>(u"text_communicationMsg"_s)->text(),
              echo(u"CommunicationProgressTitle"_s));
    progress.progressWindowController().window()->close();
    EXPECT_TRUE(shown->isVisible()) << "only the answer or the time-out ends it";
    progress.closeCommunication();
    progress.closeCommunication();
    EXPECT_FALSE(QApplication::activeModalWidget());
    EXPECT_FALSE(progress.showProgressWindow());

    progress.showCommunication(nullptr);
    desktop.runLoop->advance(delay / 2);
    progress.closeCommunication(); // the answer is here
    desktop.runLoop->advance(2 * delay);
    EXPECT_FALSE(progress.progressWindowController().window());
}

TEST_F(Dialogs, ShowOneProgressWindowWhileAnyRequestIsOut) {
    vlProgressUIMgr first, second;
    first.showCommunication(nullptr);
    desktop.runLoop->advance(0.2);
    second.showCommunication(nullptr);
    desktop.runLoop->advance(1);
    const QWidget *shown = first.progressWindowController().window();
    ASSERT_TRUE(shown);
    EXPECT_EQ(second.progressWindowController().window(), shown);
    first.closeCommunication();
    EXPECT_TRUE(shown->isVisible());
    second.closeCommunication();
    EXPECT_FALSE(QApplication::activeModalWidget());
}
