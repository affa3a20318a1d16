// The plug-in's own resources: the English texts, the pictures, the interface descriptions.
#include "plugin/util/localizedString.h"
#include "tests/ui/UiFixture.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

QString contentOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

QString allSources() {
    QString text;
    QDirIterator files(u"" PLUGIN_FOLDER ""_s, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        text += contentOf(files.next());
    return text;
}

// Every text that is a constant of one of the given names.
QSet<QString> valuesOf(const QString &sources, const QSet<QString> &names) {
    static const QRegularExpression constant(u"(?:const QString|QString) (\\w+)\\s*=\\s*u\"([^\"]*)\"_s"_s);
    QSet<QString> values;
    for (auto found = constant.globalMatch(sources); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        if (names.contains(match.captured(1)))
            values.insert(match.captured(2));
    }
    return values;
}

QSet<QString> captured(const QString &text, const QString &pattern) {
    QSet<QString> result;
    for (auto found = QRegularExpression(pattern).globalMatch(text); found.hasNext();)
        result.insert(found.next().captured(1));
    return result;
}

QSet<QString> keysInCode() {
    const QString sources = allSources();
    QSet<QString> keys = captured(sources, u"vlLocalizedString\\(u\"(\\w+)\"_s"_s);
    keys |= valuesOf(sources, captured(sources, u"vlLocalizedString\\((?:\\w+::)*(\\w+)\\)"_s));
    const QString ownKeys = contentOf(u"" PLUGIN_FOLDER "/ui/localizationKeys.h"_s);
    keys |= captured(ownKeys, u"u\"(\\w+)\"_s"_s);
    return keys;
}

class Resources : public testing::Test {
protected:
    std::unique_ptr<platform::Bundle> bundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    QString text(const QString &key) {
        return bundle->localizedString(key, u"(missing)"_s, vl_LocalizableTable);
    }
};

} // namespace

TEST_F(Resources, HaveATextForEveryKeyInTheCode) {
    const QSet<QString> keys = keysInCode();
    EXPECT_GT(keys.size(), 25);
    for (const QString &key : keys) {
        EXPECT_NE(text(key), u"(missing)"_s) << qPrintable(key);
        EXPECT_FALSE(text(key).isEmpty()) << qPrintable(key);
    }
}

TEST_F(Resources, HaveATextForEveryKindOfFailure) {
    for (const char *key :
         {"NoVelaClient", "InternetError", "VelaClientNotRunning", "NotSupportedVelaClientVersion",
          "VelaClientNotSignIn", "SystemError", "MeetingNotFound", "NetworkConnectionError",
          "WarnMsg_PACIsDisabled", "OutlookVersionLowerThan1414", "AddVelaMeetingReminderMsg"})
        EXPECT_NE(text(QString::fromUtf8(key)), u"(missing)"_s) << key;
}

TEST_F(Resources, HaveEveryPictureInItsSizeAtEveryRatio) {
    const struct {
        const char *name;
        QSizeF points;
    } pictures[] = {
        {"Schedule_Meeting_normal", {32, 32}},
        {"Remove_Meeting_normal", {32, 32}},
        {"Settings_normal", {32, 32}},
        {"Settings_disable", {32, 32}},
        {"Add_Personal_Audio_Conference", {32, 32}},
        {"settingbg_left", {3, 38}},
        {"settingbg_center", {32, 38}},
        {"settingbg_right", {3, 38}},
        {"warning.png", {64, 64}},
        {"Start_Meeting_normal_32", {32, 32}},
        {"Schedule_Meeting_normal_32", {32, 32}},
        {"Schedule_PACMeeting_32", {32, 32}},
        {"OpenLogFolder_normal_32", {32, 32}},
    };
    for (const auto &[name, points] : pictures) {
        for (qreal ratio : {1.0, 2.0}) {
            const QImage image = bundle->image(QString::fromUtf8(name), ratio);
            EXPECT_EQ(image.deviceIndependentSize(), points) << name;
            EXPECT_EQ(image.size(), (points * ratio).toSize()) << name;
        }
    }
}

TEST_F(Resources, KeepTheWordsOutOfTheInterfaceDescriptions) {
    for (const char *name : {"VlSettingWindowController.ui", "vlProgressWindowController.ui"}) {
        const QString description = contentOf(u"" PLUGIN_RESOURCES "/"_s + QString::fromUtf8(name));
        EXPECT_FALSE(description.contains(QLatin1String("<string>"))) << name;
    }
}
