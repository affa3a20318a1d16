// Several editors at once: each keeps to its own appointment and its own meeting.
#include "tests/e2e/Desktop.h"

namespace e2e {

namespace {

const QString first = QStringLiteral("First");
const QString second = QStringLiteral("Second");
const QString third = QStringLiteral("Third");
const QString changesOfMeetings = QStringLiteral("2;");

class Editors : public Desktop {
protected:
    void expectNoUpdateOf(const QString &key) const {
        for (const QString &content : requests(changesOfMeetings))
            EXPECT_FALSE(content.contains(key)) << qPrintable(content);
    }
};

} // namespace

TEST_P(Editors, OfAPlainAppointmentKnowsNothingOfTheMeetingBesideIt) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(first));
    const QString key = meetingKeyInFile(QStringLiteral("first"));
    const std::string meeting = meetingOfClient(key);
    ASSERT_FALSE(meeting.empty());
    ASSERT_NO_FATAL_FAILURE(openSelected(first));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    ASSERT_NO_FATAL_FAILURE(open(second));

    const QString plain = QStringLiteral("Plain");
    typeSubject(plain);
    ASSERT_TRUE(becomesActive(changed(plain)));
    ASSERT_NO_FATAL_FAILURE(save(plain));
    EXPECT_EQ(subjectInFile(QStringLiteral("second")), plain);
    EXPECT_EQ(meetingKeyInFile(QStringLiteral("second")), QString());

    screen.press(QStringLiteral("alt+i"));
    ASSERT_TRUE(becomesActive(settingsSheet)) << "the strip does not offer to add a meeting";
    screen.press(QStringLiteral("Return")); // the add ends with the save that this editor did before
    ASSERT_TRUE(waitFor([&] { return !meetingKeyInFile(QStringLiteral("second")).isEmpty(); }));
    ASSERT_TRUE(becomesActive(unchanged(plain)));
    const QString otherKey = meetingKeyInFile(QStringLiteral("second"));
    EXPECT_NE(otherKey, key);
    EXPECT_EQ(requests(QStringLiteral("1;")).size(), 2);
    expectNoUpdateOf(key);
    EXPECT_EQ(meetingOfClient(key), meeting);
}

TEST_P(Editors, RemoveTheirOwnMeetingAndNoOther) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(first));
    ASSERT_NO_FATAL_FAILURE(giveMeeting(second));
    const QString firstKey = meetingKeyInFile(QStringLiteral("first"));
    const QString secondKey = meetingKeyInFile(QStringLiteral("second"));
    const std::string meeting = meetingOfClient(firstKey);
    ASSERT_NO_FATAL_FAILURE(openSelected(second));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    ASSERT_NO_FATAL_FAILURE(open(third));
    ASSERT_NO_FATAL_FAILURE(goTo(calendar));
    screen.press(QStringLiteral("Up"));
    screen.press(QStringLiteral("Up"));
    ASSERT_NO_FATAL_FAILURE(openSelected(first));

    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(second)));
    screen.press(QStringLiteral("alt+m"));
    ASSERT_TRUE(becomesActive(changed(second)));
    ASSERT_NO_FATAL_FAILURE(save(second));
    EXPECT_EQ(requests(QStringLiteral("3;")).join(u' ').toStdString(), "3;" + secondKey.toStdString());
    EXPECT_EQ(meetingKeyInFile(QStringLiteral("second")), QString());
    EXPECT_EQ(meetingOfClient(secondKey), "");

    EXPECT_EQ(meetingKeyInFile(QStringLiteral("first")), firstKey);
    EXPECT_EQ(meetingOfClient(firstKey), meeting);
    const QString renamed = QStringLiteral("Renamed");
    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(first)));
    typeSubject(renamed);
    ASSERT_TRUE(becomesActive(changed(renamed)));
    ASSERT_NO_FATAL_FAILURE(save(renamed));
    EXPECT_TRUE(waitFor([&] { return meetingOfClient(firstKey).find("Renamed") != std::string::npos; }));
    EXPECT_EQ(requests(changesOfMeetings).size(), 1);

    ASSERT_NO_FATAL_FAILURE(goTo(unchanged(third)));
    screen.press(QStringLiteral("alt+i"));
    EXPECT_TRUE(becomesActive(settingsSheet)) << "the strip does not offer to add a meeting";
}

INSTANTIATE_TEST_SUITE_P(All, Editors, testing::Values(olderHost, newerHost), nameOf);

} // namespace e2e
