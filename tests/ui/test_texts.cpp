// The plug-in's own resources: the English texts, the pictures, the interface descriptions.
#include "plugin/util/localizedString.h"
#include "tests/ui/UiFixture.h"

namespace {

QString contentOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

class Resources : public testing::Test {
protected:
    std::unique_ptr<platform::Bundle> bundle = platform::makeFolderBundle(u"" PLUGIN_RESOURCES ""_s);
    QString text(const QString &key) {
        return bundle->localizedString(key, u"(missing)"_s, vl_LocalizableTable);
    }
};

} // namespace

TEST_F(Resources, HaveATextForEveryKey) {
    // Those of the layers below, which have no list of them.
    QStringList keys = {"NoVelaClient",
                        "InternetError",
                        "VelaClientNotRunning",
                        "NotSupportedVelaClientVersion",
                        "VelaClientNotSignIn",
                        "SystemError",
                        "MeetingNotFound",
                        "NetworkConnectionError",
                        "WarnMsg_PACIsDisabled",
                        "OutlookVersionLowerThan1414",
                        "AddVelaMeetingReminderMsg"};
    static const QRegularExpression literal(u"u\"(\\w+)\"_s"_s);
    for (auto found = literal.globalMatch(contentOf(u"" PLUGIN_FOLDER "/ui/localizationKeys.h"_s));
         found.hasNext();)
        keys.append(found.next().captured(1));
    EXPECT_GT(keys.size(), 25);
    for (const QString &key : keys) {
        EXPECT_NE(text(key), u"(missing)"_s) << qPrintable(key);
        EXPECT_FALSE(text(key).isEmpty()) << qPrintable(key);
    }
}

TEST_F(Resources, HaveEveryPictureInItsSizeAtEveryRatio) {
    QList<std::pair<QString, QSizeF>> pictures = {{"settingbg_left", {3, 38}},
                                                  {"settingbg_center", {32, 38}},
                                                  {"settingbg_right", {3, 38}},
                                                  {"warning.png", {64, 64}}};
    for (const char *name :
         {"Schedule_Meeting_normal", "Remove_Meeting_normal", "Settings_normal", "Settings_disable",
          "Add_Personal_Audio_Conference", "Start_Meeting_normal_32", "Schedule_Meeting_normal_32",
          "Schedule_PACMeeting_32", "OpenLogFolder_normal_32"})
        pictures.append({name, {32, 32}});
    for (const auto &[name, points] : pictures) {
        for (const qreal ratio : {1.0, 2.0}) {
            const QImage image = bundle->image(name, ratio);
            EXPECT_EQ(image.deviceIndependentSize(), points) << qPrintable(name);
            EXPECT_EQ(image.size(), (points * ratio).toSize()) << qPrintable(name);
        }
    }
}
