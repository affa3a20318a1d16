// The settings sheet.
#include "platform/toolkit/Windows.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/settings/VlSettingViewController.h"
#include "plugin/util/vlFileUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/support/ScriptedClient.h"
#include "tests/support/Warnings.h"
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

TEST_F(SettingsSheet, GrowsDownwardsByTheThirdPartyTextAndHandsItOnAsItCameUntilItIsEdited) {
    const QString came = u"Call\u00a0+1\r\nCode 2468"_s;
    signIn({{"enableThirdPartyAudio", true}, {"thirdPartyAudio", came}});
    VlSettingViewController *options = show()->settingViewController();
    auto *text = find<QPlainTextEdit>("thirdPartyAudioTextField");
    const QRect small = sheet()->geometry();
    EXPECT_TRUE(text->isHidden());
    EXPECT_EQ(small.height(), 490 - text->minimumHeight());
    EXPECT_EQ(find<QWidget>("audioOptionsBox")->height(), 152 - text->minimumHeight());
    for (int again = 0; again < 2; ++again) {
        click("thirdPartyAudioButton");
        QApplication::processEvents(); // the layouts are computed
        EXPECT_EQ(model.audioType(), 3);
        EXPECT_FALSE(text->isHidden());
        EXPECT_EQ(sheet()->geometry(), small.adjusted(0, 0, 0, text->minimumHeight()));
        EXPECT_EQ(find<QWidget>("mainSettingBox")->minimumHeight(), 412);
        EXPECT_EQ(find<QWidget>("audioOptionsBox")->minimumHeight(), 152);
    }
    EXPECT_EQ(options->getSettingsData().value(vl_Setting_ThirdPartyAudio), came);
    text->insertPlainText(u"Please "_s);
    EXPECT_EQ(options->getSettingsData().value(vl_Setting_ThirdPartyAudio), u"Please Call +1\nCode 2468"_s);
    text->setPlainText(QString(20, u'\n'));
    text->verticalScrollBar()->setValue(9);
    click("voipButton");
    EXPECT_EQ(sheet()->geometry(), small);
    click("thirdPartyAudioButton");
    EXPECT_EQ(text->verticalScrollBar()->value(), 0) << "it begins with the first line";
}

TEST_F(SettingsSheet, ShowsWhatTheModelHoldsAndWritesEachChoiceIntoItAtOnce) {
    using Data = vlSettingData;
    const std::tuple<const char *, bool (Data::*)() const, void (Data::*)(bool)> choices[] = {
        {"videoHostMatrixOn", &Data::hostvideoOn, &Data::setHostvideoOn},
        {"videoParticipantMatrixOn", &Data::paticipantvideoOn, &Data::setPaticipantvideoOn},
        {"enableJBHButton", &Data::enableJoinBeforeHost, &Data::setEnableJoinBeforeHost},
        {"notShowMeAgain", &Data::notShowMeAgain, &Data::setNotShowMeAgain}};
    vlSettingData &shown = shownModel();
    for (const auto &[name, value, setValue] : choices) {
        const auto *button = find<QAbstractButton>(name);
        for (const bool on : {true, false}) {
            (shown.*setValue)(on);
            controller()->settingViewController()->initializeItems();
            EXPECT_EQ(button->isChecked(), on) << name;
            if (const auto *off = sheet()->findChild<QRadioButton *>(QString(name).replace("On", "Off")))
                EXPECT_EQ(off->isChecked(), !on) << name;
        }
        click(name);
        EXPECT_TRUE(button->isChecked() && (model.*value)()) << name;
    }
    click("videoHostMatrixOff");
    EXPECT_FALSE(model.hostvideoOn());
    EXPECT_TRUE(find<QRadioButton>("videoParticipantMatrixOn")->isChecked())
        << "the rows depend on each other";
    int type = 0;
    const QStringList audio = {"telephonyButton", "voipButton", "bothButton"};
    for (const QString &name : audio) {
        click(qPrintable(name));
        EXPECT_EQ(model.audioType(), type++);
    }
    shown.setAudioType(100); // unknown: no choice
    controller()->settingViewController()->initializeItems();
    for (const QString &name : audio)
        EXPECT_FALSE(find<QRadioButton>(qPrintable(name))->isChecked()) << qPrintable(name);
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
    EXPECT_TRUE(find<QPushButton>("buttonContinue")->isDefault());
    // A screen reader reads the title of a row with its controls.
    const std::pair<const char *, QString> rows[] = {{"textVideoHost", "videoHostMatrix"},
                                                     {"textVideoPaticipant", "videoParticipantMatrix"}};
    for (const auto &[title, row] : rows) {
        EXPECT_EQ(find<QWidget>(qPrintable(row))->accessibleName(), find<QLabel>(title)->text());
        for (const QString &side : {row + "On", row + "Off"})
            EXPECT_EQ(find<QWidget>(qPrintable(side))->accessibleDescription(), find<QLabel>(title)->text());
    }
    EXPECT_EQ(find<QWidget>("passwordTextField")->accessibleName(),
              find<QCheckBox>("requiredMeetingPswButton")->text());
    EXPECT_EQ(find<QWidget>("thirdPartyAudioTextField")->accessibleName(),
              find<QRadioButton>("thirdPartyAudioButton")->text());
}

