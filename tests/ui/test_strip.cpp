// The strip in an editor's header.
#include "platform/toolkit/Frames.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/support/Warnings.h"
#include "tests/ui/UiFixture.h"

namespace {

const QString addKey = u"AddVelaButton"_s;
const QString audioKey = u"AddPACButton"_s;
const QString removeKey = u"CancelVelaButton"_s;
const QString settingsKey = u"ChangeSettingButton"_s;

const QString hostSave = u"vl_ERCalendarEventEditorViewController_save"_s;

MeetingCommand lastCommand() {
    return vlMeetingMgr::sharedInstance().getMeetingAction();
}

void forgetLastCommand() {
    vlMeetingMgr::sharedInstance().setMeetingAction(MeetingCommand::CmdNone);
}

QStringList echoes(QStringList keys) {
    for (QString &key : keys)
        key = echo(key);
    keys.sort();
    return keys;
}

} // namespace

class Strip : public UiTest {};

TEST_F(Strip, ShowsTheButtonsOfItsState) {
    const std::tuple<StripState, bool, QStringList> cases[] = {
        {StripState::Hidden, true, {}},
        {StripState::NoMeeting, true, {addKey, audioKey}},
        {StripState::NoMeeting, false, {addKey}},
        {StripState::MeetingAttached, true, {removeKey, settingsKey}},
        {StripState(7), true, {removeKey, settingsKey}}, // unknown: as before
    };
    EditorWithStrip editor;
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty()) << "the strip has no editor yet";
    editor.open();
    for (const auto &[state, audioConferences, shown] : cases) {
        enableAudioConferences(audioConferences);
        editor.strip().onUIChanged(state);
        EXPECT_EQ(shownButtons(editor.strip()), echoes(shown)) << int(state);
        EXPECT_EQ(editor.strip().uiStatus(), state);
    }
    const std::pair<QString, QRectF> frames[] = {{addKey, {16, 12, 168, 60}},
                                                 {audioKey, {140, 12, 200, 60}},
                                                 {removeKey, {120, 12, 188, 60}},
                                                 {settingsKey, {16, 12, 110, 60}}};
    for (const auto &[key, frame] : frames)
        EXPECT_EQ(platform::bottomLeftFrame(button(editor.strip(), key)), frame) << qPrintable(key);
    EditorWithStrip ofAnother; // its appointment cannot have a meeting
    ofAnother.event.values["isOwner"] = false;
    ofAnother.open();
    ofAnother.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(shownButtons(ofAnother.strip()).isEmpty());
}

TEST_F(Strip, TellsWhatASaveNeeds) {
    using enum StripState;
    struct Case {
        const char *what;
        bool meeting;
        StripState state;
        bool cancelMode, changed;
        DataStatus expected;
    };
    const Case cases[] = {
        {"no meeting, nothing shown before", false, Hidden, false, true, DataStatus::None},
        {"no meeting", false, NoMeeting, false, true, DataStatus::NothingToDo},
        {"shown meeting is gone", false, MeetingAttached, false, true, DataStatus::NothingToSend},
        {"no meeting, hidden: as before", false, Hidden, false, true, DataStatus::NothingToSend},
        {"meeting, changed", true, MeetingAttached, false, true, DataStatus::UpdateMeeting},
        {"meeting, unchanged", true, MeetingAttached, false, false, DataStatus::NothingToDo},
        {"meeting, removed", true, NoMeeting, false, false, DataStatus::DeleteMeeting},
        {"meeting, cancelled", true, MeetingAttached, true, true, DataStatus::DeleteMeeting},
    };
    EditorWithStrip editor;
    editor.open();
    EXPECT_EQ(editor.strip().getVlDataStatus(), DataStatus::NothingToDo) << "the strip has no adapter yet";
    editor.attach();
    for (const auto &row : cases) {
        vlMeetingDataMgr::sharedInstance().clearSavedMeetingData();
        if (row.meeting)
            vlMeetingDataMgr::sharedInstance().setMeetingKey(u"key"_s);
        editor.editor.values["isCancelMode"] = row.cancelMode;
        editor.editor.values["uncommittedChanges"] =
            row.changed ? QVariantMap{{"content.summary", "New"}} : QVariantMap{};
        editor.strip().onUIChanged(row.state);
        EXPECT_EQ(int(editor.strip().getVlDataStatus()), int(row.expected)) << row.what;
    }
    editor.event.values["isOccurrence"] = true;
    EXPECT_EQ(editor.strip().getVlDataStatus(), DataStatus::NothingToDo)
        << "a single day of a series has no meeting";
}

