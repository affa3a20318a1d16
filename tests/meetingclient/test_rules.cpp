#include "platform/Literals.h"
#include "standin/meetingclient/AnswerRules.h"

#include <gtest/gtest.h>

using namespace meetingclient;

namespace {

const Answer scheduled{Operation::Schedule, u"840000017;You are invited; come"_s};
const Answer readBack{Operation::Get, u"840000017;;;;;;;;;;;;;e30=;"_s};

QStringList contents(const QList<PlannedAnswer> &planned) {
    QStringList list;
    for (const PlannedAnswer &one : planned)
        list << one.answer.content;
    return list;
}

class RulesTest : public testing::Test {
protected:
    QStringList plan(const Answer &answer) { return contents(rules.plan(answer, &quit)); }
    void given(const char *line) { ASSERT_TRUE(rules.add(QString::fromLatin1(line))) << line; }
    AnswerRules rules;
    bool quit = false;
};

} // namespace

TEST_F(RulesTest, WithoutRulesTheAnswerGoesOutAsItIs) {
    EXPECT_EQ(plan(scheduled), QStringList{scheduled.content});
}

TEST_F(RulesTest, ARuleTouchesOnlyItsOperation) {
    given("drop schedule");
    EXPECT_TRUE(plan(scheduled).isEmpty());
    EXPECT_EQ(plan(readBack).size(), 1);
}

TEST_F(RulesTest, OnceHoldsForTheNextMatchingRequestAlone) {
    given("once error any 0;Error 3001");
    EXPECT_EQ(plan(scheduled), QStringList{"0;Error 3001"});
    EXPECT_EQ(plan(scheduled), QStringList{scheduled.content});
}

TEST_F(RulesTest, TheTextOfAnErrorIsKeptToTheLetter) {
    given("error schedule 0;Error  two blanks ");
    // Only what surrounds the whole line is trimmed.
    EXPECT_EQ(plan(scheduled), QStringList{"0;Error  two blanks"});
}

TEST_F(RulesTest, DelaysAddUpAndRepetitionsShareThem) {
    given("delay any 200");
    given("delay schedule 50");
    given("repeat schedule 3");
    const QList<PlannedAnswer> planned = rules.plan(scheduled, &quit);
    ASSERT_EQ(planned.size(), 3);
    for (const PlannedAnswer &one : planned)
        EXPECT_EQ(one.delayMilliseconds, 250);
}

TEST_F(RulesTest, AReorderedAnswerFollowsTheNextOneThatGoesOut) {
    given("once reorder schedule");
    EXPECT_TRUE(plan(scheduled).isEmpty());
    EXPECT_EQ(plan(readBack), (QStringList{readBack.content, scheduled.content}));
    EXPECT_EQ(plan(readBack).size(), 1) << "it is sent once";
}

TEST_F(RulesTest, EveryCorruptionChangesTheAnswer) {
    for (const char *way : {"truncate", "flip", "nul", "empty", "huge", "json", "base64"}) {
        rules.clear();
        given(qPrintable(u"corrupt schedule %1"_s.arg(QLatin1String(way))));
        ASSERT_EQ(plan(scheduled).size(), 1) << way;
        EXPECT_NE(plan(scheduled).first(), scheduled.content) << way;
    }
}

TEST_F(RulesTest, QuitAnswersNothingAndSaysSo) {
    given("quit schedule");
    EXPECT_TRUE(plan(scheduled).isEmpty());
    EXPECT_TRUE(quit);
    plan(readBack);
    EXPECT_FALSE(quit);
}

TEST_F(RulesTest, WhatIsNotARuleIsRefusedWithASentenceAndChangesNothing) {
    for (const char *line :
         {"", "dance any", "drop nothing", "delay any", "delay any -1", "delay any soon", "repeat any 1",
          "repeat any 1000000", "corrupt any", "corrupt any nicely", "once"}) {
        QString error;
        EXPECT_FALSE(rules.add(QString::fromLatin1(line), &error)) << line;
        EXPECT_FALSE(error.isEmpty()) << line;
    }
    EXPECT_TRUE(rules.lines().isEmpty());
}