TEST_F(SettingsSheet, OutlinesItsIndicatorsOnADarkWindow) {
    show();
    QPalette dark(Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    sheet()->setPalette(dark);
    controller()->settingViewController()->initializeItems();
    for (const char *name : {"enableJBHButton", "bothButton"}) {
        const QImage picture = find<QWidget>(name)->grab().toImage();
        int lightest = 0;
        for (int x = 0; x < 12; ++x) // of the indicator
            lightest = std::max(lightest, picture.pixelColor(x, picture.height() / 2).lightness());
        EXPECT_GT(lightest, 100) << name;
    }
}

TEST_F(SettingsSheet, IsNotShownIfItsDescriptionLacksAControl) {
    const QTemporaryDir folder;
    desktop.bundle->interfaceFolder = folder.path();
    QFile whole(u"" PLUGIN_RESOURCES "/VlSettingWindowController.ui"_s);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray description = whole.readAll();
    for (const char *name : {"\"videoOptionsBox\"", "\"buttonGroupView\"", "\"onbehalfView\""}) {
        QFile part(folder.filePath(u"VlSettingWindowController.ui"_s));
        ASSERT_TRUE(part.open(QIODevice::WriteOnly));
        part.write(QByteArray(description).replace(name, "\"gone\""));
        part.close();
        expectWarning(u"lacks some of their controls"_s);
        show();
        EXPECT_TRUE(dialogs().isEmpty()) << name;
    }
}

TEST_F(SettingsSheet, FocusesNoControlAtFirstThenThePasswordWhichMayOnlyShrinkUntilItFits) {
    vlSettingData &shown = shownModel();
    shown.setMeetingPassword(u"123456789012"_s);
    controller()->settingViewController()->initializeItems();
    ASSERT_TRUE(QTest::qWaitForWindowActive(sheet()));
    QApplication::processEvents(); // the toolkit looks for a control to focus when the window is active
    EXPECT_EQ(QApplication::focusWidget(), sheet());
    auto *password = find<QLineEdit>("passwordTextField");
    EXPECT_TRUE(password->isHidden());
    click("requiredMeetingPswButton");
    EXPECT_TRUE(model.requiredMeetingPassword());
    EXPECT_TRUE(!password->isHidden() && password->isEnabled());
    desktop.runLoop->advance(0);
    EXPECT_EQ(sheet()->focusWidget(), password);
    const std::pair<Qt::Key, QString> typed[] = {{Qt::Key_A, u"123456789012"_s},
                                                 {Qt::Key_Backspace, u"12345678901"_s},
                                                 {Qt::Key_A, u"12345678901"_s},
                                                 {Qt::Key_Backspace, u"1234567890"_s},
                                                 {Qt::Key_A, u"1234567890"_s}};
    for (const auto &[key, left] : typed) {
        QTest::keyClick(password, key);
        EXPECT_EQ(password->text(), left);
        EXPECT_EQ(model.meetingPassword(), left);
    }
    password->setMinimumHeight(40); // as in a bigger font
    QApplication::processEvents();  // the layouts are computed
    const QRect below = find<QCheckBox>("enableJBHButton")->geometry();
    password->clear();
    QApplication::clipboard()->setText(u"12345678901"_s);
    password->paste();
    EXPECT_EQ(password->text(), QString());
    click("requiredMeetingPswButton");
    QApplication::processEvents();
    EXPECT_EQ(find<QCheckBox>("enableJBHButton")->geometry(), below);
    EXPECT_TRUE(password->isHidden());
    EXPECT_FALSE(model.requiredMeetingPassword());
}

// The workflow may close the editor at once.
TEST_F(SettingsSheet, TellsTheWorkflowAndKeepsTheSettingsAfterContinue) {
    const platform::ObserverId closer = platform::services().notifications->addObserver(
        notify_SettingCommit,
        [this](const QString &, const QVariantMap &) { platform::windowWillClose(editor.window); });
    show();
    click("requiredMeetingPswButton");
    find<QLineEdit>("passwordTextField")->setText(u"abc"_s); // by program: the model does not know it yet
    QTest::keyClick(find<QPushButton>("buttonCancel"), Qt::Key_Return); // for the default button
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

TEST_F(SettingsSheet, StoresNothingAfterCancelAndIsShownAgainWithTheLastEdits) {
    VlSettingWindowController *first = show();
    const QString personal = echo(u"UsePersonalMeetingID"_s) + u"123-456-7890"_s;
    EXPECT_EQ(find<QCheckBox>("usePMI")->text(), personal);
    click("enableJBHButton");
    const std::function<void()> ways[] = {[this] { click("buttonCancel"); },
                                          [this] { QTest::keyClick(sheet(), Qt::Key_Escape); },
                                          [this] { sheet()->close(); }};
    for (const auto &leave : ways) {
        commits.clear();
        EXPECT_EQ(show(), first);
        leave();
        EXPECT_FALSE(sheet()->isVisible());
        ASSERT_EQ(commits.size(), 1);
        EXPECT_EQ(commits.first().value(keyButtonClickIsOK), QVariant(false));
    }
    EXPECT_FALSE(vlIsFileExist(profileFile()));
    controller()->settingViewController()->settingData().setEnableThirdPartyAudio(true);
    show();
    EXPECT_FALSE(find<QRadioButton>("thirdPartyAudioButton")->isHidden());
    EXPECT_FALSE(sheet()->testAttribute(Qt::WA_QuitOnClose)) << "a host without windows goes on";
    signIn({{"enableThirdPartyAudio", true}, {"use3rdPartyAsDefaultAudio", true}});
    sheets.refreshSettingWindow(editor.id());
    EXPECT_TRUE(find<QRadioButton>("thirdPartyAudioButton")->isChecked());
    EXPECT_FALSE(find<QPlainTextEdit>("thirdPartyAudioTextField")->isHidden());
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

TEST_F(SettingsSheet, StartsWithTheMeetingOfTheEditorAndReadsThePersonalOneAnew) {
    const ScriptedClient client(desktop);
    vlGetMeetingHelper::sharedInstance().setMeetingData(
        {{"meetingKey", "1"}, {"usePMI", 1}, {"audioOption", 1}});
    show();
    desktop.runLoop->advance(0);
    EXPECT_EQ(client.last().key, u"1234567890"_s);
    vlGetMeetingHelper::sharedInstance().setMeetingData({{"meetingKey", "2"}, {"audioOption", 1}});
    sheets.refreshSettingWindow(editor.id());
    EXPECT_TRUE(find<QRadioButton>("voipButton")->isChecked());
    EXPECT_TRUE(find<QCheckBox>("usePMI")->isChecked()) << "as long as the user leaves it on";
}

TEST_F(SettingsSheet, IsGoneWithItsWindowAndTellsNobody) {
    QWidget another;
    another.show();
    const QString id = editor.id();
    sheets.addSchSettingWindowToArray(id, {}, editor.window);
    sheets.addSchSettingWindowToArray(id, {}, nullptr);
    sheets.refreshSettingWindow(id); // nothing is shown yet
    platform::windowWillClose(&another);
    EXPECT_TRUE(sheets.hasSchSettingWindow(id));
    EXPECT_FALSE(sheets.hasSchSettingWindow(u"another"_s));
    sheets.addSchSettingWindowToArray(id, {}, &another); // a new window with the same identifier
    EXPECT_EQ(controller()->parentWindow(), &another);
    show();
    editor.editor.close();
    EXPECT_FALSE(sheets.hasSchSettingWindow(id));
    EXPECT_TRUE(dialogs().isEmpty());
    EXPECT_TRUE(commits.isEmpty());
}

// The edition that schedules for others.
class OnBehalf : public SettingsSheet {
protected:
    void SetUp() override {
        if (!vlPluginBuildMgr::supportScheduleFor())
            GTEST_SKIP() << "This edition schedules for nobody else.";
        signIn({{"bosses", QVariantList{QVariantMap{{"displayName", name}, {"email", address.toLower()}}}}});
        editor.account.values["emailAddress"] = address;
        editor.attach();
    }
    void isDelegating(bool delegating) { editor.editor.values["isDelegating"] = delegating; }
    QWidget *banner() { return find<QWidget>("onbehalfView"); }
    QVariant scheduledFor() { return sheets.getVlSettingsData(editor.id()).value(vl_Setting_ScheduleFor); }

    inline static const QString address = u"Boss@example.com"_s;
    inline static const QString name = u"Bo %@ <b> "_s.repeated(40);
};

TEST_F(OnBehalf, TheSheetGrowsDownwardsByABannerWithTheNameToTheLetter) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    show();
    const QRect small = sheet()->geometry();
    isDelegating(true);
    for (int again = 0; again < 2; ++again) {
        show();
        EXPECT_FALSE(banner()->isHidden());
        EXPECT_TRUE(find<QCheckBox>("usePMI")->isHidden());
        EXPECT_EQ(scheduledFor(), address);
        EXPECT_EQ(sheet()->geometry(), small.adjusted(0, 0, 0, banner()->minimumHeight()));
    }
    EXPECT_EQ(picture(*banner()).pixelColor(1, 1), QColor(99, 192, 64));
    auto *label = find<QLabel>("_textOnbehalfInfo");
    sheet()->setPalette(QPalette(Qt::black)); // with white text
    EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::black)) << "legible on the green";
    EXPECT_TRUE(label->text().contains(u"Bo %@ <b>"_s)) << qPrintable(label->text());
    EXPECT_TRUE(label->text().endsWith(QChar(0x2026))) << "it is cut visibly";
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
    EXPECT_TRUE(label->accessibleName().contains(name));
    EXPECT_TRUE(label->toolTip().contains(name.toHtmlEscaped()));

    editor.account.values["emailAddress"] = u"stranger@example.com"_s; // has not allowed it
    show();
    EXPECT_TRUE(banner()->isHidden());
    const auto *personal = find<QCheckBox>("usePMI");
    EXPECT_FALSE(personal->isHidden());
    EXPECT_TRUE((personal->text() + personal->toolTip()).contains(u"123-456-7890"_s));
    EXPECT_EQ(sheet()->geometry(), small);
    EXPECT_EQ(scheduledFor(), u""_s);
}

TEST_F(OnBehalf, AnAudioConferenceIsRefusedWithAWord) {
    isDelegating(true);
    editor.strip().onClickAddPACAccount1();
    EXPECT_EQ(editor.context()->meetingAction, MeetingCommand::CmdNone);
    EXPECT_EQ(dialogs().size(), 1);
}
