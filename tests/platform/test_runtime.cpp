// The object runtime: classes by name, calls by selector, exchanged methods, weak references.
#include "platform/runtime/Loading.h"
#include "platform/runtime/Runtime.h"

#include <QEventLoop>
#include <QLabel>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using rt::Args;
using rt::Class;
using rt::Object;
using rt::Selector;
using rt::Value;

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

// A root, a class in the middle with "number" and "other", and a subclass that inherits both.
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
    EXPECT_EQ(rt::classNamed(u"NoSuchClass"_s), nullptr);
    EXPECT_EQ(rt::metaclassNamed(u"NoSuchClass"_s), nullptr);
}

TEST_F(Family, ASubclassInheritsAndOverrides) {
    rt::addMethod(child, "other", answer<20>, "q@:");
    Object one(parent), two(child);
    EXPECT_EQ(ask(&two, "number"), 1);
    EXPECT_EQ(ask(&two, "other"), 20);
    EXPECT_EQ(ask(&one, "other"), 2);
    EXPECT_TRUE(rt::isKindOf(&two, child) && rt::isKindOf(&two, root));
    EXPECT_FALSE(rt::isKindOf(&one, child));
}

TEST_F(Family, AnExchangeIsSeenFromBothSidesAndByWhatInherits) {
    Object one(parent);
    Object two(child);
    EXPECT_EQ(ask(&two, "number"), 1); // fills the cache of the subclass
    EXPECT_TRUE(rt::exchangeImplementations(rt::instanceMethod(child, Selector("number")),
                                            rt::instanceMethod(parent, Selector("other"))));
    for (Object *object : {&one, &two}) {
        EXPECT_EQ(ask(object, "number"), 2);
        EXPECT_EQ(ask(object, "other"), 1);
    }
    EXPECT_FALSE(rt::exchangeImplementations(rt::instanceMethod(parent, Selector("number")), nullptr));
    EXPECT_FALSE(rt::exchangeImplementations(nullptr, rt::instanceMethod(parent, Selector("number"))));
    EXPECT_EQ(ask(&two, "number"), 2);
    rt::addMethod(child, "number", answer<10>, "q@:");
    EXPECT_EQ(ask(&two, "number"), 10) << "an override is not exchanged";
}

TEST_F(Family, ClassMethodsAreExchangedThroughTheMetaclass) {
    rt::addMethod(parent->metaclass(), "shared", answer<3>, "q@:");
    rt::addMethod(rt::metaclassNamed(parent->name()), "mine", answer<4>, "q@:");
    EXPECT_EQ(rt::instanceMethod(parent, Selector("shared")), nullptr);
    EXPECT_EQ(ask(child, "shared"), 3);
    EXPECT_TRUE(rt::exchangeImplementations(rt::classMethod(child, Selector("shared")),
                                            rt::classMethod(parent, Selector("mine"))));
    EXPECT_EQ(ask(child, "shared"), 4);
    EXPECT_EQ(ask(parent, "mine"), 3);
    Object one(parent);
    EXPECT_FALSE(rt::respondsTo(&one, Selector("shared")));
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
    for (const rt::Value &answer :
         {rt::send(&one, "take:and:", 1), rt::send(&one, "take:and:"), rt::send(&one, "take:and:", 1, 2, 3),
          rt::send(&one, "beyond:", 1), Args()[-1]})
        EXPECT_FALSE(answer.isValid());
}

TEST_F(Family, NothingIsAskedOfNothing) {
    Object one(parent);
    EXPECT_FALSE(rt::send(nullptr, "number").isValid());
    EXPECT_FALSE(rt::send(&one, Selector()).isValid());
    EXPECT_FALSE(rt::send(parent->metaclass(), "number").isValid());
    EXPECT_FALSE(rt::respondsTo(nullptr, Selector("number")) || rt::respondsTo(&one, Selector()));
    EXPECT_FALSE(rt::isKindOf(nullptr, parent) || rt::isKindOf(&one, nullptr));
    EXPECT_EQ(rt::instanceMethod(nullptr, Selector("number")), nullptr);
    EXPECT_EQ(rt::classMethod(nullptr, Selector("number")), nullptr);
    EXPECT_EQ(rt::classMethod(parent->metaclass(), Selector("number")), nullptr);
}

