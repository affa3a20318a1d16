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
    const QString message = u"%d of %s <b>bold</b> 100%\n&amp; https://m.example/"_s + QString(200, u'x');
    window.show();
    ports.showAlertMessage(&window, message);
    ASSERT_TRUE(alert());
    auto *label = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
    ASSERT_TRUE(label);
    EXPECT_EQ(label->text().remove(QChar(0x200B)), message);
    EXPECT_LE(
        label->fontMetrics().boundingRect(label->contentsRect(), Qt::TextWordWrap, label->text()).width(),
        label->width())
        << "a word is wider than the alert";
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(alert()->accessibleName(), message);
    EXPECT_TRUE(alert()->findChild<QLabel *>(u"qt_msgbox_label"_s)->isHidden()) << "it has no title to read";
    EXPECT_FALSE(alert()->iconPixmap().isNull());
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_FALSE(alert()->testAttribute(Qt::WA_QuitOnClose)) << "a host without windows goes on";
    const QPointer<QDialog> answered = alert();
    press(alert(), u"OK"_s);
    EXPECT_FALSE(alert());

    auto dying = std::make_unique<QWidget>();
    dying->show();
    ports.showClientError(dying.get(), message);
    ASSERT_TRUE(alert());
    const QPointer<QDialog> orphan = alert();
    dying.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(alert() || answered || orphan);
}

TEST_F(Dialogs, PlaceTheMessageBesideTheImageInEvenLines) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    window.show();
    QString message = u"Short"_s;
    for (const bool isLong : {false, true}) {
        ports.showAlertMessage(&window, message);
        ASSERT_TRUE(alert());
        const auto *image = alert()->findChild<QLabel *>(u"qt_msgboxex_icon_label"_s);
        auto *label = alert()->findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
        const auto *buttons = alert()->findChild<QDialogButtonBox *>();
        EXPECT_EQ(image->pos(), QPoint(20, 16));
        EXPECT_NEAR(label->geometry().center().y(), image->geometry().center().y(), 4);
        EXPECT_EQ(label->width(), 320);
        const QImage text = picture(*label);
        EXPECT_EQ(text.copy(0, 0, 320, 8), text.copy(0, text.height() - 8, 320, 8)) << "not in the middle";
        const QRect lines = label->contentsRect();
        EXPECT_EQ(lines, QRect(0, 0, lines.width(), label->height()));
        const auto heightIn = [label](int width) {
            return label->fontMetrics()
                .boundingRect(QRect(0, 0, width, 0), Qt::TextWordWrap, label->text())
                .height();
        };
        EXPECT_EQ(heightIn(lines.width()), heightIn(384)) << "it needs one more line";
        EXPECT_EQ(alert()->width() - label->geometry().right() - 1, 20);
        EXPECT_EQ(alert()->height() - buttons->geometry().bottom() - 1, 20);
        if (isLong)
            EXPECT_GT(heightIn(lines.width() - 1), heightIn(384)) << "the second line is as long";
        while (label->fontMetrics().horizontalAdvance(message) < 320 * 5 / 4)
            message += u" word"_s;
        press(alert(), u"OK"_s);
    }
}

TEST_F(Dialogs, LaunchTheClientThroughTheAgentOnlyOnNewerHosts) {
    window.show();
    for (const bool isNewer : {false, true}) {
        desktop.workspace->bundles.clear();
        installHost(desktop, isNewer ? u"15.9"_s : u"15.8"_s);
        installBundle(desktop, kVelausIdentify, u"/Applications/Parlo Meetings.app"_s, {});
        for (const QString &button : {cancelKey, QString(), launchKey}) {
            EXPECT_TRUE(desktop.bus->posted().isEmpty());
            EXPECT_EQ(desktop.workspace->started.size(), isNewer ? 1 : 0);
            ports.showClientError(&window, u"Not running"_s);
            ASSERT_TRUE(alert());
            EXPECT_EQ(alert()->defaultButton()->text(), echo(launchKey));
            if (button.isNull())
                QTest::keyClick(alert(), Qt::Key_Escape);
            else
                press(alert(), echo(button));
        }
    }
    EXPECT_EQ(desktop.workspace->started.size(), 1);
    ASSERT_EQ(desktop.bus->posted().size(), 1);
    EXPECT_EQ(desktop.bus->posted().first().name, VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT);
    EXPECT_EQ(desktop.bus->posted().first().userInfo, (platform::TextMap{{"actionId", "2"}}));
}

TEST_F(Dialogs, RemoveTheMeetingOfTheEditorTheyAreAbout) {
    window.show();
    EditorWithStrip editor;
    editor.open();
    editor.attach();
    editor.context()->meetingKey = u"key"_s;
    editor.strip().onUIChanged(StripState::MeetingAttached);
    ports.showRemoveMeetingWarning(&editor.editor, &window);
    press(alert(), echo(cancelKey));
    {
        EditorWithStrip dying;
        ports.showRemoveMeetingWarning(&dying.editor, &window);
    }
    press(alert(), echo(removeKey));
    EXPECT_EQ(editor.context()->meetingAction, MeetingCommand::CmdNone);
    ports.showRemoveMeetingWarning(&editor.editor, &window);
    press(alert(), echo(removeKey));
    EXPECT_NE(editor.context()->meetingAction, MeetingCommand::CmdNone);
}

TEST_F(Dialogs, ShowProgressWhenTheAnswerTakesLongAndNothingBefore) {
    constexpr double delay = 0.4; // seconds
    vlProgressUIMgr progress;
    progress.showCommunication(nullptr);
    EXPECT_TRUE(progress.showProgressWindow());
    desktop.runLoop->advance(delay / 2);
    progress.closeCommunication(); // the answer has come
    desktop.runLoop->advance(2 * delay);
    EXPECT_FALSE(progress.progressWindowController().window());
    {
        vlProgressUIMgr gone;
        gone.showCommunication(nullptr);
    }
    desktop.runLoop->advance(delay);
    EXPECT_FALSE(QApplication::activeModalWidget());

    progress.showCommunication(nullptr);
    desktop.runLoop->advance(delay / 2);
    progress.showCommunication(nullptr); // does not restart the delay
    EXPECT_FALSE(progress.progressWindowController().window());
    desktop.runLoop->advance(delay / 2);
    QWidget *shown = progress.progressWindowController().window();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->windowModality(), Qt::ApplicationModal);
    EXPECT_FALSE(shown->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(shown->testAttribute(Qt::WA_QuitOnClose)) << "a host without windows goes on";
    EXPECT_TRUE(shown->findChild<QLabel *>(u"text_action"_s)->isHidden());
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

    vlProgressUIMgr second(ClientAnswer::Delete); // they share the window, which says what the last is for
    second.showCommunication(nullptr);
    desktop.runLoop->advance(delay);
    EXPECT_EQ(second.progressWindowController().window(), shown);
    EXPECT_EQ(shown->findChild<QLabel *>(u"text_action"_s)->text(), echo(u"ProgressDelete"_s));
    progress.closeCommunication();
    EXPECT_TRUE(shown->isVisible());
    second.closeCommunication();
    EXPECT_FALSE(QApplication::activeModalWidget());
    EXPECT_FALSE(progress.showProgressWindow());
}
