// Alerts and the progress window.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/ui/dialogs/dialogPorts.h"
#include "plugin/ui/dialogs/vlProgressUIMgr.h"
#include "tests/ui/UiFixture.h"

namespace {

const QString launchKey = u"Button_LaunchClient"_s;
const QString cancelKey = u"Button_Cancel"_s;
const QString removeKey = u"Button_OKGot"_s;

void press(QDialog *alert, const QString &text) {
    for (QAbstractButton *button : alert->findChildren<QAbstractButton *>())
        if (button->text() == text)
            return button->click();
    FAIL() << "no button " << qPrintable(text);
}

} // namespace

class Dialogs : public UiTest {
protected:
    QMessageBox *alert() {
        const QList<QDialog *> shown = dialogs();
        return shown.isEmpty() ? nullptr : qobject_cast<QMessageBox *>(shown.last());
    }
    QWidget window;
    DialogPorts ports;
};

TEST_F(Dialogs, ShowTheMessageToTheLetter) {
    const QString message = u"%d of %s <b>bold</b> 100%\n&amp;"_s;
    window.show();
    ports.showAlertMessage(&window, message);
    ASSERT_TRUE(alert());
    auto *label = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
    ASSERT_TRUE(label);
    EXPECT_EQ(label->text(), message);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_TRUE(alert()->text().isEmpty());
    EXPECT_EQ(alert()->accessibleName(), message);
    EXPECT_FALSE(alert()->iconPixmap().isNull());
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(alert()->buttons().size(), 1);
    press(alert(), u"OK"_s);
    EXPECT_FALSE(alert());

    ports.showAlertMessage(nullptr, message); // without a parent
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->windowModality(), Qt::NonModal);
    QTest::keyClick(alert(), Qt::Key_Escape);
    EXPECT_FALSE(alert());

    auto dying = std::make_unique<QWidget>();
    dying->show();
    ports.showClientError(dying.get(), message);
    ASSERT_TRUE(alert());
    dying.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(alert());
}

TEST_F(Dialogs, BreakAWordThatIsWiderThanTheyAre) {
    const QString address = u"https://m.example/"_s + QString(200, u'x');
    window.show();
    ports.showAlertMessage(&window, address);
    ASSERT_TRUE(alert());
    const auto *label = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
    const QRect needed =
        label->fontMetrics().boundingRect(label->contentsRect(), Qt::TextWordWrap, label->text());
    EXPECT_LE(needed.width(), label->width());
    EXPECT_LE(needed.height(), label->height());
    EXPECT_EQ(label->text().remove(QChar(0x200B)), address);
    press(alert(), u"OK"_s);
}

TEST_F(Dialogs, LaunchTheClientThroughTheAgentOnlyOnNewerHosts) {
    struct Case {
        const char *host;
        QString button; // null: Escape
        int agentMessages, processes;
    };
    const Case cases[] = {{"15.9", launchKey, 1, 0},
                          {"15.8", launchKey, 0, 1},
                          {"15.9", cancelKey, 0, 0},
                          {"15.8", cancelKey, 0, 0},
                          {"15.9", QString(), 0, 0}};
    window.show();
    for (const auto &row : cases) {
        desktop.workspace->bundles.clear();
        installHost(desktop, QString::fromUtf8(row.host));
        installBundle(desktop, kVelausIdentify, u"/Applications/Parlo Meetings.app"_s, {});
        desktop.bus->clearPosted();
        desktop.workspace->started.clear();
        ports.showClientError(&window, u"Not running"_s);
        ASSERT_TRUE(alert());
        EXPECT_EQ(alert()->defaultButton()->text(), echo(launchKey));
        if (row.button.isNull())
            QTest::keyClick(alert(), Qt::Key_Escape);
        else
            press(alert(), echo(row.button));
        ASSERT_EQ(desktop.bus->posted().size(), row.agentMessages) << row.host;
        for (const auto &posted : desktop.bus->posted()) {
            EXPECT_EQ(posted.name, VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT);
            EXPECT_EQ(posted.userInfo, (platform::TextMap{{"actionId", "2"}}));
        }
        EXPECT_EQ(desktop.workspace->started.size(), row.processes) << row.host;
    }
}

