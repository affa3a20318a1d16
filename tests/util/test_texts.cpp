#include "platform/runtime/Runtime.h"
#include "platform/services/TestServices.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Texts, EachTrimTakesWhatItsNameSays) {
    struct Case {
        QString text, all, ends, endsAndLines;
    };
    const Case cases[] = {
        {"  x yz ", "xyz", "x yz", "x yz"},
        {"  x y  z ", "xyz", "x y  z", "x y  z"},
        {" x y\n", "xy\n", "x y\n", "x y"},
        {"\t\n x\t", "x", "\n x", "x"},
        {"a\tb \t\nc", "a\tbc", "a\tb \t\nc", "a\tb \t\nc"},
        {u"\u00a0x\u2028"_s, u"x\u2028"_s, u"x\u2028"_s, "x"},
        {"   ", "", "", ""},
        {"", "", "", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(qPrintable(c.text));
        EXPECT_EQ(vlOLUtils::trimAllSpace(c.text), c.all);
        EXPECT_EQ(vlOLUtils::trimRLSpace(c.text), c.ends);
        EXPECT_EQ(vlOLUtils::trimAllSpaceAndNewLine(c.text), c.endsAndLines);
        EXPECT_FALSE(vlOLUtils::trimAllSpace(c.text).isNull());
        EXPECT_FALSE(vlOLUtils::trimRLSpace(c.text).isNull());
        EXPECT_FALSE(vlOLUtils::trimAllSpaceAndNewLine(c.text).isNull());
    }
    EXPECT_TRUE(vlOLUtils::trimAllSpace(QString()).isNull());
    EXPECT_TRUE(vlOLUtils::trimRLSpace(QString()).isNull());
    EXPECT_TRUE(vlOLUtils::trimAllSpaceAndNewLine(QString()).isNull());
}

TEST(Texts, NoTextEmptyTextAndTheNullMarkerAreToldApart) {
    EXPECT_TRUE(vlOLUtils::isNullString(QString()));
    EXPECT_FALSE(vlOLUtils::isNullString(u""_s));
    EXPECT_TRUE(vlOLUtils::isNullString(rt::nullMarker()));
    EXPECT_TRUE(vlOLUtils::isNullString(rt::Value()));
    EXPECT_FALSE(vlOLUtils::isNullString(rt::Value(0)));
    EXPECT_FALSE(vlOLUtils::isValidInstance(rt::nullMarker()));
    EXPECT_FALSE(vlOLUtils::isValidInstance(rt::Value()));
    EXPECT_TRUE(vlOLUtils::isValidInstance(rt::Value(u""_s)));
}

class OneStringFile : public testing::Test {
protected:
    void SetUp() override { platform::installTestServices(); }
    void holds(const QByteArray &bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir folder;
    QString path = folder.filePath("one.txt");
};

TEST_F(OneStringFile, GivesBackTheTextThatWasSaved) {
    for (const QString &text : {u"<a> & \"b\"\n\u20ac\U0001F600"_s, u""_s}) {
        vlOLUtils::saveStrToFile(text, path);
        EXPECT_EQ(vlOLUtils::readStrFromFile(path), text);
    }
    vlOLUtils::saveStrToFile(u"kept"_s, path);
    vlOLUtils::saveStrToFile(QString(), path);
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "kept");
}

TEST_F(OneStringFile, HoldsItsTextLast) {
    platform::services().propertyLists->write(path, QVariantList{"first", "second"});
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "second");
}

TEST_F(OneStringFile, IsEmptyTextWhenItIsNoSuchFile) {
    EXPECT_TRUE(vlOLUtils::readStrFromFile(QString()).isNull());
    const auto readsEmpty = [](const QString &from) {
        const QString text = vlOLUtils::readStrFromFile(from);
        return text.isEmpty() && !text.isNull();
    };
    EXPECT_TRUE(readsEmpty(u""_s));
    EXPECT_TRUE(readsEmpty(path));
    holds("not a property list");
    EXPECT_TRUE(readsEmpty(path));
    for (const rt::Value &root : {rt::Value(QVariantList{}), rt::Value(QVariantMap{{"a", "b"}}),
                                  rt::Value(QVariantList{"text", qint64(3)})}) {
        platform::services().propertyLists->write(path, root);
        EXPECT_TRUE(readsEmpty(path)) << root.typeName();
    }
}

TEST_F(OneStringFile, SurvivesEveryCut) {
    vlOLUtils::saveStrToFile(u"{\"enablePAC\": true}"_s, path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        holds(whole.first(length));
        EXPECT_FALSE(vlOLUtils::readStrFromFile(path).isNull()) << length;
    }
}

TEST(Edition, IsExactlyOneAndDecidesAboutSchedulingForOthers) {
    EXPECT_NE(vlPluginBuildMgr::isBuildForPRL(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_EQ(vlPluginBuildMgr::supportScheduleFor(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_TRUE(vlPluginBuildMgr::supportStartWithoutVideo());
}
