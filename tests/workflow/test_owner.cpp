#include "tests/workflow/WorkflowFixture.h"

#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/ScheduleOwner.h"
#include "plugin/workflow/vlOnbehalfData.h"

namespace {

class Owner : public WorkflowTest {};

} // namespace

TEST_F(Owner, AMeetingGoesOutForThePersonForWhomItWasMade) {
    const std::tuple<const char *, ScheduleOwner, bool> cases[] = {
        {"for the user, by the user", {false, "", "me@x", false, ""}, true},
        {"for the user, now for a stranger", {true, "other@x", "other@x", false, ""}, true},
        {"for another person", {true, "second@x", "second@x", true, "boss@x"}, false},
        {"for a person, now for a stranger", {true, "other@x", "other@x", false, "boss@x"}, true},
        {"on behalf without an address", {true, "", "", false, ""}, false},
    };
    for (const auto &[what, owner, isMatched] : cases)
        EXPECT_EQ(isScheduleOwnerMatched(owner), isMatched) << what;
}

// The editor acts for the boss. Its meeting is not stored yet.
TEST_F(Owner, OnlyTheEditionForItSchedulesForOthers) {
    const bool edition = vlPluginBuildMgr::supportScheduleFor();
    givenAnAppointmentWithAMeeting();
    appointment->values.remove("olmUCCapabilities");
    FakeObject account("ECEmailAccount", {{"emailAddress", "Boss@example.org"}});
    editor->values.insert("isDelegating", true);
    editor->values.insert("currentEmailAccount", rt::fromObject(&account));
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_EQ(onbehalf.isOnbehalf(windowID()), edition);
    EXPECT_EQ(onbehalf.onbehalfEmail(windowID()), edition ? "Boss@example.org" : "");
    EXPECT_FALSE(onbehalf.isCurrentScheduleVelaForOther(windowID())) << "the boss has not allowed it yet";
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "without permission nothing is checked";
    givenTheProfileIsLoaded(
        {{"bosses", QVariantList{QVariantMap{{"displayName", "B"}, {"email", "boss@example.org"}}}}});
    EXPECT_EQ(onbehalf.isCurrentScheduleVelaForOther(windowID()), edition);
    FinishReceiver &link = manager();
    link.setScheduleForEmail("");
    EXPECT_EQ(manager().checkScheduleOwnerMatched(editor.get()), !edition) << "the meeting is for the user";
    link.setScheduleForEmail("BOSS@example.org");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is for the boss";
    editor->values.insert("isDelegating", false);
    EXPECT_EQ(manager().checkScheduleOwnerMatched(editor.get()), !edition) << "the user sends it now";
    appointment->values.insert("olmUCCapabilities", "{\"meetingKey\":\"k\"}");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get())) << "the meeting is stored already";
    EXPECT_FALSE(manager().needCheckOwnerMatched(editor.get()));
    appointment->values.insert("olmUCCapabilities", "{\"joinUrl\":\"u\"}");
    EXPECT_TRUE(manager().needCheckOwnerMatched(editor.get()));
    EXPECT_TRUE(manager().needCheckOwnerMatched(nullptr) && manager().checkScheduleOwnerMatched(nullptr));
    EXPECT_EQ(onbehalf.onbehalfEmail("no such window"), "");
}

TEST_F(Owner, PeopleAreFoundByAddressInAnyCaseAndTheFirstCounts) {
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@example.org"), "");
    const QVariantMap boss{{"displayName", "The boss"}, {"email", "Boss@example.org"}};
    const QVariantMap again{{"displayName", "Another"}, {"email", "boss@example.org"}};
    const QVariantMap nameless{{"email", "nameless@example.org"}};
    givenTheProfileIsLoaded({{"bosses", QVariantList{7, nameless, boss, again}}});
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@EXAMPLE.org"), "The boss");
    EXPECT_TRUE(onbehalf.hasSchedulePermission("boss@example.org"));
    for (const QString &email : {QString(), QString("nameless@example.org"), QString("boss@example")})
        EXPECT_FALSE(onbehalf.hasSchedulePermission(email)) << qPrintable(email);
}
