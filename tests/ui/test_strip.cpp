// The strip in an editor's header.
#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "tests/support/Warnings.h"
#include "tests/ui/UiFixture.h"

namespace {

const QString addKey = u"AddVelaButton"_s;
const QString audioKey = u"AddPACButton"_s;
const QString removeKey = u"CancelVelaButton"_s;
const QString settingsKey = u"ChangeSettingButton"_s;

const QString hostSave = u"vl_ERCalendarEventEditorViewController_save"_s;

} // namespace

class Strip : public UiTest {};

TEST_F(Strip, TellsWhatASaveNeeds) {
    EditorWithStrip editor;
    editor.open();
    const auto needs = [&editor](StripState state) {
        editor.strip().onUIChanged(state);
        return editor.strip().getVlDataStatus();
    };
    EXPECT_EQ(needs(StripState::NoMeeting), DataStatus::NothingToDo) << "the strip has no adapter yet";
    EXPECT_FALSE(editor.strip().blockDeleteVelaMeeting());
    editor.strip().onClickChangeSettings();
    editor.editor.pends("body", "<html><body>Typed before</body></html>");
    editor.attach();
    EXPECT_EQ(needs(StripState::NoMeeting), DataStatus::NothingToDo);
    editor.context()->meetingKey = u"key"_s;
    EXPECT_EQ(needs(StripState::NoMeeting), DataStatus::DeleteMeeting) << "it was removed";
    EXPECT_EQ(needs(StripState::MeetingAttached), DataStatus::NothingToDo) << "nothing has changed";
    editor.editor.pends("summary", "New");
    EXPECT_EQ(needs(StripState::MeetingAttached), DataStatus::UpdateMeeting);
    editor.editor.values["isCancelMode"] = true;
    EXPECT_EQ(needs(StripState::MeetingAttached), DataStatus::DeleteMeeting);
    editor.context()->meetingKey.clear();
    EXPECT_EQ(needs(StripState::MeetingAttached), DataStatus::NothingToSend) << "the meeting is gone";
    EXPECT_EQ(needs(StripState::Hidden), DataStatus::NothingToSend) << "as before";
    editor.event.values["isOccurrence"] = true;
    EXPECT_EQ(needs(StripState::MeetingAttached), DataStatus::NothingToDo) << "a day of a series has none";
    EditorWithStrip day;
    day.event.values["isOccurrence"] = true;
    day.open();
    EXPECT_TRUE(shownButtons(day.strip()).isEmpty());
}

// Its window may close while the host saves. The workflow is told a moment later.
TEST_F(Strip, OfAStoredMeetingShowsItAndLetsTheHostSave) {
    EditorWithStrip editor;
    editor.event.values["olmUCCapabilities"] = uR"({"meetingKey": "k1", "encodeMailBody": "digest"})"_s;
    editor.open();
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().meetingKey(), u"k1"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().encodeMailBody(), u"digest"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().getSavedApptInfo().value(vl_ApptInfo_Subject), u"Review"_s);
    editor.open(); // a second double click
    EXPECT_EQ(editor.editor.called, QStringList{hostSave});
    editor.editor.pends("summary", "New");
    EXPECT_EQ(editor.strip().getVlDataStatus(), DataStatus::UpdateMeeting);

    EditorWithStrip closing;
    closing.event.values = editor.event.values;
    fakehost::during() = [&closing] {
        if (closing.editor.called.contains(hostSave) && closing.hasStrip())
            closing.editor.close();
    };
    closing.open();
    fakehost::during() = nullptr;
    EXPECT_FALSE(closing.hasStrip());
    EXPECT_FALSE(closing.context()->meetingKey.isEmpty());
    desktop.runLoop->advance(0.01);
    EXPECT_TRUE(closing.context()->meetingKey.isEmpty());
    EXPECT_FALSE(editor.context()->meetingKey.isEmpty()) << "it is still open";

    const auto found = [&editor] {
        const auto &strips = vlActionAdditionViewMonitor::sharedInstance();
        return strips.getVlActionAdditionViewByEditorWinCtrl(editor.editor.windowController());
    };
    EXPECT_EQ(found(), &editor.strip());
    platform::windowWillClose(editor.window);
    EXPECT_EQ(found(), nullptr);
    delete editor.window;
    EXPECT_TRUE(editor.hasStrip()) << "the click on one of its buttons may go on";
}

