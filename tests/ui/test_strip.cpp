#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/support/Warnings.h"
#include "tests/ui/UiFixture.h"

#include <QMenu>
#include <QPushButton>
#include <QtTest/QTest>

namespace {

const QString addKey = u"AddVelaButton"_s;
const QString audioKey = u"AddPACButton"_s;
const QString removeKey = u"CancelVelaButton"_s;
const QString settingsKey = u"ChangeSettingButton"_s;

MeetingCommand lastCommand() {
    return vlMeetingMgr::sharedInstance().getMeetingAction();
}

void forgetLastCommand() {
    vlMeetingMgr::sharedInstance().setMeetingAction(MeetingCommand::CmdNone);
}

void holdMeeting(const QString &key) {
    vlMeetingDataMgr::sharedInstance().setMeetingKey(key);
}

vlActionAdditionViewMonitor &monitor() {
    return vlActionAdditionViewMonitor::sharedInstance();
}

QStringList echoes(QStringList keys) {
    for (QString &key : keys)
        key = echo(key);
    keys.sort();
    return keys;
}

} // namespace

class Strip : public UiTest {};

TEST_F(Strip, ThatKnowsNoEditorShowsNothing) {
    HostEditorWindow editor;
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
    editor.strip().onUIChanged(StripState::NoMeeting);
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
}

TEST_F(Strip, ShowsTheButtonsOfItsState) {
    const struct {
        StripState state;
        bool audioConferences;
        QStringList shown;
    } cases[] = {
        {StripState::Hidden, true, {}},
        {StripState::NoMeeting, true, {addKey, audioKey}},
        {StripState::NoMeeting, false, {addKey}},
        {StripState::MeetingAttached, true, {removeKey, settingsKey}},
        {StripState(7), true, {removeKey, settingsKey}}, // as the state before it
    };
    HostEditorWindow editor;
    editor.open();
    for (const auto &row : cases) {
        enableAudioConferences(row.audioConferences);
        editor.strip().onUIChanged(row.state);
        EXPECT_EQ(shownButtons(editor.strip()), echoes(row.shown)) << int(row.state);
        EXPECT_EQ(editor.strip().uiStatus(), row.state);
    }
}

TEST_F(Strip, OfAnAppointmentThatTakesNoMeetingsNeverShowsAButton) {
    const std::function<void(HostEvent &)> reasons[] = {[](HostEvent &event) { event.occurrence = true; },
                                                        [](HostEvent &event) { event.exception = true; },
                                                        [](HostEvent &event) { event.owner = false; }};
    for (const auto &reason : reasons) {
        HostEditorWindow editor;
        reason(editor.editor.event);
        editor.open();
        EXPECT_FALSE(editor.strip().isSupportVela());
        for (StripState state : {StripState::NoMeeting, StripState::MeetingAttached}) {
            editor.strip().onUIChanged(state);
            EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
        }
    }
}

TEST_F(Strip, OfACancellationHidesItsButtonsAndKeepsItsState) {
    HostEditorWindow editor;
    editor.open();
    editor.strip().attachOutlookERCalendarEventEditorWindowController(&editor);
    editor.editor.cancelMode = true;
    editor.strip().refreshUI();
    EXPECT_TRUE(shownButtons(editor.strip()).isEmpty());
    EXPECT_EQ(editor.strip().uiStatus(), StripState::NoMeeting);
}

TEST_F(Strip, TellsWhatASaveNeeds) {
    const struct {
        const char *what;
        bool meeting;
        StripState state;
        bool cancelMode;
        bool changed;
        DataStatus expected;
    } cases[] = {
        {"no meeting, state unknown, nothing before", false, StripState::Hidden, false, true,
         DataStatus::None},
        {"no meeting", false, StripState::NoMeeting, false, true, DataStatus::NothingToDo},
        {"shown meeting is gone", false, StripState::MeetingAttached, false, true, DataStatus::NothingToSend},
        {"no meeting, hidden: as before", false, StripState::Hidden, false, true, DataStatus::NothingToSend},
        {"meeting, changed", true, StripState::MeetingAttached, false, true, DataStatus::UpdateMeeting},
        {"meeting, unchanged", true, StripState::MeetingAttached, false, false, DataStatus::NothingToDo},
        {"meeting, removed", true, StripState::NoMeeting, false, false, DataStatus::DeleteMeeting},
        {"meeting, cancelled", true, StripState::MeetingAttached, true, true, DataStatus::DeleteMeeting},
    };
    HostEditorWindow editor;
    editor.open();
    EXPECT_EQ(editor.strip().getVlDataStatus(), DataStatus::NothingToDo) << "no adapter yet";
    editor.strip().attachOutlookERCalendarEventEditorWindowController(&editor);
    for (const auto &row : cases) {
        vlMeetingDataMgr::sharedInstance().clearSavedMeetingData();
        if (row.meeting)
            holdMeeting(u"key"_s);
        editor.editor.cancelMode = row.cancelMode;
        editor.editor.uncommitted = row.changed ? QVariantMap{{"content.summary", "New"}} : QVariantMap{};
        editor.strip().onUIChanged(row.state);
        EXPECT_EQ(int(editor.strip().getVlDataStatus()), int(row.expected)) << row.what;
    }
    editor.editor.event.occurrence = true;
    EXPECT_EQ(editor.strip().getVlDataStatus(), DataStatus::NothingToDo) << "takes no meetings";
}

