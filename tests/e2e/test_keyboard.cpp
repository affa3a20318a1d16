// Whatever the plug-in shows and takes away again, the keyboard goes on reaching the window below it.
#include "tests/e2e/Desktop.h"

namespace e2e {

namespace {

class Keyboard : public Desktop {};

} // namespace

TEST_P(Keyboard, AddsAndChangesOneMeetingAfterAnother) {
    for (const QString &subject : {u"First"_s, u"Second"_s}) {
        const QString uid = subject.toLower();
        const QString typed = subject + u" again"_s;
        ASSERT_NO_FATAL_FAILURE(open(subject));
        ASSERT_NO_FATAL_FAILURE(addMeeting(subject));
        ASSERT_NO_FATAL_FAILURE(save(subject)) << "the keyboard is dead";
        EXPECT_FALSE(meetingKeyInFile(uid).isEmpty());
        screen.press(u"alt+s"_s);
        ASSERT_TRUE(becomesActive(settingsSheet));
        screen.press(u"Return"_s); // nothing is changed, and the former save runs once more
        ASSERT_TRUE(becomesActive(unchanged(subject)));
        typeSubject(typed);
        ASSERT_TRUE(becomesActive(changed(typed)));
        ASSERT_NO_FATAL_FAILURE(save(typed));
        EXPECT_EQ(inFile(uid).summary, typed);
        ASSERT_NO_FATAL_FAILURE(goToCalendar()); // the editor stays open
    }
    EXPECT_NE(meetingKeyInFile(u"first"_s), meetingKeyInFile(u"second"_s));
    EXPECT_EQ(messages.sent(standin::requests::schedule), 2);
    EXPECT_EQ(messages.sent(standin::requests::update), 2);
}

TEST_P(Keyboard, RenamesTheTileAfterADrag) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(u"First"_s));
    const QDateTime before = inFile(u"first"_s).start.value;
    const QPoint tile = selectedTile();
    ASSERT_FALSE(tile.isNull());
    screen.drag(tile, tile - QPoint(0, 60));
    ASSERT_TRUE(waitFor([&] { return inFile(u"first"_s).start.value < before; }));
    ASSERT_TRUE(waitFor([this] { return messages.answered(standin::updateAnswer) == 1; }));
    ASSERT_TRUE(becomesActive(calendar));
    screen.press(u"F2"_s);
    screen.press(u"ctrl+a"_s);
    screen.type(u"Dragged"_s);
    screen.press(u"Return"_s);
    EXPECT_TRUE(waitFor([this] { return inFile(u"first"_s).summary == u"Dragged"_s; }));
}

// Nothing but the host runs: the newer host asks the agent, which is only installed, too.
TEST_P(Keyboard, LaunchesTheClientThatIsOnlyInstalled) {
    ASSERT_NO_FATAL_FAILURE(endClient());
    ASSERT_NO_FATAL_FAILURE(open(u"First"_s));
    screen.press(u"alt+i"_s);
    ASSERT_TRUE(waitFor([this] { return screen.activeWindow() == u"Parlo Host"_s; })) << "no alert";
    screen.press(u"Return"_s);
    ASSERT_TRUE(waitFor(isClientRunning));
    ASSERT_NO_FATAL_FAILURE(endClient());
}

INSTANTIATE_TEST_SUITE_P(All, Keyboard,
                         testing::Values(Programs{"15.8", false}, Programs{"16", false},
                                         Programs{"15.8", true}, Programs{"16", true}));

} // namespace e2e