TEST_F(Strip, ConsumesWhatTheToolBarHasLeftForTheNextEditor) {
    const QString meeting = keyFlagAutoAddToVlMeeting, audio = keyFlagAutoAddToPACMeeting;
    const std::tuple<QStringList, QVariant, MeetingCommand> cases[] = {
        {{}, {}, MeetingCommand::CmdNone},
        {{meeting}, {}, MeetingCommand::CmdAddMeeting},
        {{audio, meeting}, 1, MeetingCommand::CmdAddMeeting},
        {{audio}, {}, MeetingCommand::CmdNone},
        {{audio}, 1, MeetingCommand::CmdAddAudioConference1},
        {{audio}, "2", MeetingCommand::CmdAddAudioConference2},
        {{audio}, 3, MeetingCommand::CmdNone},
    };
    for (const auto &[flags, account, command] : cases) {
        QVariantMap &left = platform::services().mainThreadDictionary;
        left.clear();
        for (const QString &flag : flags)
            left.insert(flag, flag);
        if (account.isValid())
            left.insert(keyFlagVlMeetingArgument, QVariantMap{{"pacAccountNo", account}});
        EditorWithStrip editor;
        editor.editor.values["isDirty"] = true;
        editor.open();
        EXPECT_EQ(editor.context()->meetingAction, command) << qPrintable(flags.join(u' '));
        EXPECT_EQ(editor.strip().isApptDirty(), command != MeetingCommand::CmdNone);
        EXPECT_EQ(QStringList(left.keys()), flags.size() > 1 ? QStringList{audio} : QStringList());
    }
}

TEST_F(Strip, ShowsTheButtonsOfItsStateAndSendsTheCommandOfAClick) {
    EditorWithStrip editor;
    editor.window->show();
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
    MeetingCommand &command = editor.context()->meetingAction;
    const auto column = [&editor](int x, int y) { return editor.strip().grab().toImage().copy(x, y, 1, 40); };
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty()) << "the strip has no editor yet";
    EXPECT_EQ(column(0, 10), column(0, 11));
    editor.open();
    EXPECT_TRUE(editor.editor.called.isEmpty()) << "there is nothing that the host has to save";
    EXPECT_EQ(shownButtons(editor.strip()), QStringList{echo(addKey)});
    EXPECT_EQ(button(editor.strip(), addKey)->geometry(), QRect(16, -2, 168, 60));
    enableAudioConferences(true);
    EXPECT_TRUE(repaints(editor.strip(), [&editor] { editor.strip().onUIChanged(StripState::Hidden); }));
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
    const QImage dots = picture(editor.strip(), 4);
    for (const int edge : {0, 4 * 400 - 1}) {
        EXPECT_EQ(dots.pixelColor(edge, 4 * 70 - 3), QColor(Qt::black)) << "it draws no dots";
        EXPECT_EQ(dots.pixelColor(edge, 4 * 70 - 9), QColor(Qt::white)) << "it draws a line";
    }
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_EQ(shownButtons(editor.strip()), (QStringList{echo(audioKey), echo(addKey)}));
    button(editor.strip(), addKey)->click();
    EXPECT_EQ(command, MeetingCommand::CmdAddMeeting);

    auto *audio = qobject_cast<QPushButton *>(button(editor.strip(), audioKey));
    const QList<QAction *> accounts = audio->menu()->actions();
    ASSERT_EQ(accounts.size(), 4);
    EXPECT_FALSE(accounts[0]->isVisible());
    EXPECT_TRUE(accounts[2]->isSeparator());
    accounts[1]->trigger();
    EXPECT_EQ(command, MeetingCommand::CmdAddAudioConference1);
    accounts[3]->trigger();
    EXPECT_EQ(command, MeetingCommand::CmdAddAudioConference2);
    Q_EMIT audio->clicked();
    EXPECT_EQ(command, MeetingCommand::CmdAddAudioConference1);
    accounts[3]->trigger();
    Q_EMIT accounts[0]->triggered();
    EXPECT_EQ(command, MeetingCommand::CmdAddAudioConference1);

    command = MeetingCommand::CmdNone;
    for (const StripState state : {StripState::MeetingAttached, StripState(7)}) { // unknown: as before
        button(editor.strip(), settingsKey)->move(0, 0);
        editor.strip().onUIChanged(state);
        EXPECT_EQ(button(editor.strip(), settingsKey)->geometry(), QRect(16, -2, 110, 60));
        EXPECT_EQ(shownButtons(editor.strip()), (QStringList{echo(removeKey), echo(settingsKey)}));
        button(editor.strip(), addKey)->click();
        accounts[1]->trigger();
        EXPECT_EQ(command, MeetingCommand::CmdNone);
    }
    QAbstractButton *settings = button(editor.strip(), settingsKey);
    settings->click();
    EXPECT_EQ(command, MeetingCommand::CmdChangeSettings);
    EXPECT_EQ(editor.editor.values.value("isDirty"), true);

    editor.strip().enableChangeSettingButton(false);
    EXPECT_FALSE(settings->isEnabled());
    EXPECT_EQ(settings->toolTip(), echo(u"NotAllowChangeVelaSettingsTip"_s));
    editor.strip().autoRemoveVelaMeeting(); // in this state nothing is removed
    EXPECT_EQ(command, MeetingCommand::CmdChangeSettings);
    editor.strip().onUIChanged(StripState::MeetingAttached);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_NE(command, MeetingCommand::CmdChangeSettings);
    EXPECT_TRUE(settings->isEnabled());
    EXPECT_TRUE(settings->toolTip().isEmpty());
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    const auto image = [&editor, settings](bool enabled) {
        editor.strip().enableChangeSettingButton(enabled);
        return picture(*settings).copy(0, 0, 110, 30); // without the title
    };
    EXPECT_NE(image(false), image(true));
}

