// The settings sheet in the edition that schedules for others.
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/ui/UiFixture.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>

namespace {

const QString address = u"Boss@example.com"_s;
const QString name = u"Bo %@ <b>"_s;

} // namespace

class OnBehalf : public UiTest {
protected:
    void SetUp() override {
        if (!vlPluginBuildMgr::supportScheduleFor())
            GTEST_SKIP() << "This edition schedules for nobody else.";
    }
    OnBehalf() {
        mayScheduleFor(name);
        editor.account.values["emailAddress"] = address;
        editor.window->show();
        editor.open();
        editor.attach();
    }
    static void mayScheduleFor(const QString &displayName) {
        signIn({{"bosses",
                 QVariantList{QVariantMap{{"displayName", displayName}, {"email", address.toLower()}}}}});
    }
    void isDelegating(bool delegating) { editor.editor.values["isDelegating"] = delegating; }
    void showSheet() {
        sheets.addSchSettingWindowToArray(editor.id(), {}, editor.window);
        sheets.showSchSettingWindow(editor.id());
    }
    QDialog *sheet() { return sheets.getSchSettingWindowInArray(editor.id())->settingWindow(); }
    QWidget *banner() { return sheet()->findChild<QWidget *>(u"onbehalfView"_s); }
    bool offersPersonalMeeting() { return !sheet()->findChild<QCheckBox *>(u"usePMI"_s)->isHidden(); }
    QVariant scheduledFor() { return sheets.getVlSettingsData(editor.id()).value(vl_Setting_ScheduleFor); }

    EditorWithStrip editor;
    SchSettingWndCtrlMgr sheets;
};

TEST_F(OnBehalf, TheSheetGrowsDownwardsByABannerWithTheName) {
    showSheet();
    EXPECT_TRUE(banner()->isHidden());
    EXPECT_TRUE(offersPersonalMeeting());
    EXPECT_EQ(scheduledFor(), u""_s);
    const QRect small = sheet()->geometry();

    isDelegating(true);
    showSheet();
    EXPECT_FALSE(banner()->isHidden());
    EXPECT_FALSE(offersPersonalMeeting());
    EXPECT_EQ(scheduledFor(), address);
    EXPECT_EQ(sheet()->geometry(), small.adjusted(0, 0, 0, banner()->minimumHeight()));
    showSheet();
    EXPECT_EQ(sheet()->height(), small.height() + banner()->minimumHeight());

    isDelegating(false);
    showSheet();
    EXPECT_TRUE(banner()->isHidden());
    EXPECT_EQ(sheet()->geometry(), small);
    EXPECT_EQ(scheduledFor(), u""_s);
}

TEST_F(OnBehalf, TheBannerShowsTheNameToTheLetter) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    isDelegating(true);
    showSheet();
    auto *label = sheet()->findChild<QLabel *>(u"_textOnbehalfInfo"_s);
    EXPECT_TRUE(label->text().contains(name)) << qPrintable(label->text());
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(banner()->palette().color(QPalette::Window), QColor(99, 192, 64));
}

TEST_F(OnBehalf, TheBannerCutsALongNameVisiblyAndKeepsItInTheToolTip) {
    platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    const QString longName = u"Bo <i> "_s.repeated(40);
    mayScheduleFor(longName);
    isDelegating(true);
    showSheet();
    auto *label = sheet()->findChild<QLabel *>(u"_textOnbehalfInfo"_s);
    EXPECT_TRUE(label->text().endsWith(QChar(0x2026))) << qPrintable(label->text());
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
    EXPECT_TRUE(label->accessibleName().contains(longName));
    EXPECT_TRUE(label->toolTip().contains(longName.toHtmlEscaped()));
}

TEST_F(OnBehalf, OfSomeoneForWhomTheUserMayNotScheduleTheSheetSaysNothing) {
    editor.account.values["emailAddress"] = u"stranger@example.com"_s;
    isDelegating(true);
    showSheet();
    EXPECT_TRUE(banner()->isHidden());
    EXPECT_EQ(scheduledFor(), u""_s);
}

TEST_F(OnBehalf, AnAudioConferenceIsRefusedWithAWord) {
    isDelegating(true);
    editor.strip().onClickAddPACAccount1();
    EXPECT_EQ(vlMeetingMgr::sharedInstance().getMeetingAction(), MeetingCommand::CmdNone);
    EXPECT_EQ(dialogs().size(), 1);
    EXPECT_EQ(editor.strip().uiStatus(), StripState::NoMeeting);
}