TEST_F(Strip, OfTwoEditorsIsFoundByItsOwn) {
    HostEditorWindow first;
    HostEditorWindow second;
    for (HostEditorWindow *editor : {&second, &first}) {
        vlActionAdditionView *strip = &editor->strip();
        EXPECT_EQ(monitor().getVlActionAdditionViewByEditorWinCtrl(editor), strip);
        EXPECT_EQ(monitor().getVlActionAdditionViewByEditorViewCtrl(&editor->editor), strip);
        EXPECT_EQ(monitor().getVlActionAdditionViewByECCalendarEvent(&editor->editor.event), strip);
        EXPECT_EQ(monitor().getVlActionAdditionViewByApptWindowID(editor->id()), strip);
        EXPECT_EQ(monitor().getVlActionAdditionViewByWindowIdentify(editor->id()), strip);
        EXPECT_EQ(monitor().getVlActionAdditionViewByWindow(editor->window), strip);
        EXPECT_EQ(strip->getAppointmentWindowID(), editor->id());
    }
    QWidget stranger;
    EXPECT_EQ(monitor().getVlActionAdditionViewByWindow(&stranger), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByWindow(nullptr), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByApptWindowID(QString()), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByEditorWinCtrl(nullptr), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByEditorViewCtrl(nullptr), nullptr);
}

TEST_F(Strip, LeavesAtOnceWhenItsWindowClosesAndReportsItAMomentLater) {
    HostEditorWindow editor;
    HostEditorWindow other;
    editor.open();
    other.open();
    const QString id = editor.id();
    for (const HostEditorWindow *each : {&editor, &other})
        each->context()->meetingKey = u"key"_s;
    editor.close();
    EXPECT_FALSE(editor.hasStrip());
    EXPECT_TRUE(other.hasStrip());
    EXPECT_EQ(monitor().getVlActionAdditionViewByApptWindowID(id), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByEditorWinCtrl(&editor), nullptr);

    desktop.runLoop->advance(0.009);
    EXPECT_FALSE(editor.context()->meetingKey.isEmpty());
    desktop.runLoop->advance(0.001);
    EXPECT_TRUE(editor.context()->meetingKey.isEmpty()) << "the workflow was not told";
    EXPECT_FALSE(other.context()->meetingKey.isEmpty());
}

TEST_F(Strip, WhoseWindowIsDestroyedWithoutAWordIsNotFoundAnyMore) {
    HostEditorWindow editor;
    editor.open();
    const QString id = editor.id();
    delete editor.window;
    EXPECT_EQ(monitor().getVlActionAdditionViewByApptWindowID(id), nullptr);
    EXPECT_EQ(monitor().getVlActionAdditionViewByEditorWinCtrl(&editor), nullptr);
}

TEST_F(Strip, OfAStoredMeetingShowsItAndLetsTheHostSave) {
    HostEditorWindow editor;
    editor.editor.event.stored = uR"({"meetingKey": "k1", "encodeMailBody": "digest"})"_s;
    editor.open();
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().meetingKey(), u"k1"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().encodeMailBody(), u"digest"_s);
    EXPECT_EQ(vlMeetingDataMgr::sharedInstance().getSavedApptInfo().value(vl_ApptInfo_Subject), u"Review"_s);
    EXPECT_EQ(editor.strip().uiStatus(), StripState::MeetingAttached);
    EXPECT_EQ(editor.editor.hostSaves, 1);
}

TEST_F(Strip, LeavesTheKeyAloneWhenTheStoredRecordIsMalformed) {
    for (const char *stored :
         {"", "{", "[1]", "\"meetingKey\"", R"({"meetingKey": 5})", R"({"other": "x"})"}) {
        HostEditorWindow editor;
        editor.editor.event.stored = QString::fromUtf8(stored);
        editor.open();
        EXPECT_FALSE(vlMeetingDataMgr::sharedInstance().isVelaMeeting()) << stored;
        EXPECT_EQ(editor.strip().uiStatus(), StripState::NoMeeting) << stored;
    }
}

TEST_F(Strip, SurvivesAHostThatClosesTheEditorInItsSave) {
    HostEditorWindow editor;
    editor.editor.event.stored = uR"({"meetingKey": "k1"})"_s;
    editor.editor.onSave = [&editor] { editor.close(); };
    editor.open();
    EXPECT_FALSE(editor.hasStrip());
}