TEST_F(Dialogs, RemoveTheMeetingOfTheEditorTheyAreAbout) {
    EditorWithStrip first;
    QWidget parent;
    parent.show();
    {
        EditorWithStrip second;
        for (EditorWithStrip *each : {&first, &second}) {
            each->window->show();
            each->open();
            each->attach();
        }
        first.context()->meetingKey = u"key"_s;
        first.strip().onUIChanged(StripState::MeetingAttached);

        ports.showRemoveMeetingWarning(&first.editor, first.window);
        press(alert(), echo(cancelKey));
        ports.showRemoveMeetingWarning(&second.editor, &parent);
    }
    press(alert(), echo(removeKey)); // the editor is destroyed
    EXPECT_EQ(first.context()->meetingAction, MeetingCommand::CmdNone);
    ports.showRemoveMeetingWarning(&first.editor, first.window);
    press(alert(), echo(removeKey));
    EXPECT_NE(first.context()->meetingAction, MeetingCommand::CmdNone);
}

TEST_F(Dialogs, ShowProgressWhenTheAnswerTakesLongAndNothingBefore) {
    constexpr double delay = vlProgressWindowController::delaySeconds;
    vlProgressUIMgr progress;
    progress.closeCommunication();
    progress.showCommunication(nullptr);
    EXPECT_TRUE(progress.showProgressWindow());
    desktop.runLoop->advance(delay / 2);
    progress.closeCommunication(); // the answer has come
    desktop.runLoop->advance(2 * delay);
    EXPECT_FALSE(progress.progressWindowController().window());

    progress.showCommunication(nullptr);
    desktop.runLoop->advance(delay / 2);
    progress.showCommunication(nullptr); // does not restart the delay
    EXPECT_FALSE(progress.progressWindowController().window());
    desktop.runLoop->advance(delay / 2);
    QWidget *shown = progress.progressWindowController().window();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(shown->windowTitle(), echo(u"VlPalletLabel"_s));
    EXPECT_EQ(shown->accessibleName(), echo(u"CommunicationProgressTitle"_s));
    EXPECT_EQ(shown->findChild<QLabel *>(u"text_communicationMsg"_s)->text(), shown->accessibleName());
    const QImage bar = shown->findChild<QProgressBar *>()->grab().toImage();
    const QRgb piece = shown->palette().color(QPalette::Highlight).rgb();
    int pieceWidth = 0;
    for (int x = 0; x < bar.width(); ++x)
        pieceWidth += bar.pixel(x, bar.height() / 2) == piece;
    EXPECT_TRUE(pieceWidth > 10 && pieceWidth < bar.width() / 2) << pieceWidth;
    shown->close();
    EXPECT_TRUE(shown->isVisible()) << "only the answer or the time-out closes it";
    progress.closeCommunication();
    EXPECT_FALSE(QApplication::activeModalWidget());
    EXPECT_FALSE(progress.showProgressWindow());
}

TEST_F(Dialogs, ShowOneProgressWindowWhileAnyRequestIsOutAndWhatTheLastOneIsFor) {
    vlProgressUIMgr first(ClientAnswer::Schedule), second(ClientAnswer::Delete);
    first.showCommunication(nullptr);
    desktop.runLoop->advance(0.2);
    second.showCommunication(nullptr);
    desktop.runLoop->advance(1);
    const QWidget *shown = first.progressWindowController().window();
    ASSERT_TRUE(shown);
    EXPECT_EQ(second.progressWindowController().window(), shown);
    EXPECT_EQ(shown->findChild<QLabel *>(u"text_action"_s)->text(), echo(u"ProgressDelete"_s));
    first.closeCommunication();
    EXPECT_TRUE(shown->isVisible());
    second.closeCommunication();
    EXPECT_FALSE(QApplication::activeModalWidget());
}
