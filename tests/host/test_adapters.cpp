// The adapters over host objects: what a missing object, class, member or method gives.
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlECMutableCalendarEvent.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <gtest/gtest.h>

TEST(Adapter, ClassAndMemberAreTestedAtEveryAccess) {
    FakeObject event("ECCalendarEvent", {{"summary", "S"}, {"isOwner", true}});
    FakeObject other("ECMutableCalendarEvent", {{"summary", "M"}, {"isOwner", true}});
    vlECCalendarEvent adapter(&event);
    EXPECT_EQ(adapter.summary(), "S");
    for (rt::Object *object : {static_cast<rt::Object *>(&other), static_cast<rt::Object *>(nullptr)}) {
        adapter.setDelegate(object);
        EXPECT_EQ(adapter.delegate(), object);
        EXPECT_FALSE(adapter.isValidConnection());
        EXPECT_TRUE(adapter.summary().isNull());
        EXPECT_TRUE(adapter.emailAddress().isNull());
        EXPECT_TRUE(adapter.curFromAddress().isNull());
        EXPECT_FALSE(adapter.isSupportVela());
        EXPECT_FALSE(adapter.isValidHostAppointment());
    }
    EXPECT_FALSE(vlDelegateBase(QString(), &event).isValidConnection());
    EXPECT_FALSE(vlDelegateBase("NoSuchClass", &event).isValidConnection());
    // So is what a member takes.
    const vlDelegateBase base("ECMutableCalendarEvent", &other);
    for (const QString &member : {QString(), QString(""), QString("noSuchMember"), QString("setSummary:")})
        EXPECT_FALSE(base.getOLItemID(member).isValid()) << qPrintable(member);
    EXPECT_FALSE(base.getOLItemID("summary", 1).isValid());
}

TEST(Adapter, SurvivesTheDeathOfItsObject) {
    auto event = std::make_unique<FakeObject>("ECCalendarEvent", QVariantMap{{"isOwner", true}});
    const vlECCalendarEvent adapter(event.get());
    EXPECT_TRUE(adapter.isOwner());
    event.reset();
    EXPECT_FALSE(adapter.isValidConnection());
    EXPECT_FALSE(adapter.isOwner());
    EXPECT_EQ(adapter.getVlDuration(), "0");
}

TEST(Event, AddressesAreThoseOfItsAccount) {
    FakeObject from("ECEmailAddress", {{"emailAddress", "from@x"}});
    FakeObject account("ECEmailAccount", {{"emailAddress", "me@x"}});
    FakeObject event("ECCalendarEvent", {{"account", rt::fromObject(&account)}, {"isOwner", true}});
    EXPECT_EQ(vlECCalendarEvent(&event).emailAddress(), "me@x");
    EXPECT_TRUE(vlECCalendarEvent(&event).isValidHostAppointment());
    const QString none = vlECCalendarEvent(&event).curFromAddress();
    EXPECT_TRUE(none.isEmpty() && !none.isNull());
    account.values.insert("fromAddress", rt::fromObject(&from));
    EXPECT_EQ(vlECCalendarEvent(&event).curFromAddress(), "from@x");
}

TEST(Grid, GivesTheControllerWithASelectedEventElseTheLast) {
    FakeObject event("ECCalendarEvent"), stranger("ECEmailAccount");
    FakeObject a("CCGridViewController"), b("CCGridViewController"), c("CCGridViewController");
    FakeObject wrapper("OLCalendarGridViewWrapper");
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

    QWidget window;
    a.values.insert("view", rt::fromWidget(new QWidget(&window)));
    EXPECT_EQ(vlCCGridViewController(&a).gridWindow(), &window);
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
        FakeObject editor(c.className);
        vlOLWordMailEditor(&editor).displayHTMLContent("<p>", false);
        EXPECT_EQ(editor.called, QStringList{c.member});
        EXPECT_EQ(editor.arguments, c.arguments);
    }
}

TEST(Application, OpensANewMeetingOnTheNextTurnWithTheFlagForItsEditor) {
    const platform::TestDesktop desktop = platform::installTestServices();
    QVariantMap &left = platform::services().mainThreadDictionary;
    FakeObject application("ErageAppDelegate");

    vlErageAppDelegate(&application).autoAddVelaToAppointment(rt::Value("no dictionary"));
    EXPECT_EQ(left, (QVariantMap{{keyFlagAutoAddToVlMeeting, keyFlagAutoAddToVlMeeting}}));
    EXPECT_EQ(desktop.workspace->activations, 1);
    EXPECT_TRUE(application.called.isEmpty());
    desktop.runLoop->advance(0);
    EXPECT_EQ(application.called, QStringList{"newCalendarMeeting:"});
    EXPECT_FALSE(application.arguments.first().isValid());

    left.clear();
    const QVariantMap argument{{"pacAccountNo", 2}};
    vlErageAppDelegate(&application).autoAddPACToAppointment(argument);
    EXPECT_EQ(left.value(keyFlagAutoAddToPACMeeting), keyFlagAutoAddToPACMeeting);
    EXPECT_EQ(left.value(keyFlagVlMeetingArgument), argument);

    auto dying = std::make_unique<FakeObject>("ErageAppDelegate");
    vlErageAppDelegate(dying.get()).autoAddVelaToAppointment({});
    dying.reset();
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
}