TEST_F(Strip, LeavesAtOnceWhenItsWindowClosesAndReportsItAMomentLater) {
    EditorWithStrip editor;
    EditorWithStrip other;
    editor.open();
    other.open();
    const QString id = editor.id();
    for (const EditorWithStrip *each : {&editor, &other})
        each->context()->meetingKey = u"key"_s;
    const auto &registry = vlActionAdditionViewMonitor::sharedInstance();
    EXPECT_EQ(registry.getVlActionAdditionViewByApptWindowID(id), &editor.strip());
    editor.editor.close();
    EXPECT_FALSE(editor.hasStrip());
    EXPECT_TRUE(other.hasStrip());
    EXPECT_EQ(registry.getVlActionAdditionViewByApptWindowID(id), nullptr);

    desktop.runLoop->advance(0.009);
    EXPECT_FALSE(editor.context()->meetingKey.isEmpty());
    desktop.runLoop->advance(0.001);
    EXPECT_TRUE(editor.context()->meetingKey.isEmpty()) << "the workflow was not told";
    EXPECT_FALSE(other.context()->meetingKey.isEmpty());
}

TEST_F(Strip, OfAStoredMeetingShowsItAndLetsTheHostSave) {
    EditorWithStrip editor;
    editor.event.values["olmUCCapabilities"] = uR"({"meetingKey": "k1", "encodeMailBody": "digest"})"_s;
    editor.open();
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().meetingKey(), u"k1"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().encodeMailBody(), u"digest"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().getSavedApptInfo().value(vl_ApptInfo_Subject), u"Review"_s);
    EXPECT_EQ(editor.strip().uiStatus(), StripState::MeetingAttached);
    editor.open(); // a second double click
    EXPECT_EQ(editor.editor.called, QStringList{hostSave});

    EditorWithStrip closing; // by the host, while it saves
    closing.event.values = editor.event.values;
    fakehost::during() = [&closing] {
        if (closing.editor.called.contains(hostSave) && closing.hasStrip())
            closing.editor.close();
    };
    closing.open();
    fakehost::during() = nullptr;
    EXPECT_FALSE(closing.hasStrip());
}

TEST_F(Strip, ConsumesWhatTheToolBarHasLeftForTheNextEditor) {
    const QString meeting = keyFlagAutoAddToVlMeeting, audio = keyFlagAutoAddToPACMeeting;
    const struct {
        QStringList flags;
        QVariant argument;
        MeetingCommand command;
        QStringList left;
    } cases[] = {
        {{}, {}, MeetingCommand::CmdNone, {}},
        {{meeting}, {}, MeetingCommand::CmdAddMeeting, {}},
        {{meeting, audio}, QVariantMap{{"pacAccountNo", 1}}, MeetingCommand::CmdAddMeeting, {audio}},
        {{audio}, {}, MeetingCommand::CmdNone, {}},
        {{audio}, QVariantMap{{"pacAccountNo", 1}}, MeetingCommand::CmdAddAudioConference1, {}},
        {{audio}, QVariantMap{{"pacAccountNo", "2"}}, MeetingCommand::CmdAddAudioConference2, {}},
        {{audio}, QVariantMap{{"pacAccountNo", 3}}, MeetingCommand::CmdNone, {}},
    };
    for (const auto &given : cases) {
        forgetLastCommand();
        QVariantMap &left = platform::services().mainThreadDictionary;
        left.clear();
        for (const QString &flag : given.flags)
            left.insert(flag, flag);
        if (given.argument.isValid())
            left.insert(keyFlagVlMeetingArgument, given.argument);
        EditorWithStrip editor;
        editor.open();
        EXPECT_EQ(lastCommand(), given.command) << qPrintable(given.flags.join(u' '));
        EXPECT_EQ(QStringList(left.keys()), given.left);
    }
}