TEST_F(Strip, CanBeUsedByKeyboardAloneAndItsMenuByAPointerThatIsInside) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    EditorWithStrip editor;
    MeetingCommand &command = editor.context()->meetingAction;
    enableAudioConferences(true);
    editor.open();
    editor.window->show();
    editor.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.window));
    QAbstractButton *add = button(editor.strip(), addKey);
    auto *audio = qobject_cast<QPushButton *>(button(editor.strip(), audioKey));
    editor.editor.locationField()->setFocus();
    const QImage unmarked = add->grab().toImage();
    add->setFocus(Qt::TabFocusReason);
    const QImage marked = add->grab().toImage();
    const QPoint above(add->width() / 2, 10 - 3); // of the image
    EXPECT_EQ(marked.pixelColor(above), add->palette().color(QPalette::Highlight));
    EXPECT_NE(unmarked.pixelColor(above), marked.pixelColor(above));
    QTest::keyClick(add, Qt::Key_A);
    EXPECT_EQ(command, MeetingCommand::CmdNone);
    QTest::keyClick(add, Qt::Key_Return);
    EXPECT_EQ(command, MeetingCommand::CmdAddMeeting);
    QTest::keyClick(add, Qt::Key_Tab);
    ASSERT_TRUE(audio->hasFocus());
    QShortcutEvent letter(audio->shortcut(), 0);
    QApplication::sendEvent(audio, &letter);
    EXPECT_TRUE(audio->menu()->isVisible()) << "Alt and its letter";
    audio->menu()->close();
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Enter, Qt::Key_Down}) {
        QTest::keyClick(audio, key);
        EXPECT_TRUE(audio->menu()->isVisible()) << key;
        audio->menu()->close();
    }
    command = MeetingCommand::CmdNone;
    editor.strip().move(0, 0); // so that the screen has room for the menu
    QTest::mousePress(audio, Qt::LeftButton);
    EXPECT_FALSE(audio->menu()->isVisible());
    pointerOver(*audio);
    QTest::mousePress(audio, Qt::LeftButton);
    EXPECT_TRUE(audio->menu()->isVisible());
    EXPECT_EQ(audio->menu()->pos(), editor.strip().mapToGlobal(QPoint(229, 44))) << "below the image";
    audio->menu()->close();
    QTest::mouseRelease(audio, Qt::LeftButton);
    EXPECT_EQ(command, MeetingCommand::CmdNone) << "a press only opens the menu";
    editor.strip().onUIChanged(StripState::MeetingAttached);
    EXPECT_TRUE(button(editor.strip(), settingsKey)->hasFocus()) << "the hidden button took the focus away";
    QTest::keyClick(button(editor.strip(), settingsKey), Qt::Key_Tab);
    EXPECT_TRUE(button(editor.strip(), removeKey)->hasFocus());
    editor.editor.locationField()->setFocus();
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(editor.editor.locationField()->hasFocus());
}
