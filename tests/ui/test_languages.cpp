// The tables of every language: the same keys, the same marks, room for every text.
#include "platform/services/bundle/StringsTable.h"
#include "plugin/ui/controls/buttonFace.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/settings/VlSettingViewController.h"
#include "plugin/util/localizedString.h"
#include "tests/ui/UiFixture.h"

namespace {

using Table = QHash<QString, QString>;

const QStringList languages = {u"en"_s, u"de"_s, u"fr"_s, u"es"_s, u"ja"_s, u"zh-Hans"_s};
constexpr double gap = 6; // between the titles of two buttons, in points

Table tableOf(const QString &language) {
    QFile file(u"" PLUGIN_RESOURCES "/%1.lproj/%2.strings"_s.arg(language, vl_LocalizableTable));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    bool isWhole = false;
    const Table table = platform::parseStringsTable(file.readAll(), &isWhole);
    EXPECT_TRUE(isWhole) << qPrintable(language);
    return table;
}

// What a translator has to keep: how many texts are put in, and whether a number follows directly.
QString marksOf(const QString &text) {
    static const QRegularExpression mark(u"%[@\\d]"_s);
    QStringList marks;
    for (auto found = mark.globalMatch(text); found.hasNext();)
        marks.append(found.next().captured());
    if (text.endsWith(u' '))
        marks.append(u"blank"_s);
    return marks.join(u' ');
}

class Languages : public UiTest {};

} // namespace

TEST_F(Languages, HaveTheSameKeysAndPlaceTheSameTexts) {
    const Table english = tableOf(languages.first());
    EXPECT_GT(english.size(), 50);
    const QStringList strip = {"AddVelaButton", "AddPACButton", "CancelVelaButton", "ChangeSettingButton"};
    for (const QString &language : languages) {
        const Table table = tableOf(language);
        for (auto it = english.cbegin(); it != english.cend(); ++it) {
            ASSERT_TRUE(table.contains(it.key())) << qPrintable(language + u' ' + it.key());
            if (!strip.contains(it.key())) { // their blanks are for their place
                EXPECT_EQ(marksOf(table[it.key()]), marksOf(*it)) << qPrintable(language + u' ' + it.key());
            }
            EXPECT_EQ(table[it.key()].contains(u'&'), it->contains(u'&'))
                << qPrintable(language + u' ' + it.key());
        }
        for (auto it = table.cbegin(); it != table.cend(); ++it)
            EXPECT_TRUE(english.contains(it.key())) << qPrintable(language + u' ' + it.key());
    }
}

// In the host's editor the letters of its own fields and buttons are taken: From, Attendees, Rooms, Subject,
// Location, Starts, Ends, All day, Send, Save and close, Repeat, Time zone, Open series.
TEST_F(Languages, GiveEachLetterToOneControlOfAWindowOnly) {
    const struct {
        QStringList keys;
        QString taken;
    } windows[] = {
        {{"Video_Host", "Video_Paticipant", "Audio_Telephony", "Audio_Voip", "Audio_Both", "Audio_ThirdParty",
          "RequirdMeetingPassword", "EnableJoinBeforeHost", "UsePersonalMeetingID", "SaveDataTitle",
          "Button_Continue", "Button_Cancel"},
         {}},
        {{"AddVelaButton", "AddPACButton", "CancelVelaButton", "ChangeSettingButton"}, "farultednvpzo"},
        {{"Button_LaunchClient", "Button_Cancel"}, {}},
        {{"Button_OKGot", "Button_Cancel"}, {}},
        {{"Account1", "Account2"}, {}},
        {{"StartWithVideo", "StartWithoutVideo"}, {}},
        // The main window has File, Edit, View, New appointment, New meeting and Today.
        {{"InstantMeetingLabel", "ScheduleMeetingLabel", "SchedulePACMeetingLabel", "OpenLogFolderLabel"},
         "fevamt"},
    };
    for (const QString &language : languages) {
        const Table table = tableOf(language);
        for (const auto &[keys, taken] : windows) {
            QString letters = taken;
            for (const QString &key : keys) {
                const qsizetype mark = table[key].indexOf(u'&');
                ASSERT_GE(mark, 0) << qPrintable(language + u' ' + key) << " has no letter";
                const QChar letter = table[key][mark + 1].toLower();
                EXPECT_FALSE(letters.contains(letter)) << qPrintable(language + u' ' + key);
                EXPECT_LT(letter.unicode(), 0x80) << qPrintable(language + u' ' + key) << ": no key has it";
                letters += letter;
            }
        }
    }
}

