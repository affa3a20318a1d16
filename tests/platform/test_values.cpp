// What is asked of values of any kind.
#include "platform/runtime/Runtime.h"
#include "platform/runtime/Value.h"

#include <QLabel>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr qint64 lowest = std::numeric_limits<qint64>::min();
constexpr qint64 highest = std::numeric_limits<qint64>::max();

TEST(Values, TruthAndIntegerFollowOneTable) {
    const struct {
        const char *name;
        rt::Value value;
        bool truth;
        qint64 integer;
    } readings[] = {
        {"no value", {}, false, 0},
        {"null marker", rt::nullMarker(), false, 0},
        {"true", true, true, 1},
        {"int", -3, true, -3},
        {"byte", QVariant::fromValue<quint8>(7), true, 7},
        {"wide", highest, true, highest},
        {"fraction", 0.5, true, 0},
        {"negative fraction", -2.9, true, -2},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), false, 0},
        {"infinity", std::numeric_limits<double>::infinity(), true, highest},
        {"huge", -1e300, true, lowest},
        {"empty text", u""_s, false, 0},
        {"YES", u"YES"_s, true, 0},
        {"True", u"True"_s, true, 0},
        {"NO", u"NO"_s, false, 0},
        {"1", u"1"_s, true, 1},
        {"leading integer", u" -12abc3"_s, true, -12},
        {"sign alone", u"-"_s, false, 0},
        {"too long", u"99999999999999999999"_s, true, highest},
        {"too low", u"-99999999999999999999"_s, true, lowest},
        {"dictionary", QVariantMap{{u"a"_s, 1}}, false, 0},
        {"bytes", QByteArray("1"), false, 0},
    };
    for (const auto &reading : readings) {
        EXPECT_EQ(rt::boolValue(reading.value), reading.truth) << reading.name;
        EXPECT_EQ(rt::integerValue(reading.value), reading.integer) << reading.name;
    }
}

TEST(Values, FourKindsOfNothingAreToldApart) {
    for (const rt::Value &nothing :
         {rt::Value(), rt::nullMarker(), rt::Value(QString()), QVariant::fromValue<QWidget *>(nullptr),
          QVariant::fromValue<rt::Object *>(nullptr)}) {
        EXPECT_FALSE(rt::isPresent(nothing)) << nothing.typeName();
        EXPECT_EQ(rt::isNullMarker(nothing), nothing.typeId() == QMetaType::Nullptr);
    }
    for (const rt::Value &value : {rt::Value(u""_s), rt::Value(false), rt::Value(QVariantMap())})
        EXPECT_TRUE(rt::isPresent(value)) << value.typeName();
}

TEST(Values, AnotherKindOfValueIsNoTextNumberOrCollection) {
    EXPECT_EQ(rt::textValue(u"a"_s), u"a"_s);
    EXPECT_FALSE(rt::textValue(u""_s).isNull());
    for (const rt::Value &other : {rt::Value(5), rt::Value(QByteArray("a")), rt::Value()})
        EXPECT_TRUE(rt::textValue(other).isNull()) << other.typeName();
    EXPECT_DOUBLE_EQ(rt::doubleValue(u" 2.5 "_s), 2.5);
    EXPECT_DOUBLE_EQ(rt::doubleValue(true), 1.0);
    for (const rt::Value &other : {rt::Value(u"nan"_s), rt::Value(std::numeric_limits<double>::quiet_NaN()),
                                   rt::Value(QVariantList())})
        EXPECT_DOUBLE_EQ(rt::doubleValue(other), 0.0) << other.typeName();
    EXPECT_EQ(rt::mapValue(QVariantMap{{u"a"_s, 1}}).size(), 1);
    EXPECT_EQ(rt::listValue(QVariantList{1, 2}).size(), 2);
    EXPECT_TRUE(rt::mapValue(u"a"_s).isEmpty());
    EXPECT_TRUE(rt::listValue(u"ab"_s).isEmpty());
}

class ViewObject : public QLabel, public rt::Object {
public:
    ViewObject()
        : rt::Object(rt::defineClass(u"ValuesTestView"_s)) {}
};

TEST(Values, AViewThatIsAnObjectIsReadAsBoth) {
    ViewObject view;
    const rt::Value asObject = rt::fromObject(&view);
    const rt::Value asWidget = rt::fromWidget(&view);
    for (const rt::Value &value : {asObject, asWidget, rt::Value::fromValue<QLabel *>(&view)}) {
        EXPECT_EQ(rt::objectValue(value), static_cast<rt::Object *>(&view));
        EXPECT_EQ(rt::widgetValue(value), static_cast<QWidget *>(&view));
    }
    for (const rt::Value &value : {rt::Value(), rt::nullMarker(), rt::Value(u"1f"_s), rt::Value(5)}) {
        EXPECT_EQ(rt::objectValue(value), nullptr);
        EXPECT_EQ(rt::widgetValue(value), nullptr);
    }
    EXPECT_FALSE(rt::fromObject(nullptr).isValid() || rt::fromWidget(nullptr).isValid());
    QLabel label;
    EXPECT_EQ(rt::objectValue(rt::fromWidget(&label)), nullptr);
    rt::Object object(rt::defineClass(u"ValuesTestObject"_s));
    EXPECT_EQ(rt::widgetValue(rt::fromObject(&object)), nullptr);
}

TEST(Values, AnIdentifierIsTheLowHalfOfTheAddressInLowerCaseHexadecimal) {
    const auto *widget = reinterpret_cast<const QWidget *>(quintptr(0x1'0000'0ABC));
    EXPECT_EQ(rt::identifier(widget), u"abc"_s);
    EXPECT_TRUE(rt::identifier(static_cast<const QWidget *>(nullptr)).isNull());
    EXPECT_TRUE(rt::identifier(static_cast<const rt::Object *>(nullptr)).isNull());
}

} // namespace
