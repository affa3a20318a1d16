// The object runtime: values, classes by name, calls by selector, exchanged methods, weak references.
#include "platform/runtime/Loading.h"
#include "platform/runtime/Runtime.h"

#include <QCoreApplication>
#include <QLabel>
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

class ViewObject : public QLabel, public Object {
public:
    ViewObject()
        : Object(rt::defineClass(u"RuntimeTestView"_s)) {}
};

TEST(Values, OfAViewThatIsAnObjectReadAsBoth) {
    ViewObject view;
    for (const Value &value :
         {rt::fromObject(&view), rt::fromWidget(&view), Value::fromValue<QLabel *>(&view)}) {
        EXPECT_EQ(rt::objectValue(value), static_cast<Object *>(&view));
        EXPECT_EQ(rt::widgetValue(value), static_cast<QWidget *>(&view));
    }
    QLabel label;
    Object object(rt::defineClass(u"RuntimeTestObject"_s));
    for (const Value &value : {Value(), Value(u"1f"_s), rt::fromWidget(&label), rt::fromWidget(nullptr)})
        EXPECT_EQ(rt::objectValue(value), nullptr);
    for (const Value &value : {Value(), Value(u"1f"_s), rt::fromObject(&object), rt::fromObject(nullptr)})
        EXPECT_EQ(rt::widgetValue(value), nullptr);
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
Value nameOfCommand(Object *, Selector command, Args) {
    return command.name();
}
Value beyondTheLast(Object *, Selector, Args arguments) {
    return arguments[arguments.count()];
}

// A root class, a parent class with "number" and "other", and a child class that inherits both.
class Family : public testing::Test {
protected:
    Family() {
        const QString stem = u"Family%1"_s.arg(++s_families);
        root = rt::defineClass(stem + u"Root"_s);
        parent = rt::defineClass(stem + u"Parent"_s, root);
        child = rt::defineClass(stem + u"Child"_s, parent);
        rt::addMethod(parent, "number", answer<1>, "q@:");
        rt::addMethod(parent, "other", answer<2>, "q@:");
    }

    static qint64 ask(Object *object, const char *selector) {
        return rt::integerValue(rt::send(object, selector));
    }

    Class *root = nullptr;
    Class *parent = nullptr;
    Class *child = nullptr;

private:
    static inline int s_families = 0;
};

TEST_F(Family, ANameIsTakenOnce) {
    EXPECT_EQ(rt::defineClass(parent->name(), root), parent);
    EXPECT_EQ(rt::defineClass(parent->name(), nullptr), nullptr);
    EXPECT_EQ(rt::defineClass(QString()), nullptr);
    EXPECT_EQ(rt::classNamed(parent->name()), parent);
    EXPECT_EQ(rt::metaclassNamed(u"NoSuchClass"_s), nullptr);
}

TEST_F(Family, AnExchangeAffectsBothMethodsAndWhatInheritsThem) {
    Object one(parent);
    Object two(child);
    EXPECT_EQ(ask(&two, "number"), 1); // fills the cache of the subclass
    EXPECT_TRUE(rt::exchangeImplementations(rt::instanceMethod(child, "number"),
                                            rt::instanceMethod(parent, "other")));
    EXPECT_FALSE(rt::exchangeImplementations(rt::instanceMethod(parent, "number"), nullptr));
    EXPECT_FALSE(rt::exchangeImplementations(nullptr, rt::instanceMethod(parent, "number")));
    for (Object *object : {&one, &two}) {
        EXPECT_EQ(ask(object, "number"), 2);
        EXPECT_EQ(ask(object, "other"), 1);
    }
    rt::addMethod(child, "number", answer<10>, "q@:");
    EXPECT_EQ(ask(&two, "number"), 10) << "an override is not exchanged";
    EXPECT_EQ(ask(&one, "number"), 2);
    EXPECT_TRUE(rt::isKindOf(&two, child) && rt::isKindOf(&two, root));
    EXPECT_FALSE(rt::isKindOf(&one, child));
}

TEST_F(Family, ClassMethodsAreExchangedThroughTheMetaclass) {
    rt::addMethod(parent->metaclass(), "shared", answer<3>, "q@:");
    rt::addMethod(rt::metaclassNamed(parent->name()), "mine", answer<4>, "q@:");
    EXPECT_EQ(rt::instanceMethod(parent, "shared"), nullptr);
    EXPECT_EQ(ask(child, "shared"), 3);
    EXPECT_TRUE(
        rt::exchangeImplementations(rt::classMethod(child, "shared"), rt::classMethod(parent, "mine")));
    EXPECT_EQ(ask(child, "shared"), 4);
    EXPECT_EQ(ask(parent, "mine"), 3);
}

TEST_F(Family, AMethodIsAddedOnceAndFoundAlsoAfterCalls) {
    Object two(child);
    EXPECT_FALSE(rt::send(&two, "late").isValid());
    EXPECT_EQ(ask(&two, "number"), 1);
    EXPECT_TRUE(rt::addMethod(root, "late", answer<7>, "q@:"));
    EXPECT_TRUE(rt::addMethod(child, "number", answer<8>, "q@:"));
    EXPECT_FALSE(rt::addMethod(child, "number", answer<9>, "q@:"));
    EXPECT_FALSE(rt::addMethod(nullptr, "number", answer<9>, "q@:"));
    EXPECT_FALSE(rt::addMethod(parent, "", answer<9>, "q@:"));
    EXPECT_FALSE(rt::addMethod(parent, "new", nullptr, "q@:"));
    EXPECT_EQ(ask(&two, "late"), 7);
    EXPECT_EQ(ask(&two, "number"), 8);
}

TEST_F(Family, ManySelectorsKeepTheirOwnMethods) {
    // More than a class's cache has places.
    for (int i = 0; i < 300; ++i)
        rt::addMethod(root, Selector(u"name%1"_s.arg(i)), nameOfCommand, "@@:");
    Object two(child);
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 300; ++i)
            EXPECT_EQ(rt::textValue(rt::send(&two, Selector(u"name%1"_s.arg(i)))), u"name%1"_s.arg(i));
}

