// Rules that delay, drop or damage the client's answers, so that a plug-in's behaviour under faults can be
// seen.
#pragma once

#include "standin/meetingclient/MeetingService.h"

#include <QStringList>

namespace meetingclient {

// One answer as it will be sent, and when.
struct PlannedAnswer {
    Answer answer;
    int delayMilliseconds = 0;
};

// Rules, one line of words each:
//
//   delay   <operation> <milliseconds>   answers that much later
//   drop    <operation>                  does not answer
//   repeat  <operation> <times>          answers that many times in all (2 to 100)
//   reorder <operation>                  holds the answer back until another one has gone out
//   corrupt <operation> <way>            truncate, flip, nul, empty, huge, json, base64
//   error   <operation> <text>           answers that text to the letter
//   quit    <operation>                  the client ends itself instead of answering
//   clear                                forgets all rules
//
// <operation>: schedule, update, delete, get, profile, accounts, any. A rule with "once" before
// it applies only to the next matching request. Later rules are applied after earlier ones.
class AnswerRules {
public:
    // Returns false, with a sentence in `error`, and changes nothing if the line is not a rule.
    bool add(const QString &line, QString *error = nullptr);
    void clear() { m_rules.clear(); }
    [[nodiscard]] QStringList lines() const;

    // What to send for an answer, in order; may be empty. No value: the client must end itself.
    [[nodiscard]] std::optional<QList<PlannedAnswer>> plan(const Answer &answer);

private:
    enum class Kind { Delay, Drop, Repeat, Reorder, Corrupt, Error, Quit };
    struct Rule {
        Kind kind{};
        std::optional<Operation> operation; // none: any
        int number = 0;
        QString text;
        bool once = false;
        QString line;
    };
    // Fills the rule, or returns a sentence that says why not.
    static QString parse(QStringList words, Rule *rule);
    QList<Rule> m_rules;
    QList<PlannedAnswer> m_held;
};

} // namespace meetingclient
