// The object runtime: values, calls by selector, exchanged methods.
#include "platform/runtime/Loading.h"
#include "platform/runtime/Runtime.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using rt::Args;
using rt::Class;
using rt::Object;
using rt::Selector;
using rt::Value;

// --- values

TEST(Values, AreReadByOneTable) {
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    const struct {
        const char *name;
        Value value;
        bool isPresent;
        bool truth;
        qint64 integer;
    } readings[] = {
        {"no value", {}, false, false, 0},
        {"null marker", rt::nullMarker(), false, false, 0},
        {"null text", QString(), false, false, 0},
        {"null object", Value::fromValue<Object *>(nullptr), false, false, 0},
        {"false", false, true, false, 0},
        {"byte", QVariant::fromValue<quint8>(7), true, true, 7},
        {"negative fraction", -2.9, true, true, -2},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), true, false, 0},
        {"infinity", std::numeric_limits<double>::infinity(), true, true, highest},
        {"huge", -1e300, true, true, std::numeric_limits<qint64>::min()},
        {"empty text", u""_s, true, false, 0},
        {"Yes", u"Yes"_s, true, true, 0},
        {"NO", u"NO"_s, true, false, 0},
        {"leading integer", u" -12abc3"_s, true, true, -12},
        {"sign alone", u"-"_s, true, false, 0},
        {"too long", u"99999999999999999999"_s, true, true, highest},
        {"dictionary", QVariantMap{{u"a"_s, 1}}, true, false, 0},
    };
    for (const auto &reading : readings) {
        EXPECT_EQ(rt::isPresent(reading.value), reading.isPresent) << reading.name;
        EXPECT_EQ(rt::boolValue(reading.value), reading.truth) << reading.name;
        EXPECT_EQ(rt::integerValue(reading.value), reading.integer) << reading.name;
    }
    EXPECT_DOUBLE_EQ(rt::doubleValue(u" 2.5 "_s), 2.5);
    EXPECT_DOUBLE_EQ(rt::doubleValue(u"nan"_s), 0.0);
    EXPECT_DOUBLE_EQ(rt::doubleValue(QByteArray("1")), 0.0);
    EXPECT_TRUE(rt::textValue(5).isNull()) << "a number is not converted to a text";
    EXPECT_TRUE(rt::listValue(u"ab"_s).isEmpty()) << "a text is not a list of characters";
}

TEST(Values, AnIdentifierIsTheLowHalfOfTheAddressInLowerCaseHexadecimal) {
    EXPECT_EQ(rt::identifier(reinterpret_cast<const QWidget *>(quintptr(0x1'0000'0ABC))), u"abc"_s);
    EXPECT_TRUE(rt::identifier(static_cast<const Object *>(nullptr)).isNull());
}

// --- classes and calls

template<int number>
Value answer(Object *, Selector, Args) {
    return number;
}
Value count(Object *, Selector, Args arguments) {
    return arguments.count();
}
qint64 ask(Object &object, const char *selector) {
    return rt::integerValue(rt::send(&object, selector));
}

TEST(Classes, AnExchangeAffectsBothMethodsAndWhatInheritsThem) {
    Class *parent = rt::defineClass(u"RuntimeTestParent"_s);
    Class *child = rt::defineClass(u"RuntimeTestChild"_s, parent);
    rt::addMethod(parent, "number", answer<1>, "q@:");
    rt::addMethod(parent, "other", answer<2>, "q@:");
    Object one(parent);
    Object two(child);
    EXPECT_EQ(ask(two, "number"), 1); // fills the cache of the subclass
    EXPECT_TRUE(rt::exchangeImplementations(rt::instanceMethod(child, "number"),
                                            rt::instanceMethod(parent, "other")));
    EXPECT_FALSE(rt::exchangeImplementations(rt::instanceMethod(parent, "number"), nullptr));
    EXPECT_FALSE(rt::exchangeImplementations(nullptr, rt::instanceMethod(parent, "number")));
    for (Object *object : {&one, &two}) {
        EXPECT_EQ(ask(*object, "number"), 2);
        EXPECT_EQ(ask(*object, "other"), 1);
    }
    rt::addMethod(child, "number", answer<10>, "q@:");
    EXPECT_FALSE(rt::addMethod(child, "number", answer<11>, "q@:")) << "there is one";
    EXPECT_EQ(ask(two, "number"), 10) << "an override is not exchanged";
    EXPECT_EQ(ask(one, "number"), 2);
    rt::addMethod(parent->metaclass(), "shared", answer<3>, "q@:");
    EXPECT_EQ(ask(*child, "shared"), 3) << "class methods are inherited, too";
    EXPECT_TRUE(rt::isKindOf(&two, child) && rt::isKindOf(&two, parent));
    EXPECT_FALSE(rt::isKindOf(&one, child));
}

TEST(Calls, ThatCannotBeMadeGiveNothing) {
    Object object(rt::defineClass(u"RuntimeTestObject"_s));
    rt::addMethod(object.isa(), "take:and:", count, "q@:@@");
    EXPECT_EQ(rt::integerValue(rt::send(&object, "take:and:", 1, 2)), 2);
    for (const Value &answer :
         {rt::send(&object, "take:and:", 1), rt::send(&object, "take:and:", 1, 2, 3),
          rt::send(&object, "none"), rt::send(&object, Selector()), rt::send(nullptr, "none"),
          rt::send(object.isa()->metaclass(), "none"), Args()[-1]})
        EXPECT_FALSE(answer.isValid());
}

TEST(Loading, AMissingLibraryIsAFailureWithASentence) {
    QString error;
    EXPECT_FALSE(rt::loadImage(u"/nonexistent/library.so"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
