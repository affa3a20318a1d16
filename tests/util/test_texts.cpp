// Trimming, JSON, Base64, digests, and the property list that holds one text.
#include "platform/services/propertylist/PropertyList.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlMD5.h"
#include "plugin/util/vlMd5Utils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"

#include <QTemporaryDir>
#include <QTimeZone>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

TEST(Json, OnlyDictionariesAndArraysOfJsonValuesAreWritten) {
    const QVariant zone = QVariant::fromValue(QTimeZone::utc());
    for (const rt::Value &value :
         {rt::Value(), rt::nullMarker(), rt::Value(u"bare"_s), rt::Value(7),
          rt::Value(QVariantMap{{"deep", QVariantList{QVariantMap{{"zone", zone}}}}}),
          rt::Value(QVariantList{QByteArray("x")}), rt::Value(QVariantList{std::nan("")})}) {
        EXPECT_TRUE(vlOLUtils::toJSONString(value).isNull()) << value.typeName();
        EXPECT_TRUE(vlOLUtils::toJSONData(value).isNull());
    }
}

TEST(Json, ATextHasEveryValueThatThereIsAndIsReadAsOneValue) {
    const QVariantMap record{
        {"list", QVariantList{QVariant(), true, rt::nullMarker()}},
        {"null", QString()},
        {"number", quint64(std::numeric_limits<qint64>::max())},
        {"text", u"\u20ac"_s},
        {"unsigned", quint64(9007199254740993)}, // a double cannot hold it
    };
    EXPECT_EQ(vlOLUtils::toJSONString(record), u"{\n    \"list\": [\n        true,\n        null\n    ],\n"
                                               "    \"number\": 9223372036854775807,\n"
                                               "    \"text\": \"\u20ac\",\n"
                                               "    \"unsigned\": 9007199254740993\n}"_s);
    EXPECT_TRUE(rt::isNullMarker(vlOLUtils::toArrayOrNSDictionary("null")));
    EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionary("{},{}").isValid());
}

TEST(Base64, HasTheStandardAlphabetAndIsReadOnlyWhole) {
    EXPECT_EQ(EncodeUtils::base64Encode("\xfb\xff"), "+/8=");
    EXPECT_EQ(EncodeUtils::base64DecodeToData("+/8="), "\xfb\xff");
    for (const QString &foreign : {QString(), u"Zg="_s, u"Zm9-"_s, u"Zm9v Zm9"_s})
        EXPECT_TRUE(EncodeUtils::base64DecodeToData(foreign).isNull()) << qPrintable(foreign);
    EXPECT_TRUE(EncodeUtils::base64Decode("4oI=").isNull()) << "these bytes are no UTF-8";
}

TEST(Md5, IsTheDigestOfTheUtf8BytesInSmallHexDigitsAndIsFinishedOnce) {
    EXPECT_EQ(vlMd5Utils::vlMD5Hex(u"\u20ac"_s), "bca53fde466a76b7bee3e18997e94a7a");
    EXPECT_TRUE(vlMd5Utils::vlMD5Hex(QString()).isNull());
    Quarvo::MD5 digest;
    digest.feed("abXX", 2);
    digest.feed("c", 1);
    digest.feed("x", 0);
    digest.feed("x", -5);
    digest.feed(nullptr, 5);
    digest.finalize();
    digest.feed("more", 4);
    digest.finalize();
    EXPECT_EQ(digest.hex(), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(digest.binary().toHex(), digest.hex());
    digest.reset();
    digest.feed("abc", 3);
    EXPECT_EQ(digest.hex(), "900150983cd24fb0d6963f7d28e17f72");
    digest.feed("more", 4); // the reading has finished it
    EXPECT_EQ(digest.hex(), "900150983cd24fb0d6963f7d28e17f72");
}

TEST(OneStringFile, IsAListThatEndsWithTheTextAndAnotherPropertyListHasNone) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("one.txt");
    const QString text = u"<a> & \u20ac"_s;
    vlOLUtils::saveStrToFile(text, path);
    vlOLUtils::saveStrToFile(QString(), path); // changes nothing
    EXPECT_EQ(platform::PropertyList::read(path), rt::Value(QVariantList{text}));
    platform::PropertyList::write(path, QVariantList{"first", text});
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), text);
    platform::PropertyList::write(path, QVariantMap{{"a", "b"}});
    EXPECT_TRUE(vlOLUtils::readStrFromFile(path).isEmpty());
}

TEST(Edition, IsExactlyOneAndDecidesAboutSchedulingForOthers) {
    EXPECT_NE(vlPluginBuildMgr::isBuildForPRL(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_EQ(vlPluginBuildMgr::supportScheduleFor(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_TRUE(vlPluginBuildMgr::supportStartWithoutVideo());
}
