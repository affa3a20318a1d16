#include "platform/services/TestServices.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "tests/host/HostObjects.h"

#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

// An open editor on an appointment of the user's own.
struct OpenEditor {
    HostObject event{"ECCalendarEvent", {{"summary", "Stored"}, {"isOwner", true}}};
    HostObject editor{"ERCalendarEventEditorViewController", {{"content", rt::fromObject(&event)}}};
    void pend(const QString &member, const rt::Value &value) {
        QVariantMap changes = rt::mapValue(editor.values.value("uncommittedChanges"));
        changes.insert("content." + member, value);
        editor.values.insert("uncommittedChanges", changes);
    }
};

} // namespace

TEST(Editor, ItsEventSeesWhatTheUserTypesWhileTheAdapterLives) {
    OpenEditor open;
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    const vlECCalendarEvent *event = adapter.ecCalendarEvent();
    EXPECT_EQ(event->getOneMergedItem("summary"), "Stored");
    open.pend("summary", "Typed");
    EXPECT_EQ(event->getOneMergedItem("summary"), "Typed");
    EXPECT_EQ(adapter.getVlMeetingData().value(vl_ApptInfo_Subject), "Typed");
    EXPECT_EQ(adapter.ecCalendarEvent(), event);
}

TEST(Editor, ItsEventFollowsAContentThatTheHostReplaces) {
    OpenEditor open;
    auto other = std::make_unique<HostObject>("ECCalendarEvent", QVariantMap{{"summary", "Other"}});
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
    open->pend("summary", "Typed");
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
    HostObject account("ECEmailAccount", {{"emailAddress", "boss@x"}});
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
        open.pend(c.member, c.value);
        EXPECT_EQ(vlERCalendarEventEditorViewController(&open.editor).isVlMeetingItemsChanged(), c.changed)
            << qPrintable(c.member);
    }
}

TEST(Editor, ABodyThatWasThereFromTheBeginningIsNoChangeAndASettingIs) {
    platform::installTestServices();
    OpenEditor open;
    vlERCalendarEventEditorViewController adapter(&open.editor);
    open.pend("body", "<div> &nbsp;<br></div>");
    adapter.setInitBodyContent(); // says nothing: not kept
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    open.pend("body", "<div>Hi</div>");
    adapter.setInitBodyContent();
    adapter.setInitBodyContent(QString());
    EXPECT_FALSE(adapter.isVlMeetingItemsChanged());
    open.pend("body", "<div>Hi!</div>");
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    open.pend("body", "<div>Hi</div>");
    adapter.setIsDirty(false);
    EXPECT_TRUE(adapter.isVlMeetingItemsChanged());
    EXPECT_EQ(open.editor.calls.last().member, "setIsDirty:");
    EXPECT_EQ(open.editor.calls.last().arguments, QVariantList{false});
}

TEST(Editor, ReadsAndWritesItsLocationField) {
    OpenEditor open;
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    EXPECT_TRUE(adapter.getLocationFromUI().isNull());
    QLineEdit field;
    open.editor.values.insert("locationTextField", rt::fromWidget(&field));
    EXPECT_FALSE(adapter.getLocationFromUI().isNull()); // empty, but there
    adapter.updateLocationFieldFromUI("Room 1");
    EXPECT_EQ(field.text(), "Room 1");
    EXPECT_EQ(adapter.getLocationFromUI(), "Room 1");
}

TEST(Editor, StoresThePlugInsData) {
    OpenEditor open;
    const vlERCalendarEventEditorViewController adapter(&open.editor);
    adapter.saveVlDataToOLProperty("{\"meetingKey\":\"k\"}");
    EXPECT_EQ(open.editor.calls.last().member, "setOlmUCCapabilities:");
    EXPECT_EQ(open.editor.calls.last().arguments, QVariantList{"{\"meetingKey\":\"k\"}"});
}
