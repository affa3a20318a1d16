#include "tests/workflow/WorkflowFixture.h"

#include "plugin/workflow/scheduleOwner.h"
#include "plugin/workflow/vlOnbehalfData.h"

namespace {

class Owner : public WorkflowTest {};

} // namespace

TEST_F(Owner, AMeetingGoesOutForThePersonForWhomItWasMade) {
    struct Case {
        const char *what;
        ScheduleOwner owner;
        bool matched;
    };
    const Case cases[] = {
        {"for the user, by the user", {false, "", "me@x", false, ""}, true},
        {"for the user, now for a person", {true, "boss@x", "boss@x", true, ""}, false},
        {"for the user, now for a stranger", {true, "other@x", "other@x", false, ""}, true},
        {"for a person, by the user", {false, "", "me@x", false, "boss@x"}, false},
        {"for that person, in another case", {true, "boss@x", "boss@x", true, "BOSS@X"}, true},
        {"for another person", {true, "second@x", "second@x", true, "boss@x"}, false},
        {"for a person, now for a stranger", {true, "other@x", "other@x", false, "boss@x"}, true},
        {"on behalf without an address", {true, "", "", false, ""}, false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(isScheduleOwnerMatched(c.owner), c.matched) << c.what;
}

TEST_F(Owner, ThisEditionSchedulesForNobodyElse) {
    givenAnAppointmentWithAMeeting();
    appointment->values.remove("olmUCCapabilities");
    editor->values.insert("isDelegating", true);
    store().setScheduleForEmail("boss@example.org");
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(editor.get()));
    EXPECT_TRUE(manager().checkScheduleOwnerMatched(nullptr));
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_FALSE(onbehalf.isOnbehalf(windowID()));
    EXPECT_FALSE(onbehalf.isCurrentScheduleVelaForOther(windowID()));
    EXPECT_EQ(onbehalf.onbehalfEmail(windowID()), "");
    EXPECT_EQ(onbehalf.onbehalfEmail("no such window"), "");
}

TEST_F(Owner, OnlyAMeetingThatIsNotStoredYetIsChecked) {
    givenAnAppointment();
    const std::pair<QVariant, bool> cases[] = {{{}, true},
                                               {"", true},
                                               {"no JSON", true},
                                               {"{\"joinUrl\":\"u\"}", true},
                                               {"{\"meetingKey\":\"k\"}", false}};
    for (const auto &[record, needed] : cases) {
        appointment->values.insert("olmUCCapabilities", record);
        EXPECT_EQ(manager().needCheckOwnerMatched(editor.get()), needed) << qPrintable(record.toString());
    }
    EXPECT_TRUE(manager().needCheckOwnerMatched(nullptr));
}

TEST_F(Owner, PeopleAreFoundByAddressInAnyCaseAndTheFirstCounts) {
    const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@example.org"), "");
    const QVariantMap boss{{"displayName", "The boss"}, {"email", "Boss@example.org"}};
    const QVariantMap again{{"displayName", "Another"}, {"email", "boss@example.org"}};
    const QVariantMap nameless{{"email", "nameless@example.org"}};
    givenTheProfileIsLoaded(
        {{"bosses", QVariantList{7, QVariantMap{{"displayName", "X"}}, boss, again, nameless}}});
    EXPECT_EQ(onbehalf.getDisplayNameWithOnbehalfEmail("boss@EXAMPLE.org"), "The boss");
    EXPECT_TRUE(onbehalf.hasSchedulePermission("boss@example.org"));
    for (const QString &email :
         {QString(), QString(""), QString("nameless@example.org"), QString("boss@example")})
        EXPECT_FALSE(onbehalf.hasSchedulePermission(email)) << qPrintable(email);
    givenTheProfileIsLoaded({{"bosses", "none"}});
    EXPECT_FALSE(onbehalf.hasSchedulePermission("boss@example.org"));
}

TEST_F(Owner, TheWarningIsShownOnTheEditor) {
    givenAnAppointment();
    manager().showWarningNotAllowScheduleForOthers(editor.get());
    ASSERT_EQ(alerts.removeWarnings.size(), 1);
    EXPECT_EQ(alerts.removeWarnings.first().first, editor.get());
    EXPECT_EQ(alerts.removeWarnings.first().second, editor->window());
}

TEST_F(Owner, TheLinkTellsForWhomARequestSchedules) {
    givenAnAppointment();
    sheets.settings.insert(windowID(), {});
    manager().sendVlMeetingCommand(CmdScheduleMeeting, editor.get());
    EXPECT_EQ(store().scheduleForEmail(), "");
    EXPECT_FALSE(store().scheduleForEmail().isNull());
    static_cast<FinishReceiver &>(manager()).setScheduleForEmail("boss@example.org");
    EXPECT_EQ(store().scheduleForEmail(), "boss@example.org");
}
