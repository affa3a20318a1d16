// Trimming, JSON, Base64, digests, and the property list that holds one text.
#include "platform/services/propertylist/PropertyList.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlMD5.h"
#include "plugin/util/vlMd5Utils.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "tests/support/TestServices.h"

#include <QTemporaryDir>
#include <QTimeZone>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

TEST(Texts, EachTrimTakesWhatItsNameSays) {
    const std::tuple<QString, QString, QString, QString> cases[] = {
        {"  x y  z ", "xyz", "x y  z", "x y  z"},
        {" x y\n", "xy\n", "x y\n", "x y"},
        {"\t\n x\t", "x", "\n x", "x"},
        {"a\tb \t\nc", "a\tbc", "a\tb \t\nc", "a\tb \t\nc"},
        {u"\u00a0x\u2028"_s, u"x\u2028"_s, u"x\u2028"_s, "x"},
        {" ", "", "", ""},
    };
    for (const auto &[text, all, ends, endsAndLines] : cases) {
        SCOPED_TRACE(qPrintable(text));
        EXPECT_EQ(vlOLUtils::trimAllSpace(text), all);
        EXPECT_EQ(vlOLUtils::trimRLSpace(text), ends);
        EXPECT_EQ(vlOLUtils::trimAllSpaceAndNewLine(text), endsAndLines);
    }
    for (const auto trim :
         {&vlOLUtils::trimAllSpace, &vlOLUtils::trimRLSpace, &vlOLUtils::trimAllSpaceAndNewLine})
        EXPECT_TRUE(trim(QString()).isNull() && !trim(u" "_s).isNull());
}

TEST(Json, ARecordComesBackAsItWentOutWithoutWhatHasNoValue) {
    QVariantMap record{{"text", u"a \"quoted\" \u20ac \U0001F600\n"_s},
                       {"empty", u""_s},
                       {"nothing", rt::nullMarker()},
                       {"yes", true},
                       {"option", std::numeric_limits<qint64>::max()},
                       {"list", QVariantList{qint64(1), QVariantMap{{"inner", u"x"_s}}}},
                       {"unset", QVariant()},
                       {"null", QString()}};
    const QString json = vlOLUtils::toJSONString(record);
    EXPECT_TRUE(json.startsWith("{\n") && json.endsWith(u'}')) << "not pretty-printed";
    record.remove("unset");
    record.remove("null");
    const QVariantMap back = vlOLUtils::toArrayOrNSDictionary(json).toMap();
    EXPECT_EQ(back, record);
    EXPECT_TRUE(rt::isNullMarker(back.value("nothing")));
    EXPECT_EQ(back.value("yes").typeId(), QMetaType::Bool);
    EXPECT_EQ(back.value("option").typeId(), QMetaType::LongLong);
}

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

TEST(Json, WhatIsNotOneJsonValueIsNone) {
    for (const char *text : {"", " ", "{", "1,2", "1 2", "],[", "{},{}", "[1,]", ",1", "\"open", "{\"a\":}",
                             "nul", "'a'", "{a:1}", "\x01"})
        EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionary(text).isValid()) << text;
    EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionary(QString()).isValid());
    for (const QByteArray &bytes : {QByteArray("\"\xff\xfe\""), QByteArray(200'000, '[')})
        EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionaryWithData(bytes).isValid());
}

TEST(Base64, ComesBackFromItsText) {
    for (const auto &[bytes, text] :
         {std::pair{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xfb\xff", "+/8="}}) {
        EXPECT_EQ(EncodeUtils::base64Encode(bytes), text);
        EXPECT_EQ(EncodeUtils::base64DecodeToData(text), bytes);
        EXPECT_FALSE(EncodeUtils::base64DecodeToData(text).isNull());
    }
    for (const QString &foreign : {QString(), u"Z"_s, u"Zg="_s, u"===="_s, u"Z==="_s, u"Zg=a"_s,
                                   u"Zm9v Zm9"_s, u"Zm9-"_s, u"Zm\n="_s, u"Zm9\u0176"_s})
        EXPECT_TRUE(EncodeUtils::base64DecodeToData(foreign).isNull()) << qPrintable(foreign);
    EXPECT_EQ(EncodeUtils::base64Decode("4oKs"), u"\u20ac"_s);
    EXPECT_FALSE(EncodeUtils::base64Decode("").isNull());
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
    EXPECT_EQ(digest.hex(), vlMd5Utils::vlMD5Hex(u""_s));
}

TEST(OneStringFile, GivesBackTheTextThatWasSavedAndElseEmptyText) {
    platform::installTestServices();
    const QTemporaryDir folder;
    const QString path = folder.filePath("one.txt");
    const auto readsEmpty = [](const QString &from) {
        const QString text = vlOLUtils::readStrFromFile(from);
        return text.isEmpty() && !text.isNull();
    };
    EXPECT_TRUE(vlOLUtils::readStrFromFile(QString()).isNull());
    EXPECT_TRUE(readsEmpty(u""_s) && readsEmpty(path));
    for (const QString &text : {u"<a> & \"b\"\n\u20ac\U0001F600"_s, u""_s}) {
        vlOLUtils::saveStrToFile(text, path);
        EXPECT_EQ(vlOLUtils::readStrFromFile(path), text);
    }
    vlOLUtils::saveStrToFile(u"kept"_s, path);
    vlOLUtils::saveStrToFile(QString(), path);
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "kept");
    platform::PropertyList::write(path, QVariantList{"first", "last"});
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "last");
    for (const rt::Value &root : {rt::Value(QVariantList{}), rt::Value(QVariantMap{{"a", "b"}}),
                                  rt::Value(QVariantList{"text", qint64(3)})}) {
        platform::PropertyList::write(path, root);
        EXPECT_TRUE(readsEmpty(path)) << root.typeName();
    }
}

TEST(Edition, IsExactlyOneAndDecidesAboutSchedulingForOthers) {
    EXPECT_NE(vlPluginBuildMgr::isBuildForPRL(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_EQ(vlPluginBuildMgr::supportScheduleFor(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_TRUE(vlPluginBuildMgr::supportStartWithoutVideo());
}