TEST_F(Family, ACallWithTheWrongNumberOfArgumentsIsNotMade) {
    rt::addMethod(root, "take:and:", count, "q@:@@");
    rt::addMethod(root, "beyond:", beyondTheLast, "@@:@");
    Object one(root);
    EXPECT_EQ(rt::integerValue(rt::send(&one, "take:and:", 1, 2)), 2);
    for (const Value &answer :
         {rt::send(&one, "take:and:", 1), rt::send(&one, "take:and:"), rt::send(&one, "take:and:", 1, 2, 3),
          rt::send(&one, "beyond:", 1), Args()[-1]})
        EXPECT_FALSE(answer.isValid());
}

TEST_F(Family, AMissingObjectClassOrSelectorGivesNothing) {
    Object one(parent);
    EXPECT_FALSE(rt::send(nullptr, "number").isValid());
    for (const Selector none : {Selector(), Selector(""), Selector(static_cast<const char *>(nullptr))})
        EXPECT_FALSE(rt::respondsTo(&one, none) || rt::send(&one, none).isValid());
    EXPECT_FALSE(rt::send(parent->metaclass(), "number").isValid());
    EXPECT_FALSE(rt::respondsTo(nullptr, "number"));
    EXPECT_FALSE(rt::isKindOf(nullptr, parent) || rt::isKindOf(&one, nullptr));
    EXPECT_EQ(rt::instanceMethod(nullptr, "number"), nullptr);
    EXPECT_EQ(rt::classMethod(nullptr, "number"), nullptr);
    EXPECT_EQ(rt::classMethod(parent->metaclass(), "number"), nullptr);
}

// --- lives of objects

TEST(WeakReferences, ToAViewBecomeNoneHoweverItIsDeleted) {
    QWidget window;
    auto *view = new ViewObject;
    view->setParent(&window);
    const rt::Weak<ViewObject> asView(view);
    const rt::Weak<> asObject(view);
    EXPECT_EQ(asView.get(), view);
    EXPECT_FALSE(rt::Weak<>() || rt::Weak<>(nullptr));
    QObject::connect(view, &QObject::destroyed, &window, [asView] { EXPECT_EQ(asView.get(), nullptr); });
    delete static_cast<QWidget *>(view);
    EXPECT_EQ(asView.get(), nullptr);
    EXPECT_EQ(asObject.get(), nullptr);
}

TEST(Temporaries, AreDeletedWithOtherDeferredDeletions) {
    EXPECT_EQ(rt::temporary(std::unique_ptr<Object>()), nullptr);
    const rt::Weak<> temporary(rt::temporary(std::make_unique<Object>(rt::defineClass(u"RuntimeTest"_s))));
    EXPECT_TRUE(temporary);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(temporary);
}

TEST(Loading, AMissingLibraryIsAFailureWithASentence) {
    QString error;
    EXPECT_FALSE(rt::loadImage(u"/nonexistent/library.so"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
