// Records as JSON text.
#include "plugin/util/vlOLUtils.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();

rt::Value parsed(const char *json) {
    return vlOLUtils::toArrayOrNSDictionary(QString::fromUtf8(json));
}

} // namespace

TEST(Json, ARecordComesBackAsItWentOut) {
    const QVariantMap record{{"text", u"a \"quoted\" \u20ac \U0001F600\n"_s},
                             {"empty", u""_s},
                             {"nothing", rt::nullMarker()},
                             {"yes", true},
                             {"option", largest},
                             {"below", std::numeric_limits<qint64>::min()},
                             {"half", 0.5},
                             {"list", QVariantList{qint64(1), QVariantMap{{"inner", u"x"_s}}}},
                             {"none", QVariantMap{}}};
    const rt::Value back = vlOLUtils::toArrayOrNSDictionary(vlOLUtils::toJSONString(record));
    EXPECT_EQ(back.toMap(), record);
    EXPECT_TRUE(rt::isNullMarker(back.toMap().value("nothing")));
    EXPECT_EQ(back.toMap().value("yes").typeId(), QMetaType::Bool);
    EXPECT_EQ(back.toMap().value("option").typeId(), QMetaType::LongLong);
}

TEST(Json, TextIsPrettyPrintedAndLeavesOutWhatHasNoValue) {
    const QString json = vlOLUtils::toJSONString(QVariantMap{{"a", 1}, {"b", QVariant()}, {"c", QString()}});
    EXPECT_TRUE(json.startsWith("{\n"));
    EXPECT_TRUE(json.endsWith(u'}'));
    EXPECT_EQ(QJsonDocument::fromJson(json.toUtf8()).object().keys(), QStringList{"a"});
}

TEST(Json, OnlyDictionariesAndArraysOfJsonValuesAreWritten) {
    const rt::Value refused[] = {rt::Value(),
                                 rt::nullMarker(),
                                 u"bare"_s,
                                 7,
                                 QVariantMap{{"zone", QVariant::fromValue(QTimeZone::utc())}},
                                 QVariantMap{{"deep", QVariantList{QVariantMap{{"bytes", QByteArray("x")}}}}},
                                 QVariantMap{{"number", std::numeric_limits<double>::quiet_NaN()}},
                                 QVariantList{std::numeric_limits<double>::infinity()}};
    for (const rt::Value &value : refused) {
        EXPECT_TRUE(vlOLUtils::toJSONString(value).isNull()) << value.typeName();
        EXPECT_TRUE(vlOLUtils::toJSONData(value).isNull());
    }
    EXPECT_EQ(vlOLUtils::toJSONString(QVariantMap{}).simplified().remove(u' '), "{}");
}

TEST(Json, WhatIsNotOneJsonValueIsNone) {
    for (const char *text : {"", " ", "{", "[", "1,2", "1 2", "],[", "1],[2", "{},{}", "[1,]", "1,", ",1",
                             "\"open", "{\"a\":}", "{\"a\" 1}", "nul", "'a'", "{a:1}", "\x01"})
        EXPECT_FALSE(parsed(text).isValid()) << text;
    EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionary(QString()).isValid());
    EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionaryWithData(QByteArray("\"\xff\xfe\"")).isValid());
    EXPECT_FALSE(vlOLUtils::toArrayOrNSDictionaryWithData(QByteArray(200'000, '[')).isValid());
}