TEST(Selectors, AreEqualWhenTheirNamesAre) {
    EXPECT_EQ(Selector("take:and:"), Selector(u"take:and:"_s));
    EXPECT_FALSE(Selector("take:") == Selector("take"));
    EXPECT_EQ(Selector("take:and:").argumentCount(), 2);
    EXPECT_EQ(Selector(u"größe:"_s).name(), u"größe:"_s);
    for (const Selector none :
         {Selector(), Selector(""), Selector(QString()), Selector(static_cast<const char *>(nullptr))})
        EXPECT_TRUE(none.isNull() && none.name().isEmpty() && none.argumentCount() == 0);
}

class ViewObject : public QLabel, public Object {
public:
    ViewObject()
        : Object(rt::defineClass(u"RuntimeTestView"_s)) {}
};

TEST(WeakReferences, TurnToNoneWhenTheirObjectDies) {
    auto object = std::make_unique<Object>(rt::defineClass(u"RuntimeTestObject"_s));
    const rt::Weak<> first(object.get());
    const rt::Weak<> copy = first;
    EXPECT_EQ(copy.get(), object.get());
    object.reset();
    EXPECT_FALSE(first || copy || rt::Weak<>() || rt::Weak<>(nullptr));
}

TEST(WeakReferences, OfAViewTurnToNoneHoweverItDies) {
    QWidget window;
    auto *view = new ViewObject;
    view->setParent(&window);
    const rt::Weak<ViewObject> asView(view);
    const rt::Weak<> asObject(view);
    EXPECT_EQ(asView.get(), view);
    QObject::connect(view, &QObject::destroyed, &window, [asView] { EXPECT_EQ(asView.get(), nullptr); });
    delete static_cast<QWidget *>(view);
    EXPECT_EQ(asView.get(), nullptr);
    EXPECT_EQ(asObject.get(), nullptr);
}

rt::Weak<> makeTemporary() {
    return {rt::temporary(std::make_unique<Object>(rt::defineClass(u"RuntimeTestObject"_s)))};
}

class Maker : public Object {
public:
    explicit Maker(rt::Weak<> &made)
        : Object(rt::defineClass(u"RuntimeTestObject"_s))
        , m_made(made) {}
    ~Maker() override { m_made = makeTemporary(); }

private:
    rt::Weak<> &m_made;
};

TEST(Temporaries, LiveUntilTheyAreDrainedAndMayMakeOthersWhenTheyDie) {
    EXPECT_EQ(rt::temporary(std::unique_ptr<Object>()), nullptr);
    rt::Weak<> made;
    const rt::Weak<> maker(rt::temporary(std::make_unique<Maker>(made)));
    const rt::Weak<> other = makeTemporary();
    EXPECT_TRUE(maker && other);
    rt::drainTemporaries();
    EXPECT_TRUE(made);
    EXPECT_FALSE(maker || other);
    rt::drainTemporaries();
    EXPECT_FALSE(made);
}

TEST(Temporaries, OutliveALoopInsideTheirTurnAndDieAfterIt) {
    QEventLoop outer;
    rt::Weak<> temporary;
    bool aliveAfterInner = false;
    QTimer::singleShot(0, &outer, [&] {
        temporary = makeTemporary();
        QEventLoop inner;
        QTimer::singleShot(0, &inner, [&inner] { QTimer::singleShot(0, &inner, &QEventLoop::quit); });
        inner.exec();
        aliveAfterInner = bool(temporary);
        QTimer::singleShot(0, &outer, [&outer] { QTimer::singleShot(0, &outer, &QEventLoop::quit); });
    });
    outer.exec();
    EXPECT_TRUE(aliveAfterInner);
    EXPECT_FALSE(temporary);
}

TEST(Loading, AMissingLibraryIsAFailureWithASentence) {
    QString error;
    EXPECT_FALSE(rt::loadImage(u"/nonexistent/library.so"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