TEST_F(Strip, SendsTheCommandOfAClickThatFitsItsState) {
    enableAudioConferences(true);
    EditorWithStrip editor;
    editor.open();
    button(editor.strip(), addKey)->click();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdAddMeeting);

    auto *audio = qobject_cast<QPushButton *>(button(editor.strip(), audioKey));
    ASSERT_TRUE(audio && audio->menu());
    const QList<QAction *> accounts = audio->menu()->actions();
    ASSERT_EQ(accounts.size(), 4);
    EXPECT_FALSE(accounts[0]->isVisible());
    EXPECT_TRUE(accounts[2]->isSeparator());
    accounts[1]->trigger();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdAddAudioConference1);
    accounts[3]->trigger();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdAddAudioConference2);

    forgetLastCommand();
    editor.strip().onUIChanged(StripState::MeetingAttached);
    button(editor.strip(), addKey)->click();
    accounts[1]->trigger();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdNone);
    button(editor.strip(), settingsKey)->click();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdChangeSettings);
    EXPECT_EQ(editor.editor.values.value("isDirty"), true);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_NE(lastCommand(), MeetingCommand::CmdChangeSettings);

    forgetLastCommand();
    editor.strip().onUIChanged(StripState::NoMeeting);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdNone);
}

TEST_F(Strip, SaysWhyTheSettingsCannotBeChanged) {
    EditorWithStrip editor;
    editor.open();
    QAbstractButton *settings = button(editor.strip(), settingsKey);
    editor.strip().enableChangeSettingButton(false);
    EXPECT_FALSE(settings->isEnabled());
    EXPECT_EQ(settings->toolTip(), echo(u"NotAllowChangeVelaSettingsTip"_s));
    editor.strip().onUIChanged(StripState::MeetingAttached);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_TRUE(settings->isEnabled());
    EXPECT_TRUE(settings->toolTip().isEmpty());
}

TEST_F(Strip, CanBeUsedByKeyboardAlone) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    EditorWithStrip editor;
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
    EXPECT_NE(add->grab().toImage(), unmarked) << "the focus is not visible";
    QTest::keyClick(add, Qt::Key_Return);
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdAddMeeting);
    QTest::keyClick(add, Qt::Key_Tab);
    ASSERT_TRUE(audio->hasFocus());
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Enter, Qt::Key_Down}) {
        QTest::keyClick(audio, key);
        EXPECT_TRUE(audio->menu()->isVisible()) << key;
        audio->menu()->close();
    }
    editor.strip().onUIChanged(StripState::MeetingAttached);
    EXPECT_TRUE(button(editor.strip(), settingsKey)->hasFocus()) << "the hidden button took the focus away";
    editor.editor.locationField()->setFocus();
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(editor.editor.locationField()->hasFocus());
}

TEST_F(Strip, DrawsItsEdgesOnlyForAnAppointmentThatTakesMeetings) {
    EditorWithStrip editor;
    const auto hasEdges = [&editor] {
        QImage image(400, 70, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        editor.strip().render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        int dots = 0;
        for (int y = 0; y < image.height(); ++y)
            dots += qGray(image.pixel(0, y)) < 250 && qGray(image.pixel(399, y)) < 250;
        return dots > 10;
    };
    EXPECT_FALSE(hasEdges());
    editor.open();
    editor.strip().onUIChanged(StripState::Hidden);
    EXPECT_TRUE(hasEdges());
}
