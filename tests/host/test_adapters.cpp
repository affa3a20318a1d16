// The adapters over host objects, which may lack a class, a member or a method, or go away.
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

// An open editor with an appointment of the user.
struct OpenEditor {
    FakeAppointment event;
    FakeEditor editor{event};
};

} // namespace

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
        EXPECT_FALSE(adapter.isSupportVela());
        EXPECT_FALSE(adapter.isValidHostAppointment());
    }
    EXPECT_FALSE(vlDelegateBase(QString(), &event).isValidConnection());
    EXPECT_FALSE(vlDelegateBase("NoSuchClass", &event).isValidConnection());
    const vlDelegateBase base("ECMutableCalendarEvent", &other);
    for (const QString &member : {QString(), QString(""), QString("noSuchMember"), QString("setSummary:")})
        EXPECT_FALSE(base.getOLItemID(member).isValid()) << qPrintable(member);
    EXPECT_FALSE(base.getOLItemID("summary", 1).isValid());
}

TEST(Adapter, SurvivesTheDeathOfItsObject) {
    auto open = std::make_unique<OpenEditor>();
    const vlECCalendarEvent event(&open->event);
    vlERCalendarEventEditorViewController editor(&open->editor);
    open->editor.pends("summary", "Typed");
    EXPECT_TRUE(event.isOwner());
    open.reset();
    EXPECT_FALSE(event.isValidConnection() || event.isOwner());
    EXPECT_EQ(event.getVlDuration(), "0");
    EXPECT_EQ(editor.getVlMeetingData(), vlECCalendarEvent(nullptr).getVlMeetingData());
    EXPECT_EQ(editor.view(), nullptr);
    EXPECT_TRUE(editor.getLocationFromUI().isNull());
    editor.updateLocationFieldFromUI("x");
    editor.saveVlDataToOLProperty("x");
    editor.setIsDirty(true);
    EXPECT_TRUE(editor.needHideVlButton());
    const QString address = editor.currentEmailAddress();
    EXPECT_TRUE(address.isEmpty() && !address.isNull());
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
    const std::tuple<QString, QString, QVariantList> cases[] = {
        {"OLWordMailEditor", "displayHTMLContent:readOnly:", {"<p>", false}},
        {"SigningWordEditor", "displayHTMLContent:readOnly:signatureEditor:", {"<p>", false, true}},
        {"ActivatingWordEditor",
         "displayHTMLContent:readOnly:signatureEditor:activateEditor:",
         {"<p>", false, true, true}},
    };
    for (const auto &[className, method, arguments] : cases) {
        FakeObject editor(className);
        vlOLWordMailEditor(&editor).displayHTMLContent("<p>", false);
        EXPECT_EQ(editor.called, QStringList{method});
        EXPECT_EQ(editor.arguments, arguments);
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

TEST(Editor, ItsEventFollowsAContentThatTheHostReplaces) {
    OpenEditor open;
    auto other = std::make_unique<FakeObject>("ECCalendarEvent", QVariantMap{{"summary", "Other"}});
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    open.editor.values.insert("content", rt::fromObject(other.get()));
    EXPECT_EQ(adapter.ecCalendarEvent()->summary(), "Other");
    EXPECT_FALSE(adapter.isSupportedOwner());
    // The host drops it before it has another one.
    other.reset();
    open.editor.values.remove("content");
    EXPECT_TRUE(adapter.ecCalendarEvent()->summary().isNull());
    open.editor.values.insert("content", rt::fromObject(&open.event));
    EXPECT_TRUE(adapter.isSupportedOwner());
}

TEST(Editor, TellsWhenTheMeetingButtonsHaveNoPlace) {
    const struct {
        const char *member;
        bool value, hide, block;
    } cases[] = {{"isOwner", true, false, false},
                 {"isOwner", false, true, true},
                 {"isCancelMode", true, true, false},
                 {"isOccurrenceOrException", true, true, true}};
    for (const auto &c : cases) {
        OpenEditor open;
        open.event.values.insert(c.member, c.value);
        open.editor.values.insert(c.member, c.value);
        const vlERCalendarEventEditorViewController adapter(&open.editor);
        EXPECT_EQ(adapter.needHideVlButton(), c.hide) << c.member;
        EXPECT_EQ(adapter.blockDeleteVelaMeeting(), c.block) << c.member;
    }
}

TEST(Editor, ChangesThatAMeetingDependsOnAreNoticed) {
    const std::tuple<QString, rt::Value, bool> cases[] = {
        {"attendeeList", QVariantList(), true},
        {"recurrence", rt::nullMarker(), true},
        {"summary", "", true},
        {"startTime", rt::nullMarker(), true},
        {"endTime", 1, true},
        {"location", "Room", false},
        {"summary", rt::Value(), false},
        {"body", "<p>Hi", true},
        {"body", "", false},
        {"body", rt::nullMarker(), false},
    };
    for (const auto &[member, value, changed] : cases) {
        OpenEditor open;
        open.editor.pends(member, value);
        EXPECT_EQ(vlERCalendarEventEditorViewController(&open.editor).isVlMeetingItemsChanged(), changed)
            << qPrintable(member);
    }
}

TEST(Editor, ABodyThatWasThereFromTheBeginningIsNoChangeAndASettingIs) {
    platform::installTestServices();
    OpenEditor open;
    vlERCalendarEventEditorViewController adapter(&open.editor);
    open.editor.pends("body", "<div> &nbsp;<br></div>");
    adapter.setInitBodyContent(); // says nothing: not kept
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    open.editor.pends("body", "<div>Hi</div>");
    adapter.setInitBodyContent();
    adapter.setInitBodyContent(QString());
    EXPECT_FALSE(adapter.isVlMeetingItemsChanged());
    open.editor.pends("body", "<div>Hi!</div>");
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    open.editor.pends("body", "<div>Hi</div>");
    adapter.setIsDirty(false);
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    EXPECT_EQ(open.editor.values.value("isDirty"), false);
}