TEST_F(Strip, ConsumesWhatTheToolBarHasLeftForTheNextEditor) {
    const struct {
        QStringList flags;
        QVariant argument;
        MeetingCommand command;
        QStringList left;
    } cases[] = {
        {{}, {}, MeetingCommand::CmdNone, {}},
        {{keyFlagAutoAddToVlMeeting}, {}, MeetingCommand::CmdAddMeeting, {}},
        {{keyFlagAutoAddToVlMeeting}, QVariantMap{{"a", 1}}, MeetingCommand::CmdAddMeeting, {}},
        {{keyFlagAutoAddToVlMeeting, keyFlagAutoAddToPACMeeting},
         QVariantMap{{"pacAccountNo", 1}},
         MeetingCommand::CmdAddMeeting,
         {keyFlagAutoAddToPACMeeting}},
        {{keyFlagAutoAddToPACMeeting}, {}, MeetingCommand::CmdNone, {}},
        {{keyFlagAutoAddToPACMeeting},
         QVariantMap{{"pacAccountNo", 1}},
         MeetingCommand::CmdAddAudioConference1,
         {}},
        {{keyFlagAutoAddToPACMeeting},
         QVariantMap{{"pacAccountNo", "2"}},
         MeetingCommand::CmdAddAudioConference2,
         {}},
        {{keyFlagAutoAddToPACMeeting}, QVariantMap{{"pacAccountNo", 3}}, MeetingCommand::CmdNone, {}},
    };
    int row = 0;
    for (const auto &given : cases) {
        forgetLastCommand();
        QVariantMap &left = platform::services().mainThreadDictionary;
        left.clear();
        for (const QString &flag : given.flags)
            left.insert(flag, flag);
        if (given.argument.isValid())
            left.insert(keyFlagVlMeetingArgument, given.argument);
        HostEditorWindow editor;
        editor.open();
        EXPECT_EQ(lastCommand(), given.command) << row;
        EXPECT_EQ(QStringList(left.keys()), given.left) << row;
        ++row;
    }
}

TEST_F(Strip, SendsTheCommandOfAClickThatFitsItsState) {
    enableAudioConferences(true);
    HostEditorWindow editor;
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
    EXPECT_TRUE(editor.editor.dirty);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_NE(lastCommand(), MeetingCommand::CmdChangeSettings);

    forgetLastCommand();
    editor.strip().onUIChanged(StripState::NoMeeting);
    editor.strip().autoRemoveVelaMeeting();
    EXPECT_EQ(lastCommand(), MeetingCommand::CmdNone);
}

TEST_F(Strip, SaysWhyTheSettingsCannotBeChanged) {
    HostEditorWindow editor;
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

TEST_F(Strip, RemembersHowItsLastActionEnded) {
    HostEditorWindow editor;
    EXPECT_FALSE(editor.strip().getActionResult());
    editor.strip().setActionToSuccess();
    EXPECT_TRUE(editor.strip().getActionResult());
    editor.strip().setActionResultData({{keyVLResult, keyVLFail}});
    EXPECT_FALSE(editor.strip().getActionResult());
}

TEST_F(Strip, CanBeUsedByKeyboardAlone) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    HostEditorWindow editor;
    enableAudioConferences(true);
    editor.open();
    editor.window->show();
    editor.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.window));
    QAbstractButton *add = button(editor.strip(), addKey);
    auto *audio = qobject_cast<QPushButton *>(button(editor.strip(), audioKey));
    if (QWidget *focused = editor.window->focusWidget())
        focused->clearFocus();
    const QImage unmarked = add->grab().toImage();
    add->setFocus(Qt::TabFocusReason);
    EXPECT_NE(add->grab().toImage(), unmarked) << "the focus is not to be seen";
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        forgetLastCommand();
        QTest::keyClick(add, key);
        EXPECT_EQ(lastCommand(), MeetingCommand::CmdAddMeeting);
    }
    QTest::keyClick(add, Qt::Key_Tab);
    ASSERT_TRUE(audio->hasFocus());
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Enter, Qt::Key_Down}) {
        QTest::keyClick(audio, key);
        EXPECT_TRUE(audio->menu()->isVisible()) << key;
        audio->menu()->close();
    }
    editor.strip().onUIChanged(StripState::MeetingAttached);
    EXPECT_TRUE(button(editor.strip(), settingsKey)->hasFocus()) << "the focus went with the hidden button";
}

TEST_F(Strip, DrawsItsEdgesOnlyForAnAppointmentThatTakesMeetings) {
    HostEditorWindow editor;
    const auto hasInk = [&editor] {
        QImage image(400, 70, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        editor.strip().render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        int dots = 0;
        for (int y = 0; y < image.height(); ++y)
            dots += qGray(image.pixel(0, y)) < 250 && qGray(image.pixel(399, y)) < 250;
        for (int x = 2; x < 398; ++x)
            EXPECT_EQ(qGray(image.pixel(x, 35)), 255) << x;
        return dots > 10;
    };
    EXPECT_FALSE(hasInk());
    editor.open();
    editor.strip().onUIChanged(StripState::Hidden);
    EXPECT_TRUE(hasInk());
}
