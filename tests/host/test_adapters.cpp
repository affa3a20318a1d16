// The adapters over host objects, which may lack a class, a member or a method, or go away.
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/link/meetingKeys.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

// An open editor with an appointment of the user.
struct OpenEditor {
    FakeAppointment event;
    FakeEditor editor{event};
};

const QTimeZone twoHoursAhead(7200);

QVariantMap snapshotOf(const QVariantMap &stored, const QVariantMap &pending = {}) {
    FakeObject event("ECCalendarEvent", stored);
    return vlECCalendarEvent(&event, pending).getVlMeetingData();
}

} // namespace

TEST(Adapter, ClassAndMemberAreTestedAtEveryAccess) {
    FakeObject event("ECCalendarEvent", {{"summary", "S"}, {"isOwner", true}});
    FakeObject other("ECMutableCalendarEvent", {{"summary", "M"}, {"isOwner", true}});
    vlECCalendarEvent adapter(&event);
    EXPECT_EQ(adapter.summary(), "S");
    adapter.setDelegate(&other);
    EXPECT_EQ(adapter.delegate(), &other);
    EXPECT_TRUE(adapter.summary().isNull());
    EXPECT_FALSE(adapter.isValidConnection() || adapter.isSupportVela() || adapter.isValidHostAppointment());
    for (const char *className : {"", "NoSuchClass"})
        EXPECT_FALSE(vlDelegateBase(className, &event).isValidConnection());
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

TEST(Application, OpensANewMeetingOnTheNextTurnWithTheFlagForItsEditor) {
    const platform::TestDesktop desktop = platform::installTestServices();
    const QVariantMap &left = platform::services().mainThreadDictionary;
    auto application = std::make_unique<FakeObject>("ErageAppDelegate");
    vlErageAppDelegate(application.get()).autoAddVelaToAppointment(rt::Value("no dictionary"));
    EXPECT_EQ(left, (QVariantMap{{keyFlagAutoAddToVlMeeting, keyFlagAutoAddToVlMeeting}}));
    EXPECT_EQ(desktop.workspace->activations, 1);
    EXPECT_TRUE(application->called.isEmpty());
    desktop.runLoop->advance(0);
    EXPECT_EQ(application->called, QStringList{"newCalendarMeeting:"});
    EXPECT_FALSE(application->arguments.first().isValid());
    vlErageAppDelegate(application.get()).autoAddVelaToAppointment({});
    application.reset();
    desktop.runLoop->advance(0); // the host has ended
}

TEST(Editor, ItsEventFollowsAContentThatTheHostReplaces) {
    OpenEditor open;
    auto other = std::make_unique<FakeObject>("ECCalendarEvent", QVariantMap{{"summary", "Other"}});
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    open.editor.values.insert("content", rt::fromObject(other.get()));
    EXPECT_EQ(adapter.ecCalendarEvent()->summary(), "Other");
    EXPECT_FALSE(adapter.isSupportedOwner());
    // The host removes the content before it sets another one.
    other.reset();
    open.editor.values.remove("content");
    EXPECT_TRUE(adapter.ecCalendarEvent()->summary().isNull());
    open.editor.values.insert("content", rt::fromObject(&open.event));
    EXPECT_TRUE(adapter.isSupportedOwner());
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

TEST(MergedRead, PrefersThePendingChangeAndKnowsAClearedOneFromNone) {
    FakeObject event("ECCalendarEvent", {{"summary", "Old"}, {"location", "Room"}, {"body", "<p>old"}});
    const vlECCalendarEvent changed(&event,
                                    {{"content.summary", rt::nullMarker()}, {"content.body", "<p>new"}});
    const rt::Value subject = changed.getOneMergedItem("summary");
    EXPECT_EQ(subject, QString(""));
    EXPECT_FALSE(subject.toString().isNull());
    EXPECT_EQ(changed.getEmailBody(), "<p>new");
    EXPECT_EQ(changed.summary(), "Old"); // without the change
    // An entry without a value, and a key without the prefix, are no changes.
    const vlECCalendarEvent untouched(&event, {{"content.location", rt::Value()}, {"summary", "x"}});
    EXPECT_EQ(untouched.getOneMergedItem("summary"), "Old");
    EXPECT_EQ(untouched.location(), "Room");
}

TEST(Snapshot, HoldsWhatTheAppointmentHas) {
    FakeDate start("2026-11-24 07:00:00", twoHoursAhead), end("2026-11-24 08:30:00", twoHoursAhead);
    FakeObject pattern("ECEmailAccount"), attendee("ECCalendarEventAttendee", {{"name", "A"}});
    const QVariantMap snapshot = snapshotOf({{"summary", "S"},
                                             {"location", "L"},
                                             {"body", "<p>"},
                                             {"olmUCCapabilities", "{}"},
                                             {"startTime", rt::fromObject(&start)},
                                             {"endTime", rt::fromObject(&end)},
                                             {"recurrence", rt::fromObject(&pattern)},
                                             {"attendeeList", QVariantList{rt::fromObject(&attendee)}}},
                                            {{"content.olmUCCapabilities", "never merged"}});
    const QVariant zone = QVariant::fromValue(twoHoursAhead);
    const QVariantMap expected{
        {"subject", "S"},
        {"location", "L"},
        {"emailBody", "<p>"},
        {"vlOIProperty", "{}"},
        {"duration", "90"},
        {"recurrence", true},
        {"startTime", QVariantMap{{"UTCTime", "2026-11-24 07:00:00"},
                                  {"localTime", "2026-11-24 09:00:00"},
                                  {"timezone", zone}}},
        {"endTime", QVariantMap{{"UTCTime", "2026-11-24 08:30:00"},
                                {"localTime", "2026-11-24 10:30:00"},
                                {"timezone", zone}}},
        {"attendees", QVariantList{QVariantMap{{"name", "A"}}}},
    };
    EXPECT_EQ(snapshot, expected);
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
    FakeDate date("2026-11-24 07:00:00", QTimeZone::utc());
    EXPECT_EQ(snapshotOf({{"summary", "S"}, {"startTime", rt::fromObject(&date)}, {"recurrence", "weekly"}},
                         pending),
              cleared);
}

TEST(Snapshot, DurationIsInWholeMinutesTowardZero) {
    FakeDate start("2026-11-24 09:00:00", QTimeZone::utc());
    for (const auto &[endTime, minutes] : {std::pair{"2026-11-24 10:30:00", "90"},
                                           {"2026-11-24 09:59:59", "59"},
                                           {"2026-11-24 08:00:30", "-59"},
                                           {"9999-01-01 00:00:00", "2147483647"}}) {
        FakeDate end(endTime, twoHoursAhead);
        EXPECT_EQ(snapshotOf({{"startTime", rt::fromObject(&start)}, {"endTime", rt::fromObject(&end)}})
                      .value(vl_ApptInfo_Duration),
                  minutes);
        EXPECT_EQ(snapshotOf({{"endTime", rt::fromObject(&end)}}).value(vl_ApptInfo_Duration), "0");
    }
}

TEST(Snapshot, AttendeesKeepTheirOrderAndEndAtTheFirstMissingValue) {
    FakeObject full("ECCalendarEventAttendee",
                    {{"name", "Room"}, {"emailAddress", "r@x"}, {"attendeeType", 2}});
    FakeObject untyped("ECCalendarEventAttendee", {{"name", ""}, {"emailAddress", ""}});
    FakeObject unreachable("ECCalendarEventAttendee", {{"name", "B"}, {"attendeeType", 1}});
    FakeObject nameless("ECCalendarEventAttendee", {{"emailAddress", "n@x"}, {"attendeeType", 1}});
    FakeObject stranger("ECEmailAccount", {{"emailAddress", "s@x"}});
    QVariantList invited;
    for (FakeObject *object : {&full, &untyped, &unreachable, &nameless, &stranger})
        invited.append(rt::fromObject(object));
    invited.append(rt::nullMarker());
    const QVariantList expected{QVariantMap{{"name", "Room"}, {"email", "r@x"}, {"type", "2"}},
                                QVariantMap{{"name", ""}, {"email", ""}, {"type", "0"}},
                                QVariantMap{{"name", "B"}},
                                QVariantMap(),
                                QVariantMap(),
                                QVariantMap()};
    EXPECT_EQ(snapshotOf({{"attendeeList", invited}}).value(vl_ApptInfo_Attendees), expected);
    EXPECT_FALSE(snapshotOf({{"attendeeList", QVariantList()}}).contains(vl_ApptInfo_Attendees));
}

TEST(Date, CountsToAndFromOtherDates) {
    FakeDate date("2026-11-24 09:00:00", QTimeZone::utc());
    const vlOLCalendarDate adapter(&date);
    rt::Object *moved = adapter.dateByAddingTimeInterval(-90);
    EXPECT_EQ(vlOLCalendarDate(moved).UTCTime(), "2026-11-24 08:58:30");
    EXPECT_EQ(adapter.timeIntervalSinceDate(moved), 90.0);
    EXPECT_EQ(adapter.timeIntervalSinceDate(nullptr), 0.0);
    EXPECT_EQ(vlOLCalendarDate(nullptr).dateByAddingTimeInterval(1), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    date.values.clear(); // without a zone
    EXPECT_EQ(adapter.getVlMeetingData(), (QVariantMap{{"UTCTime", "2026-11-24 09:00:00"}}));
}
