// The adapter of an open appointment editor.
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestServices.h"

#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

// An open editor on an appointment of the user's own.
struct OpenEditor {
    FakeAppointment event;
    FakeEditor editor{event};
};

} // namespace

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

TEST(Editor, MayGoAwayUnderItsAdapter) {
    auto open = std::make_unique<OpenEditor>();
    vlERCalendarEventEditorViewController adapter(&open->editor);
    open->editor.pends("summary", "Typed");
    open.reset();
    EXPECT_EQ(adapter.getVlMeetingData(), vlECCalendarEvent(nullptr).getVlMeetingData());
    EXPECT_EQ(adapter.view(), nullptr);
    EXPECT_TRUE(adapter.getLocationFromUI().isNull());
    adapter.updateLocationFieldFromUI("x");
    adapter.saveVlDataToOLProperty("x");
    adapter.setIsDirty(true);
    EXPECT_TRUE(adapter.needHideVlButton());
    const QString address = adapter.currentEmailAddress();
    EXPECT_TRUE(address.isEmpty() && !address.isNull());
}

TEST(Editor, TellsWhenTheMeetingButtonsHaveNoPlace) {
    const struct {
        bool owner, cancel, occurrence, hide, block;
    } cases[] = {{true, false, false, false, false},
                 {false, false, false, true, true},
                 {true, true, false, true, false},
                 {true, false, true, true, true}};
    for (const auto &c : cases) {
        OpenEditor open;
        open.event.values.insert("isOwner", c.owner);
        open.editor.values.insert("isCancelMode", c.cancel);
        open.editor.values.insert("isOccurrenceOrException", c.occurrence);
        const vlERCalendarEventEditorViewController adapter(&open.editor);
        EXPECT_EQ(adapter.needHideVlButton(), c.hide);
        EXPECT_EQ(adapter.blockDeleteVelaMeeting(), c.block);
    }
}

TEST(Editor, ActsForOthersOnlyInTheEditionForIt) {
    const bool edition = vlPluginBuildMgr::supportScheduleFor();
    OpenEditor open;
    FakeObject account("ECEmailAccount", {{"emailAddress", "boss@x"}});
    open.editor.values.insert("isDelegating", true);
    open.editor.values.insert("currentEmailAccount", rt::fromObject(&account));
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    EXPECT_EQ(adapter.currentEmailAddress(), "boss@x");
    EXPECT_EQ(adapter.isOnBehalf(), edition);
    EXPECT_EQ(adapter.onbehalfEmailAddress(), edition ? QString("boss@x") : QString());
    EXPECT_EQ(adapter.getVlMeetingData().contains(vl_ApptInfo_OnbehalfEmailAddress), edition);
}

TEST(Editor, ChangesThatAMeetingDependsOnAreNoticed) {
    const struct {
        QString member;
        rt::Value value;
        bool changed;
    } cases[] = {
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
    for (const auto &c : cases) {
        OpenEditor open;
        open.editor.pends(c.member, c.value);
        EXPECT_EQ(vlERCalendarEventEditorViewController(&open.editor).isVlMeetingItemsChanged(), c.changed)
            << qPrintable(c.member);
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
