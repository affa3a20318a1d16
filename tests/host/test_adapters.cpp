// The adapters over host objects, which may lack a class, a member or a method, or go away.
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <gtest/gtest.h>

namespace {

// An open editor with an appointment of the user.
struct OpenEditor {
    FakeAppointment event;
    FakeEditor editor{event};
};

QVariantMap snapshotOf(const QVariantMap &stored, const QVariantMap &pending = {}) {
    FakeObject event("ECCalendarEvent", stored);
    return vlECCalendarEvent(&event, pending).getVlMeetingData();
}

} // namespace

TEST(Adapter, FollowsTheContentThatTheHostReplacesAndSurvivesTheDeathOfItsObject) {
    auto open = std::make_unique<OpenEditor>();
    FakeObject other("ECCalendarEvent", {{"summary", "Other"}});
    const vlECCalendarEvent event(&open->event);
    vlERCalendarEventEditorViewController editor(&open->editor);
    open->editor.pends("summary", "Typed");
    EXPECT_TRUE(event.isOwner());
    EXPECT_TRUE(editor.isSupportedOwner());
    open->editor.values.insert("content", rt::fromObject(&other));
    EXPECT_EQ(editor.ecCalendarEvent()->summary(), "Other");
    FakeObject record("ECMutableCalendarEvent", {{"summary", "Another class"}});
    editor.ecCalendarEvent()->setDelegate(&record);
    EXPECT_TRUE(editor.ecCalendarEvent()->summary().isNull());
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
    EXPECT_NE(vlERCalendarEventEditorViewController(nullptr).ecCalendarEvent(), nullptr);
}

TEST(Grid, GivesTheControllerWithASelectedEventElseTheLast) {
    FakeObject event("ECCalendarEvent"), stranger("ECEmailAccount"), wrapper("OLCalendarGridViewWrapper");
    FakeObject a("CCGridViewController"), b("CCGridViewController"), c("CCGridViewController");
    const vlOLCalendarGridViewWrapper adapter(&wrapper);
    EXPECT_EQ(adapter.gridViewController(), nullptr);
    wrapper.values.insert("gridViewControllers",
                          QVariantList{rt::fromObject(&a), rt::fromObject(&b), rt::fromObject(&c),
                                       rt::fromObject(&stranger), rt::nullMarker()});
    EXPECT_EQ(adapter.gridViewController(), &c);
    b.values.insert("selectedEvent", rt::fromObject(&event));
    EXPECT_EQ(adapter.gridViewController(), &b);
    EXPECT_EQ(vlCCGridViewController(adapter.gridViewController()).ecCalendarEvent(), &event);
    wrapper.values.insert("gridViewController", rt::fromObject(&a));
    EXPECT_EQ(adapter.gridViewController(), &a);
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

TEST(Editor, ABodyThatWasThereFromTheBeginningIsNoChangeAndASettingIs) {
    platform::installTestServices();
    OpenEditor open;
    vlERCalendarEventEditorViewController adapter(&open.editor);
    open.editor.pends("body", "<div> &nbsp;<br></div>");
    adapter.setInitBodyContent(); // a body without text is not kept
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

TEST(Editor, KnowsWhoseAccountItsAppointmentHas) {
    OpenEditor open;
    FakeObject account("ECEmailAccount", {{"emailAddress", "boss@x"}});
    open.event.values.insert("account", rt::fromObject(&account));
    open.editor.values.insert({{"currentEmailAccount", rt::fromObject(&account)}, {"isDelegating", true}});
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    EXPECT_EQ(adapter.ecCalendarEvent()->emailAddress(), "boss@x");
    EXPECT_EQ(adapter.getVlMeetingData().value(vl_ApptInfo_OnbehalfEmailAddress),
              vlPluginBuildMgr::supportScheduleFor() ? QVariant("boss@x") : QVariant());
}

TEST(Application, OpensANewMeetingOnTheNextTurnOfTheLoop) {
    const platform::TestDesktop desktop = platform::installTestServices();
    FakeObject application("ErageAppDelegate");
    vlErageAppDelegate(&application).autoAddVelaToAppointment({});
    EXPECT_TRUE(application.called.isEmpty());
    desktop.runLoop->advance(0);
    EXPECT_EQ(application.called, QStringList{"newCalendarMeeting:"});
}

TEST(Snapshot, OfNothingHasEmptyDatesNoDurationAndNoRecurrence) {
    const QVariantMap expected{
        {"duration", "0"}, {"recurrence", false}, {"startTime", QVariantMap()}, {"endTime", QVariantMap()}};
    EXPECT_EQ(vlECCalendarEvent(nullptr).getVlMeetingData(), expected);
    EXPECT_EQ(snapshotOf({}), expected);
    // After the user has cleared all fields.
    QVariantMap cleared = expected;
    cleared.insert("subject", "");
    cleared.insert("location", rt::nullMarker());
    QVariantMap pending;
    for (const char *member : {"summary", "location", "startTime", "endTime", "recurrence", "attendeeList"})
        pending.insert(u"content."_s + member, rt::nullMarker());
    EXPECT_EQ(snapshotOf({{"summary", "S"}, {"recurrence", "weekly"}}, pending), cleared);
}

TEST(Snapshot, AttendeesKeepTheirOrderAndEndAtTheFirstMissingValue) {
    FakeObject full("ECCalendarEventAttendee",
                    {{"name", "Room"}, {"emailAddress", "r@x"}, {"attendeeType", 2}});
    FakeObject unreachable("ECCalendarEventAttendee", {{"name", "B"}, {"attendeeType", 1}});
    const QVariantList invited{rt::fromObject(&full), rt::fromObject(&unreachable), rt::nullMarker()};
    const QVariantList expected{QVariantMap{{"name", "Room"}, {"email", "r@x"}, {"type", "2"}},
                                QVariantMap{{"name", "B"}}, QVariantMap()};
    EXPECT_EQ(snapshotOf({{"attendeeList", invited}}).value(vl_ApptInfo_Attendees), expected);
}
