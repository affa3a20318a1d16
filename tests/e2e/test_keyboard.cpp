// Whatever the plug-in shows and takes away again, the keyboard goes on reaching the window below it.
#include "tests/e2e/Desktop.h"

namespace e2e {

namespace {

class KeyboardAlone : public Desktop {};
class KeyboardAfterSettings : public Desktop {};
class KeyboardAfterDrag : public Desktop {};

constexpr int updateAnswer = 2;

} // namespace

TEST_P(KeyboardAlone, AddsOneMeetingAfterAnother) {
    QStringList subjects{QStringLiteral("First")};
    if (GetParam().client == Client::AnswersAtOnce)
        subjects.append(QStringLiteral("Second"));
    for (const QString &subject : subjects) {
        const QString uid = subject.toLower();
        const QString typed = subject + QStringLiteral(" again");
        ASSERT_NO_FATAL_FAILURE(open(subject));
        ASSERT_NO_FATAL_FAILURE(addMeeting(subject));
        ASSERT_NO_FATAL_FAILURE(save(subject)) << "the keyboard is dead";
        EXPECT_FALSE(meetingKeyInFile(uid).isEmpty());
        typeSubject(typed);
        ASSERT_TRUE(becomesActive(changed(typed)));
        ASSERT_NO_FATAL_FAILURE(save(typed));
        EXPECT_EQ(subjectInFile(uid), typed);
        ASSERT_NO_FATAL_FAILURE(close(typed));
        ASSERT_TRUE(becomesActive(calendar));
    }
    EXPECT_EQ(requests(QStringLiteral("1;")).size(), subjects.size());
}

TEST_P(KeyboardAfterSettings, TypesIntoTheEditor) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(QStringLiteral("First")));
    ASSERT_TRUE(becomesActive(calendar));
    ASSERT_NO_FATAL_FAILURE(openSelected(QStringLiteral("First")));
    screen.press(QStringLiteral("alt+s"));
    ASSERT_TRUE(becomesActive(settingsSheet));
    screen.press(QStringLiteral("Return"));
    ASSERT_TRUE(becomesActive(changed(QStringLiteral("First"))));
    for (const QString &typed : {QStringLiteral("Changed"), QStringLiteral("Changed again")}) {
        typeSubject(typed);
        ASSERT_TRUE(becomesActive(changed(typed)));
        ASSERT_NO_FATAL_FAILURE(save(typed));
    }
    EXPECT_TRUE(waitFor([this] { return answers(updateAnswer) == 2; }));
}

TEST_P(KeyboardAfterDrag, RenamesTheTile) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(QStringLiteral("First")));
    ASSERT_TRUE(becomesActive(calendar));
    const QDateTime before = startInFile(QStringLiteral("first"));
    const QPoint tile = selectedTile();
    ASSERT_FALSE(tile.isNull());
    screen.drag(tile, tile - QPoint(0, 60));
    ASSERT_TRUE(waitFor([&] { return startInFile(QStringLiteral("first")) < before; }));
    ASSERT_TRUE(waitFor([this] { return answers(updateAnswer) == 1; }));
    ASSERT_TRUE(becomesActive(calendar));
    screen.press(QStringLiteral("F2"));
    screen.press(QStringLiteral("ctrl+a"));
    screen.type(QStringLiteral("Dragged"));
    screen.press(QStringLiteral("Return"));
    EXPECT_TRUE(
        waitFor([this] { return subjectInFile(QStringLiteral("first")) == QStringLiteral("Dragged"); }));
}

// Late answers take their time: each generation of the host waits for some of them.
INSTANTIATE_TEST_SUITE_P(All, KeyboardAlone,
                         testing::Values(olderHost, newerHost, olderHostLateAnswers, newerHostLateAnswers),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(All, KeyboardAfterSettings,
                         testing::Values(olderHost, newerHost, olderHostLateAnswers), nameOf);
INSTANTIATE_TEST_SUITE_P(All, KeyboardAfterDrag, testing::Values(olderHost, newerHost, newerHostLateAnswers),
                         nameOf);

} // namespace e2e
