// The settings sheet.
#include "platform/toolkit/Windows.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlCommon.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/settings/VlSettingViewController.h"
#include "plugin/util/vlFileUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/support/ScriptedClient.h"
#include "tests/ui/UiFixture.h"

class SettingsSheet : public UiTest {
protected:
    SettingsSheet() {
        signIn();
        m_observer = platform::services().notifications->addObserver(
            notify_SettingCommit,
            [this](const QString &, const QVariantMap &userInfo) { commits.append(userInfo); });
        editor.window->move(200, 200);
        editor.window->show();
        editor.open();
    }
    ~SettingsSheet() override { platform::services().notifications->removeObserver(m_observer); }

    void allowThirdPartyAudio() { signIn({{"enableThirdPartyAudio", true}, {"thirdPartyAudio", "Dial 5"}}); }
    VlSettingWindowController *show() {
        sheets.addSchSettingWindowToArray(editor.id(), {}, editor.window);
        sheets.showSchSettingWindow(editor.id());
        return controller();
    }
    VlSettingWindowController *controller() { return sheets.getSchSettingWindowInArray(editor.id()); }
    vlSettingData &shownModel() { return show()->settingViewController()->settingData(); }
    QDialog *sheet() { return controller()->settingWindow(); }
    template<typename Control>
    Control *find(const char *name) {
        auto *control = sheet()->findChild<Control *>(QString::fromUtf8(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    void click(const char *name) { find<QAbstractButton>(name)->click(); }
    QString profileFile() { return vlCommon::getVlUserProfilePath(u"user"_s); }

    EditorWithStrip editor;
    SchSettingWndCtrlMgr sheets;
    vlSettingData model;
    QList<QVariantMap> commits;

private:
    platform::ObserverId m_observer;
};

TEST_F(SettingsSheet, WritesEachChoiceIntoTheModelAtOnce) {
    show();
    const struct {
        const char *button;
        std::function<bool()> isChosen;
    } choices[] = {
        {"videoHostMatrixOn", [this] { return model.hostvideoOn(); }},
        {"videoHostMatrixOff", [this] { return !model.hostvideoOn(); }},
        {"videoParticipantMatrixOn", [this] { return model.paticipantvideoOn() && !model.hostvideoOn(); }},
        {"enableJBHButton", [this] { return model.enableJoinBeforeHost(); }},
        {"notShowMeAgain", [this] { return model.notShowMeAgain(); }},
        {"telephonyButton", [this] { return model.audioType() == 0; }},
        {"voipButton", [this] { return model.audioType() == 1; }},
        {"bothButton", [this] { return model.audioType() == 2; }},
        {"usePMI", [this] { return model.usePMI(); }},
    };
    for (const auto &choice : choices) {
        click(choice.button);
        EXPECT_TRUE(choice.isChosen()) << choice.button;
        EXPECT_TRUE(find<QAbstractButton>(choice.button)->isChecked()) << choice.button;
    }
    EXPECT_FALSE(find<QRadioButton>("videoHostMatrixOn")->isChecked()) << "the two rows depend on each other";
}

TEST_F(SettingsSheet, GrowsAndShrinksDownwardsWithTheThirdPartyText) {
    allowThirdPartyAudio();
    show();
    auto *text = find<QPlainTextEdit>("thirdPartyAudioTextField");
    const QRect small = sheet()->geometry();
    EXPECT_TRUE(text->isHidden());
    for (int again = 0; again < 2; ++again) {
        click("thirdPartyAudioButton");
        QApplication::processEvents(); // the layouts are computed
        EXPECT_EQ(model.audioType(), 3);
        EXPECT_FALSE(text->isHidden());
        EXPECT_EQ(text->toPlainText(), u"Dial 5"_s);
        EXPECT_EQ(sheet()->geometry(), small.adjusted(0, 0, 0, text->minimumHeight()));
        EXPECT_EQ(find<QWidget>("mainSettingBox")->minimumHeight(), 412);
        EXPECT_EQ(find<QWidget>("audioOptionsBox")->minimumHeight(), 152);
    }
    click("voipButton");
    EXPECT_TRUE(text->isHidden());
    EXPECT_EQ(sheet()->geometry(), small);
}

TEST_F(SettingsSheet, ShowsWhatTheModelHoldsAndAnUnknownAudioTypeAsNoChoice) {
    vlSettingData &model = shownModel();
    model.setAudioType(100);
    for (const bool on : {true, false}) {
        model.setHostvideoOn(on);
        model.setPaticipantvideoOn(!on);
        model.setEnableJoinBeforeHost(on);
        model.setNotShowMeAgain(on);
        controller()->settingViewController()->initializeItems();
        for (const char *name :
             {"videoHostMatrixOn", "videoParticipantMatrixOff", "enableJBHButton", "notShowMeAgain"})
            EXPECT_EQ(find<QAbstractButton>(name)->isChecked(), on) << name;
        for (const char *name : {"videoHostMatrixOff", "videoParticipantMatrixOn"})
            EXPECT_EQ(find<QAbstractButton>(name)->isChecked(), !on) << name;
    }
    for (const char *name : {"telephonyButton", "voipButton", "bothButton", "thirdPartyAudioButton"})
        EXPECT_FALSE(find<QRadioButton>(name)->isChecked()) << name;
    EXPECT_TRUE(find<QRadioButton>("thirdPartyAudioButton")->isHidden())
        << "this user has no third-party audio";
    // The texts come from the table.
    for (const char *name : {"textVideoHost", "textVideoPaticipant"})
        EXPECT_TRUE(find<QLabel>(name)->text().startsWith(u'[')) << name;
    EXPECT_TRUE(sheet()->windowTitle().startsWith(u'['));
    for (const QGroupBox *box : sheet()->findChildren<QGroupBox *>())
        EXPECT_TRUE(box->title().startsWith(u'[')) << qPrintable(box->objectName());
    for (const QAbstractButton *button : sheet()->findChildren<QAbstractButton *>())
        EXPECT_TRUE(button->text().startsWith(u'[')) << qPrintable(button->objectName());
}

TEST_F(SettingsSheet, AsksForAPasswordOnlyWhenOneIsRequired) {
    show();
    auto *password = find<QLineEdit>("passwordTextField");
    EXPECT_TRUE(password->isHidden());
    click("requiredMeetingPswButton");
    EXPECT_TRUE(model.requiredMeetingPassword());
    EXPECT_TRUE(!password->isHidden() && password->isEnabled());
    EXPECT_NE(sheet()->focusWidget(), password);
    desktop.runLoop->advance(0);
    EXPECT_EQ(sheet()->focusWidget(), password);
    click("requiredMeetingPswButton");
    EXPECT_TRUE(password->isHidden());
    EXPECT_FALSE(model.requiredMeetingPassword());
}

TEST_F(SettingsSheet, RefusesALongerPasswordAndLetsOneOfTheClientOnlyShrinkUntilItFits) {
    vlSettingData &model = shownModel();
    model.setRequiredMeetingPassword(true);
    model.setMeetingPassword(u"123456789012"_s);
    controller()->settingViewController()->initializeItems();
    auto *password = find<QLineEdit>("passwordTextField");
    const auto types = [password](Qt::Key key) {
        QTest::keyClick(password, key);
        return password->text();
    };
    EXPECT_EQ(types(Qt::Key_A), u"123456789012"_s);
    EXPECT_EQ(types(Qt::Key_Backspace), u"12345678901"_s);
    EXPECT_EQ(model.meetingPassword(), u"12345678901"_s);
    EXPECT_EQ(types(Qt::Key_A), u"12345678901"_s);
    password->selectAll();
    EXPECT_EQ(types(Qt::Key_Backspace), QString());
    for (const QString &pasted : {u"12345678901"_s, u"1234567890"_s}) {
        QApplication::clipboard()->setText(pasted);
        password->paste();
        EXPECT_EQ(password->text(), pasted.size() > 10 ? QString() : pasted);
    }
    EXPECT_EQ(types(Qt::Key_A), u"1234567890"_s);
    EXPECT_EQ(model.meetingPassword(), password->text());
}

TEST_F(SettingsSheet, HandsOnTheThirdPartyTextAsItCameUntilItIsEdited) {
    const QString came = u"Call\u00a0+1\r\nCode 2468"_s;
    signIn({{"enableThirdPartyAudio", true}, {"thirdPartyAudio", came}});
    VlSettingViewController *options = show()->settingViewController();
    EXPECT_EQ(options->getSettingsData().value(vl_Setting_ThirdPartyAudio), came);
    find<QPlainTextEdit>("thirdPartyAudioTextField")->insertPlainText(u"Please "_s);
    EXPECT_EQ(options->getSettingsData().value(vl_Setting_ThirdPartyAudio), u"Please Call +1\nCode 2468"_s);
    signIn();
    options->settingData().setEnableThirdPartyAudio(false);
    options->settingData().setThirdPartyAudio(came);
    find<QPlainTextEdit>("thirdPartyAudioTextField")->document()->setModified(false);
    options->initializeItems();
    EXPECT_EQ(options->getSettingsData().value(vl_Setting_ThirdPartyAudio), came)
        << "the sheet does not show it";
}

// The workflow may close the editor at once.
TEST_F(SettingsSheet, TellsTheWorkflowAndKeepsTheSettingsAfterContinue) {
    const platform::ObserverId closer = platform::services().notifications->addObserver(
        notify_SettingCommit, [this](const QString &, const QVariantMap &) {
            platform::windowWillClose(editor.window);
            editor.window->hide();
        });
    show();
    click("requiredMeetingPswButton");
    find<QLineEdit>("passwordTextField")->setText(u"abc"_s); // by program: the model does not know it yet
    click("buttonContinue");
    platform::services().notifications->removeObserver(closer);
    EXPECT_EQ(commits, QList<QVariantMap>({{{"VlUserOperator", "SettingCommit"},
                                            {"IsClickOkButton", true},
                                            {"keyApptWindowID", editor.id()}}}));
    const QVariantMap saved =
        rt::mapValue(vlOLUtils::toArrayOrNSDictionary(vlOLUtils::readStrFromFile(profileFile())));
    EXPECT_EQ(saved.value(vl_Setting_MeetingPassword), u"abc"_s);
    EXPECT_TRUE(rt::boolValue(saved.value(vl_Setting_RequiredMPW)));
    EXPECT_FALSE(sheets.hasSchSettingWindow(editor.id()));
}

TEST_F(SettingsSheet, KeepsNothingAfterCancelAndEscape) {
    const std::function<void()> ways[] = {[this] { click("buttonCancel"); },
                                          [this] { QTest::keyClick(sheet(), Qt::Key_Escape); },
                                          [this] { sheet()->close(); }};
    for (const auto &leave : ways) {
        commits.clear();
        show();
        leave();
        EXPECT_FALSE(sheet()->isVisible());
        ASSERT_EQ(commits.size(), 1);
        EXPECT_EQ(commits.first().value(keyButtonClickIsOK), QVariant(false));
        EXPECT_FALSE(vlIsFileExist(profileFile()));
    }
}

TEST_F(SettingsSheet, IsReusedForTheSameWindowWithTheLastEdits) {
    VlSettingWindowController *first = show();
    const QString personal = echo(u"UsePersonalMeetingID"_s) + u"123-456-7890"_s;
    EXPECT_EQ(find<QCheckBox>("usePMI")->text(), personal);
    click("enableJBHButton");
    click("buttonCancel");
    EXPECT_EQ(show(), first);
    signIn({{"enableThirdPartyAudio", true}, {"use3rdPartyAsDefaultAudio", true}});
    sheets.refreshSettingWindow(editor.id());
    EXPECT_TRUE(find<QRadioButton>("thirdPartyAudioButton")->isChecked());
    EXPECT_EQ(find<QCheckBox>("usePMI")->text(), personal);
    EXPECT_TRUE(find<QCheckBox>("enableJBHButton")->isChecked());
    EXPECT_TRUE(rt::boolValue(sheets.getVlSettingsData(editor.id()).value(vl_Setting_EnableJBH)));
}

TEST_F(SettingsSheet, HasTheSettingsOfThePersonalMeetingAsLongAsThatIsChosen) {
    WorkflowPorts::instance().sheets = &sheets;
    LinkPorts::instance().finishReceiver = &vlMeetingMgr::sharedInstance();
    ScriptedClient client(desktop);
    signIn({{"enableThirdPartyAudio", true}, {"use3rdPartyAsDefaultAudio", true}});
    client.holdsTheMeeting(
        {{"meetingKey", "1234567890"}, {"usePMI", 1}, {"audioOption", 1}, {"meetingPassword", "12"}});
    show();
    for (const bool isChosen : {true, false}) {
        click("usePMI");
        desktop.runLoop->advance(0);
        EXPECT_EQ(client.timesAsked(ScriptedClient::Asked::GetMeeting), 1);
        for (const char *name : {"usePMI", "voipButton"})
            EXPECT_EQ(find<QAbstractButton>(name)->isChecked(), isChosen) << name;
        EXPECT_EQ(model.usePMI(), isChosen);
        EXPECT_TRUE(find<QCheckBox>("requiredMeetingPswButton")->isChecked());
        EXPECT_TRUE(find<QLineEdit>("passwordTextField")->isEnabled());
    }
    EXPECT_EQ(client.last().key, u"1234567890"_s);
}

TEST_F(SettingsSheet, IsGoneWithItsWindowAndTellsNobody) {
    const QString id = editor.id();
    const VlSettingWindowController *first = show();
    QWidget another;
    another.show();
    sheets.addSchSettingWindowToArray(id, {}, &another); // a new window with the same identifier
    EXPECT_NE(sheets.getSchSettingWindowInArray(id), first);
    EXPECT_EQ(sheets.getSchSettingWindowInArray(id)->parentWindow(), &another);
    sheets.addSchSettingWindowToArray(id, {}, editor.window);
    sheets.showSchSettingWindow(id);
    editor.editor.close();
    EXPECT_FALSE(sheets.hasSchSettingWindow(id));
    sheets.showSchSettingWindow(id);
    EXPECT_TRUE(dialogs().isEmpty());
    EXPECT_TRUE(commits.isEmpty());
}

TEST_F(SettingsSheet, IsModalForItsWindowAndStartsWithNoControlFocused) {
    show();
    EXPECT_EQ(sheet()->windowModality(), Qt::WindowModal);
    ASSERT_TRUE(QTest::qWaitForWindowActive(sheet()));
    QApplication::processEvents(); // the toolkit looks for a control to focus when the window is active
    ASSERT_EQ(QApplication::focusWidget(), sheet());
    const QVariantMap before = controller()->getVlSettingsData();
    QTest::keyClick(sheet(), Qt::Key_Space);
    EXPECT_EQ(controller()->getVlSettingsData(), before);
    QTest::keyClick(sheet(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), find<QRadioButton>("videoHostMatrixOn"));
    EXPECT_TRUE(find<QPushButton>("buttonContinue")->isDefault());
}

// The edition that schedules for others.
class OnBehalf : public SettingsSheet {
protected:
    void SetUp() override {
        if (!vlPluginBuildMgr::supportScheduleFor())
            GTEST_SKIP() << "This edition schedules for nobody else.";
        mayScheduleFor(name);
        editor.account.values["emailAddress"] = address;
        editor.attach();
    }
    static void mayScheduleFor(const QString &displayName) {
        signIn({{"bosses",
                 QVariantList{QVariantMap{{"displayName", displayName}, {"email", address.toLower()}}}}});
    }
    void isDelegating(bool delegating) { editor.editor.values["isDelegating"] = delegating; }
    QWidget *banner() { return find<QWidget>("onbehalfView"); }
    QVariant scheduledFor() { return sheets.getVlSettingsData(editor.id()).value(vl_Setting_ScheduleFor); }

    inline static const QString address = u"Boss@example.com"_s;
    inline static const QString name = u"Bo %@ <b>"_s;
};

TEST_F(OnBehalf, TheSheetGrowsDownwardsByABannerWithTheName) {
    show();
    EXPECT_TRUE(banner()->isHidden());
    EXPECT_FALSE(find<QCheckBox>("usePMI")->isHidden());
    EXPECT_EQ(scheduledFor(), u""_s);
    const QRect small = sheet()->geometry();

    isDelegating(true);
    show();
    EXPECT_FALSE(banner()->isHidden());
    EXPECT_TRUE(find<QCheckBox>("usePMI")->isHidden());
    EXPECT_EQ(scheduledFor(), address);
    EXPECT_EQ(sheet()->geometry(), small.adjusted(0, 0, 0, banner()->minimumHeight()));
    show();
    EXPECT_EQ(sheet()->height(), small.height() + banner()->minimumHeight());

    editor.account.values["emailAddress"] =
        u"stranger@example.com"_s; // the user may not schedule for this person
    show();
    EXPECT_TRUE(banner()->isHidden());
    EXPECT_EQ(sheet()->geometry(), small);
    EXPECT_EQ(scheduledFor(), u""_s);
}

TEST_F(OnBehalf, TheBannerShowsTheNameToTheLetterAndCutsALongOneVisibly) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    isDelegating(true);
    show();
    auto *label = find<QLabel>("_textOnbehalfInfo");
    EXPECT_TRUE(label->text().contains(name)) << qPrintable(label->text());
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(banner()->palette().color(QPalette::Window), QColor(99, 192, 64));
    const QString longName = u"Bo <i> "_s.repeated(40);
    mayScheduleFor(longName);
    show();
    EXPECT_TRUE(label->text().endsWith(QChar(0x2026))) << qPrintable(label->text());
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
    EXPECT_TRUE(label->accessibleName().contains(longName));
    EXPECT_TRUE(label->toolTip().contains(longName.toHtmlEscaped()));
}

TEST_F(OnBehalf, AnAudioConferenceIsRefusedWithAWord) {
    isDelegating(true);
    editor.strip().onClickAddPACAccount1();
    EXPECT_EQ(editor.context()->meetingAction, MeetingCommand::CmdNone);
    EXPECT_EQ(dialogs().size(), 1);
    EXPECT_EQ(editor.strip().uiStatus(), StripState::NoMeeting);
}