// The frames of two buttons that are shown together overlap, their titles do not.
TEST_F(Languages, LeaveTheTitlesOnTheStripApartAndInTheirButtons) {
    const std::pair<const char *, QRectF> buttons[] = {{"AddVelaButton", gAddButtonFrame},
                                                       {"AddPACButton", gAddPACButtonFrame},
                                                       {"ChangeSettingButton", gChangeSettingButtonFrame},
                                                       {"CancelVelaButton", gCancelButtonFrame}};
    for (const QString &language : languages) {
        const Table table = tableOf(language);
        QList<std::pair<double, double>> places; // left and right edge
        for (const auto &[key, frame] : buttons) {
            ButtonFace face;
            face.setTitle(table[QString::fromLatin1(key)]);
            EXPECT_GE(face.titleX(frame.width()), 0) << qPrintable(language) << ' ' << key;
            const TitleLine &line = face.titleLine(frame.width());
            EXPECT_EQ(line.text, face.mLable) << qPrintable(language) << ' ' << key;
            const double left = frame.x() + line.x;
            const double ink = QFontMetricsF(line.font).horizontalAdvance(line.text.trimmed());
            EXPECT_NEAR(left + ink / 2, frame.center().x(), 8) << qPrintable(language) << ' ' << key;
            places.append({left, left + ink});
        }
        EXPECT_GE(places[1].first - places[0].second, gap) << qPrintable(language);
        EXPECT_GE(places[3].first - places[2].second, gap) << qPrintable(language);
    }
}

// The second language of this desktop is Swiss German.
TEST_F(Languages, FollowTheDesktop) {
    const std::pair<QString, QString> cases[] = {
        {"de-AT", "de"},      {"fr-CA", "fr"},      {"es-MX", "es"}, {"ja-JP", "ja"}, {"zh-CN", "zh-Hans"},
        {"zh-SG", "zh-Hans"}, {"zh", "zh-Hans"},    {"zh-TW", "de"}, {"pt-BR", "de"}, {"xx", "de"},
        {"en-GB", "en"},      {"de-Latn-AT", "de"}, {"C", "de"}};
    for (const auto &[desktop, language] : cases) {
        const auto bundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s, {desktop, "de-CH"});
        EXPECT_EQ(bundle->localizedString("SettingWindowTitle", QString(), vl_LocalizableTable),
                  tableOf(language)["SettingWindowTitle"])
            << qPrintable(desktop);
        const std::unique_ptr<QWidget> menu = bundle->loadInterface("vlSchedulePACMeetingMenu");
        EXPECT_EQ(menu->actions().value(1)->text(), tableOf(language)["Account2"]) << qPrintable(desktop);
    }
}

TEST_F(Languages, FindRoomForEveryTextOnTheSettingsSheet) {
    signIn();
    for (const QString &language : languages) {
        platform::services().pluginBundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s, {language});
        EditorWithStrip editor;
        editor.window->show();
        editor.open();
        SchSettingWndCtrlMgr sheets;
        sheets.addSchSettingWindowToArray(editor.id(), {}, editor.window);
        sheets.showSchSettingWindow(editor.id());
        QDialog *sheet = sheets.getSchSettingWindowInArray(editor.id())->settingWindow();
        ASSERT_TRUE(sheet);
        int looked = 0;
        for (QWidget *widget : sheet->findChildren<QWidget *>()) {
            const bool hasText = qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLabel *>(widget);
            if (!hasText || !widget->isVisible())
                continue;
            ++looked;
            EXPECT_LE(widget->sizeHint().width(), widget->width())
                << qPrintable(language + u' ' + widget->objectName());
            EXPECT_LE(widget->geometry().right(), widget->parentWidget()->width())
                << qPrintable(language + u' ' + widget->objectName());
        }
        EXPECT_GT(looked, 12) << qPrintable(language);
    }
}
