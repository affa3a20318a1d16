#include "platform/services/TestServices.h"
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlECMutableCalendarEvent.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "tests/host/HostObjects.h"

#include <gtest/gtest.h>

TEST(Adapter, OnNothingOrOnAnotherClassYieldsNothing) {
    HostObject date("OLCalendarDate", {{"summary", "S"}});
    for (rt::Object *object : {static_cast<rt::Object *>(nullptr), static_cast<rt::Object *>(&date)}) {
        const vlECCalendarEvent event(object);
        EXPECT_FALSE(event.isValidConnection());
        EXPECT_EQ(event.delegate(), nullptr);
        EXPECT_TRUE(event.summary().isNull());
        EXPECT_TRUE(event.emailAddress().isNull());
        EXPECT_TRUE(event.curFromAddress().isNull());
        EXPECT_FALSE(event.isSupportVela());
        EXPECT_FALSE(event.isValidHostAppointment());
    }
}

TEST(Adapter, ClassIsTestedAtEveryAccessAlsoAfterItWasPointedElsewhere) {
    HostObject event("ECCalendarEvent", {{"summary", "S"}});
    HostObject other("ECMutableCalendarEvent", {{"summary", "M"}});
    vlECCalendarEvent adapter(nullptr);
    adapter.setDelegate(&event);
    EXPECT_EQ(adapter.summary(), "S");
    adapter.setDelegate(&other);
    EXPECT_EQ(adapter.delegate(), &other);
    EXPECT_FALSE(adapter.isValidConnection());
    EXPECT_TRUE(adapter.summary().isNull());
    EXPECT_FALSE(vlDelegateBase(QString(), &event).isValidConnection());
    EXPECT_FALSE(vlDelegateBase("NoSuchClass", &event).isValidConnection());
}

TEST(Adapter, AMemberThatIsMissingOrTakesOtherArgumentsYieldsNothing) {
    HostObject record("ECMutableCalendarEvent", {{"location", "Room"}});
    const vlDelegateBase base("ECMutableCalendarEvent", &record);
    EXPECT_EQ(base.getOLItemID("location"), "Room");
    for (const QString &member : {QString(), QString(""), QString("noSuchMember"), QString("setLocation:")})
        EXPECT_FALSE(base.getOLItemID(member).isValid()) << qPrintable(member);
    EXPECT_FALSE(base.getOLItemID("location", 1).isValid());
    EXPECT_FALSE(base.getOLItemID("setLocation:", 1, 2).isValid());
    EXPECT_TRUE(record.calls.isEmpty());
    vlECMutableCalendarEvent(&record).setLocation("Hall");
    EXPECT_EQ(vlECMutableCalendarEvent(&record).location(), "Hall");
}

TEST(Adapter, SurvivesTheDeathOfItsObject) {
    auto event = std::make_unique<HostObject>("ECCalendarEvent", QVariantMap{{"isOwner", true}});
    const vlECCalendarEvent adapter(event.get());
    EXPECT_TRUE(adapter.isOwner());
    event.reset();
    EXPECT_FALSE(adapter.isValidConnection());
    EXPECT_FALSE(adapter.isOwner());
    EXPECT_EQ(adapter.getVlDuration(), "0");
}

TEST(Event, IsSupportedWhenOwnedAndNotASingleOccurrence) {
    const struct {
        bool owner, occurrence, exception, supported;
    } cases[] = {{true, false, false, true},
                 {false, false, false, false},
                 {true, true, false, false},
                 {true, false, true, false}};
    for (const auto &c : cases) {
        HostObject event(
            "ECCalendarEvent",
            {{"isOwner", c.owner}, {"isOccurrence", c.occurrence}, {"isModifiedException", c.exception}});
        EXPECT_EQ(vlECCalendarEvent(&event).isSupportVela(), c.supported);
        EXPECT_FALSE(vlECCalendarEvent(&event).isValidHostAppointment()); // no account
    }
}

TEST(Event, AddressesAreThoseOfItsAccount) {
    HostObject from("ECEmailAddress", {{"emailAddress", "from@x"}});
    HostObject account("ECEmailAccount", {{"emailAddress", "me@x"}});
    HostObject event("ECCalendarEvent", {{"account", rt::fromObject(&account)}, {"isOwner", true}});
    EXPECT_EQ(vlECCalendarEvent(&event).emailAddress(), "me@x");
    EXPECT_TRUE(vlECCalendarEvent(&event).isValidHostAppointment());
    const QString none = vlECCalendarEvent(&event).curFromAddress();
    EXPECT_TRUE(none.isEmpty() && !none.isNull());
    account.values.insert("fromAddress", rt::fromObject(&from));
    EXPECT_EQ(vlECCalendarEvent(&event).curFromAddress(), "from@x");
}

