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
    QStringList subjects{u"First"_s};
    if (GetParam().client == Client::AnswersAtOnce)
        subjects.append(u"Second"_s);
    for (const QString &subject : subjects) {
        const QString uid = subject.toLower();
        const QString typed = subject + u" again"_s;
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
    EXPECT_EQ(requests(u"1;"_s).size(), subjects.size());
}

TEST_P(KeyboardAfterSettings, TypesIntoTheEditor) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(u"First"_s));
    ASSERT_TRUE(becomesActive(calendar));
    ASSERT_NO_FATAL_FAILURE(openSelected(u"First"_s));
    screen.press(u"alt+s"_s);
    ASSERT_TRUE(becomesActive(settingsSheet));
    screen.press(u"Return"_s);
    ASSERT_TRUE(becomesActive(changed(u"First"_s)));
    for (const QString &typed : {u"Changed"_s, u"Changed again"_s}) {
        typeSubject(typed);
        ASSERT_TRUE(becomesActive(changed(typed)));
        ASSERT_NO_FATAL_FAILURE(save(typed));
    }
    EXPECT_TRUE(waitFor([this] { return answers(updateAnswer) == 2; }));
}

TEST_P(KeyboardAfterDrag, RenamesTheTile) {
    ASSERT_NO_FATAL_FAILURE(giveMeeting(u"First"_s));
    ASSERT_TRUE(becomesActive(calendar));
    const QDateTime before = startInFile(u"first"_s);
    const QPoint tile = selectedTile();
    ASSERT_FALSE(tile.isNull());
    screen.drag(tile, tile - QPoint(0, 60));
    ASSERT_TRUE(waitFor([&] { return startInFile(u"first"_s) < before; }));
    ASSERT_TRUE(waitFor([this] { return answers(updateAnswer) == 1; }));
    ASSERT_TRUE(becomesActive(calendar));
    screen.press(u"F2"_s);
    screen.press(u"ctrl+a"_s);
    screen.type(u"Dragged"_s);
    screen.press(u"Return"_s);
    EXPECT_TRUE(waitFor([this] { return subjectInFile(u"first"_s) == u"Dragged"_s; }));
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
