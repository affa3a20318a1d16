// Several editors at once: each keeps to its own appointment and its own meeting.
#include "tests/e2e/Desktop.h"

namespace e2e {

namespace {

const QString first = u"First"_s;
const QString second = u"Second"_s;
const QString third = u"Third"_s;
const QString changesOfMeetings = u"2;"_s;

class Editors : public Desktop {};

} // namespace

TEST_P(Editors, OfAPlainAppointmentKnowsNothingOfTheMeetingBesideIt) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(first));
    const QString key = meetingKeyInFile(u"first"_s);
    const QJsonObject meeting = meetingOfClient(key);
    ASSERT_FALSE(meeting.isEmpty());
    ASSERT_NO_FATAL_FAILURE(openSelected(first));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    ASSERT_NO_FATAL_FAILURE(open(second));

    const QString plain = u"Plain"_s;
    typeSubject(plain);
    ASSERT_TRUE(becomesActive(changed(plain)));
    ASSERT_NO_FATAL_FAILURE(save(plain));
    EXPECT_EQ(inFile(u"second"_s).summary, plain);
    EXPECT_EQ(meetingKeyInFile(u"second"_s), QString());

    screen.press(u"alt+i"_s);
    ASSERT_TRUE(becomesActive(settingsSheet)) << "the strip does not offer to add a meeting";
    screen.press(u"Return"_s); // the add ends with the save that this editor did before
    ASSERT_TRUE(waitFor([&] { return !meetingKeyInFile(u"second"_s).isEmpty(); }));
    ASSERT_TRUE(becomesActive(unchanged(plain)));
    const QString otherKey = meetingKeyInFile(u"second"_s);
    EXPECT_NE(otherKey, key);
    EXPECT_EQ(requests(u"1;"_s).size(), 2);
    EXPECT_FALSE(requests(changesOfMeetings).join(u' ').contains(key));
    EXPECT_EQ(meetingOfClient(key), meeting);
}

TEST_P(Editors, RemoveTheirOwnMeetingAndNoOther) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(first));
    ASSERT_NO_FATAL_FAILURE(giveMeeting(second));
    const QString firstKey = meetingKeyInFile(u"first"_s);
    const QString secondKey = meetingKeyInFile(u"second"_s);
    const QJsonObject meeting = meetingOfClient(firstKey);
    ASSERT_NO_FATAL_FAILURE(openSelected(second));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    ASSERT_NO_FATAL_FAILURE(open(third));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    ASSERT_NO_FATAL_FAILURE(open(first));

    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(second)));
    screen.press(u"alt+m"_s);
    ASSERT_TRUE(becomesActive(changed(second)));
    ASSERT_NO_FATAL_FAILURE(save(second));
    EXPECT_EQ(requests(u"3;"_s).join(u' ').toStdString(), "3;" + secondKey.toStdString());
    EXPECT_EQ(meetingKeyInFile(u"second"_s), QString());
    EXPECT_TRUE(meetingOfClient(secondKey).isEmpty());

    EXPECT_EQ(meetingKeyInFile(u"first"_s), firstKey);
    EXPECT_EQ(meetingOfClient(firstKey), meeting);
    const QString renamed = u"Renamed"_s;
    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(first)));
    typeSubject(renamed);
    ASSERT_TRUE(becomesActive(changed(renamed)));
    ASSERT_NO_FATAL_FAILURE(save(renamed));
    EXPECT_TRUE(waitFor([&] { return meetingOfClient(firstKey).value(u"subject"_s) == renamed; }));
    EXPECT_EQ(requests(changesOfMeetings).size(), 1);

    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(third)));
    screen.press(u"alt+i"_s);
    EXPECT_TRUE(becomesActive(settingsSheet)) << "the strip does not offer to add a meeting";
}

INSTANTIATE_TEST_SUITE_P(All, Editors, testing::Values(olderHost, newerHost));

} // namespace e2e
