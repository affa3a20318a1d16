#include "platform/Literals.h"
#include "standin/meetingclient/AnswerRules.h"

#include <gtest/gtest.h>

using namespace meetingclient;

namespace {

const Answer scheduled{Operation::Schedule, u"840000017;You are invited; come"_s};
const QString ends = u"(ends)"_s;

class RulesTest : public testing::Test {
protected:
    QStringList plan() {
        const std::optional<QList<PlannedAnswer>> planned = rules.plan(scheduled);
        if (!planned)
            return {ends};
        QStringList contents;
        for (const PlannedAnswer &one : *planned)
            contents << (one.delayMilliseconds ? u"%1: "_s.arg(one.delayMilliseconds) : QString()) +
                            one.answer.content;
        return contents;
    }
    AnswerRules rules;
};

} // namespace

TEST_F(RulesTest, EachDoesToTheNextAnswersWhatItSays) {
    const QString sent = scheduled.content;
    const struct {
        QStringList rules;
        QStringList first; // answers to a schedule request
        QStringList again; // and to the next one
    } cases[] = {
        {{}, {sent}, {sent}},
        {{"drop schedule"}, {}, {}},
        {{"drop get"}, {sent}, {sent}},
        {{"drop any", "clear"}, {sent}, {sent}},
        {{"once error any 0;Error 3001"}, {"0;Error 3001"}, {sent}},
        // Only what surrounds the whole line is trimmed.
        {{"error schedule 0;Error  two blanks "}, {"0;Error  two blanks"}, {"0;Error  two blanks"}},
        {{"once repeat schedule 3"}, {sent, sent, sent}, {sent}},
        // Delays add up, and repetitions share them.
        {{"delay any 200", "once delay schedule 50", "once repeat schedule 2"},
         {u"250: "_s + sent, u"250: "_s + sent},
         {u"200: "_s + sent}},
        {{"once reorder schedule"}, {}, {sent, sent}},
        {{"once quit schedule"}, {ends}, {sent}},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(qPrintable(test.rules.join(u' ')));
        rules = AnswerRules();
        for (const QString &line : test.rules)
            EXPECT_TRUE(rules.add(line));
        EXPECT_EQ(plan(), test.first);
        EXPECT_EQ(plan(), test.again);
    }
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