TEST(Grid, GivesTheControllerWithASelectedEventElseTheLast) {
    HostObject event("ECCalendarEvent"), stranger("ECEmailAccount");
    HostObject a("CCGridViewController"), b("CCGridViewController"), c("CCGridViewController");
    HostObject wrapper("OLCalendarGridViewWrapper");
    const vlOLCalendarGridViewWrapper adapter(&wrapper);
    EXPECT_EQ(adapter.gridViewController(), nullptr);

    QVariantList all;
    for (rt::Object *object : {static_cast<rt::Object *>(&a), static_cast<rt::Object *>(&b),
                               static_cast<rt::Object *>(&c), static_cast<rt::Object *>(&stranger)})
        all.append(rt::fromObject(object));
    all.append(rt::nullMarker());
    wrapper.values.insert("gridViewControllers", all);
    EXPECT_EQ(adapter.gridViewController(), &c);
    b.values.insert("selectedEvent", rt::fromObject(&event));
    EXPECT_EQ(adapter.gridViewController(), &b);
    EXPECT_EQ(vlCCGridViewController(adapter.gridViewController()).ecCalendarEvent(), &event);
    wrapper.values.insert("gridViewController", rt::fromObject(&a));
    EXPECT_EQ(adapter.gridViewController(), &a);
}

TEST(Grid, ItsWindowIsTheOneOfItsView) {
    QWidget window;
    auto *view = new QWidget(&window);
    HostObject controller("CCGridViewController", {{"view", rt::fromWidget(view)}});
    EXPECT_EQ(vlCCGridViewController(&controller).gridWindow(), &window);
    EXPECT_EQ(vlCCGridViewController(nullptr).gridWindow(), nullptr);
}

TEST(WordEditor, ShowsHtmlThroughTheRichestMethodOfTheHost) {
    const struct {
        QString className, member;
        QVariantList arguments;
    } cases[] = {
        {"OLWordMailEditor", "displayHTMLContent:readOnly:", {"<p>", false}},
        {"SigningWordEditor", "displayHTMLContent:readOnly:signatureEditor:", {"<p>", false, true}},
        {"ActivatingWordEditor",
         "displayHTMLContent:readOnly:signatureEditor:activateEditor:",
         {"<p>", false, true, true}},
    };
    for (const auto &c : cases) {
        HostObject editor(c.className);
        vlOLWordMailEditor(&editor).displayHTMLContent("<p>", false);
        ASSERT_EQ(editor.calls.size(), 1);
        EXPECT_EQ(editor.calls.first().member, c.member);
        EXPECT_EQ(editor.calls.first().arguments, c.arguments);
    }
}

TEST(Application, OpensANewMeetingOnTheNextTurnWithTheFlagForItsEditor) {
    const platform::TestDesktop desktop = platform::installTestServices();
    QVariantMap &left = platform::services().mainThreadDictionary;
    HostObject application("ErageAppDelegate");

    vlErageAppDelegate(&application).autoAddVelaToAppointment(rt::Value("no dictionary"));
    EXPECT_EQ(left, (QVariantMap{{keyFlagAutoAddToVlMeeting, keyFlagAutoAddToVlMeeting}}));
    EXPECT_EQ(desktop.workspace->activations, 1);
    EXPECT_TRUE(application.calls.isEmpty());
    desktop.runLoop->advance(0);
    ASSERT_EQ(application.calls.size(), 1);
    EXPECT_FALSE(application.calls.first().arguments.first().isValid());

    left.clear();
    const QVariantMap argument{{"pacAccountNo", 2}};
    vlErageAppDelegate(&application).autoAddPACToAppointment(argument);
    EXPECT_EQ(left.value(keyFlagAutoAddToPACMeeting), keyFlagAutoAddToPACMeeting);
    EXPECT_EQ(left.value(keyFlagVlMeetingArgument), argument);
}

TEST(Application, NothingOpensWhenTheDelegateIsGoneByThen) {
    const platform::TestDesktop desktop = platform::installTestServices();
    auto application = std::make_unique<HostObject>("ErageAppDelegate");
    vlErageAppDelegate(application.get()).autoAddVelaToAppointment({});
    application.reset();
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
}
