// The plug-in's own resources: the tables of texts in every language, and the pictures.
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

class Languages : public UiTest {};

} // namespace

TEST_F(Languages, HaveATextForEveryKeyAndPlaceTheSameTexts) {
    const Table english = tableOf(languages.first());
    // The keys of the layers below, which have no list of them.
    QStringList keys =
        QString("NoVelaClient InternetError VelaClientNotRunning NotSupportedVelaClientVersion "
                "VelaClientNotSignIn SystemError MeetingNotFound NetworkConnectionError "
                "WarnMsg_PACIsDisabled OutlookVersionLowerThan1414 AddVelaMeetingReminderMsg")
            .split(u' ');
    QFile header(u"" PLUGIN_FOLDER "/ui/localizationKeys.h"_s);
    ASSERT_TRUE(header.open(QIODevice::ReadOnly));
    static const QRegularExpression literal(u"u\"(\\w+)\"_s"_s);
    const QString keysOfTheInterface = QString::fromUtf8(header.readAll());
    for (auto found = literal.globalMatch(keysOfTheInterface); found.hasNext();)
        keys.append(found.next().captured(1));
    EXPECT_GT(keys.size(), 25);
    for (const QString &key : keys)
        EXPECT_FALSE(english[key].isEmpty()) << qPrintable(key);

    for (const QString &language : languages) {
        const Table table = tableOf(language);
        EXPECT_EQ(QSet<QString>(table.keyBegin(), table.keyEnd()),
                  QSet<QString>(english.keyBegin(), english.keyEnd()))
            << qPrintable(language);
        for (auto it = english.cbegin(); it != english.cend(); ++it)
            EXPECT_EQ(table[it.key()].contains(u'&'), it->contains(u'&'))
                << qPrintable(language + u' ' + it.key());
        EXPECT_TRUE(table["UsePersonalMeetingID"].endsWith(": ")) << "its number follows";
        EXPECT_EQ(table["OnBehalfInfo"].count("%@"), 1) << "the place of a name";
    }
}

TEST_F(Languages, ShareThePicturesWhichHaveTheirSizeAtEveryRatio) {
    const auto bundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    const QList<QSize> sizes = {{32, 32}, {3, 38}, {32, 38}, {64, 64}}; // image, highlight, alert
    const QStringList names = QDir(u"" PLUGIN_RESOURCES ""_s).entryList({"*.svg", "warning.png"});
    EXPECT_EQ(names.size(), 13);
    for (const QString &name : names) {
        const QSize size = bundle->image(name, 1).size();
        EXPECT_TRUE(sizes.contains(size)) << qPrintable(name);
        EXPECT_EQ(bundle->image(name, 2).size(), 2 * size) << qPrintable(name);
    }
}

// In the host's editor the letters of its own fields and buttons are taken: From, Attendees, Rooms, Subject,
// Location, Starts, Ends, All day, Send, Save and close, Repeat, Time zone, Open series.
TEST_F(Languages, GiveEachLetterToOneControlOfAWindowOnly) {
    const std::pair<QStringList, QString> windows[] = {
        {{"Video_Host", "Video_Paticipant", "Audio_Telephony", "Audio_Voip", "Audio_Both", "Audio_ThirdParty",
          "RequirdMeetingPassword", "EnableJoinBeforeHost", "UsePersonalMeetingID", "SaveDataTitle",
          "Button_Continue", "Button_Cancel"},
         {}},
        {{"AddVelaButton", "AddPACButton", "CancelVelaButton", "ChangeSettingButton"}, "farultednvpzo"},
        {{"Button_LaunchClient", "Button_Cancel"}, {}},
        {{"Button_OKGot", "Button_Cancel"}, {}},
        {{"Account1", "Account2"}, {}},
        {{"StartWithVideo", "StartWithoutVideo"}, {}},
        // The letters of File, Edit, View, New appointment, New meeting and Today are taken.
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
                EXPECT_LT(letter.unicode(), 0x80)
                    << qPrintable(language + u' ' + key) << ": there is no key for it";
                letters += letter;
            }
        }
    }
}

// Frames of two buttons may overlap, but not their titles.
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
    int narrowest = QWIDGETSIZE_MAX; // of the push buttons
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
            SCOPED_TRACE(qPrintable(language + u' ' + widget->objectName()));
            EXPECT_LE(widget->sizeHint().width(), widget->width());
            if (qobject_cast<QPushButton *>(widget))
                narrowest = std::min(narrowest, widget->width());
            EXPECT_LE(widget->geometry().right(), widget->parentWidget()->width());
        }
        EXPECT_GT(looked, 12) << qPrintable(language);
    }
    EXPECT_EQ(narrowest, 96);
}
