#include "standin/meetingclient/AnswerRules.h"

#include <QHash>

namespace meetingclient {

namespace {

constexpr int longestDelay = 3'600'000;
constexpr int mostRepetitions = 100;
constexpr int hugeLength = 4 * 1024 * 1024;

const QStringList kinds = {"delay", "drop", "repeat", "reorder", "corrupt", "error", "quit"};
const QHash<QString, Operation> operations = {
    {"schedule", Operation::Schedule}, {"update", Operation::Update},   {"delete", Operation::Delete},
    {"get", Operation::Get},           {"profile", Operation::Profile}, {"accounts", Operation::Accounts},
};
const QStringList corruptions = {"truncate", "flip", "nul", "empty", "huge", "json", "base64"};

QString corrupted(const QString &content, const QString &way) {
    if (way == QLatin1String("truncate"))
        return content.left(content.size() / 2);
    if (way == QLatin1String("empty"))
        return u""_s;
    if (way == QLatin1String("huge"))
        return content + QString(hugeLength, u'x');
    if (way == QLatin1String("json"))
        return u"{\"unclosed\": ["_s;
    QString result = content;
    if (way == QLatin1String("nul"))
        return result.insert(result.size() / 2, QChar(0));
    const qsizetype last = result.lastIndexOf(u';');
    if (way == QLatin1String("base64"))
        return result.left(last + 1) + u"%%%not base64%%%"_s;
    for (qsizetype i = result.size() / 3; i < result.size(); i += 97)
        result[i] = QChar(result[i].unicode() ^ 0x11);
    return result;
}

} // namespace

QString AnswerRules::parse(QStringList words, Rule *rule) {
    rule->line = words.join(u' ');
    rule->once = words.value(0) == QLatin1String("once");
    if (rule->once)
        words.removeFirst();
    const qsizetype kind = kinds.indexOf(words.value(0));
    if (kind < 0)
        return u"\"%1\" is not a rule. Rules: %2, clear."_s.arg(words.value(0), kinds.join(u", "));
    rule->kind = Kind(kind);
    if (operations.contains(words.value(1)))
        rule->operation = operations[words[1]];
    else if (words.value(1) != QLatin1String("any"))
        return u"\"%1\" is not an operation. Operations: schedule, update, delete, get, profile, "
               "accounts, any."_s.arg(words.value(1));
    rule->text = words.mid(2).join(u' ');
    bool isNumber = false;
    rule->number = rule->text.toInt(&isNumber);
    if (rule->kind == Kind::Delay && (!isNumber || rule->number < 0 || rule->number > longestDelay))
        return u"A delay is a number of milliseconds from 0 to %1."_s.arg(longestDelay);
    if (rule->kind == Kind::Repeat && (!isNumber || rule->number < 2 || rule->number > mostRepetitions))
        return u"An answer can be repeated 2 to %1 times."_s.arg(mostRepetitions);
    if (rule->kind == Kind::Corrupt && !corruptions.contains(rule->text))
        return u"Ways to corrupt an answer: %1."_s.arg(corruptions.join(u", "));
    return {};
}

bool AnswerRules::add(const QString &line, QString *error) {
    // Only blanks between words are split: the text of an error is kept to the letter.
    const QStringList words = line.trimmed().split(u' ', Qt::KeepEmptyParts);
    if (words.value(0) == QLatin1String("clear")) {
        clear();
        return true;
    }
    Rule rule;
    const QString problem = parse(words, &rule);
    if (problem.isEmpty())
        m_rules.append(rule);
    else if (error)
        *error = problem;
    return problem.isEmpty();
}

QStringList AnswerRules::lines() const {
    QStringList result;
    for (const Rule &rule : m_rules)
        result.append(rule.line);
    return result;
}

std::optional<QList<PlannedAnswer>> AnswerRules::plan(const Answer &answer) {
    QList<PlannedAnswer> answers{{answer, 0}};
    bool hold = false;
    bool quit = false;
    const auto apply = [&](const Rule &rule) {
        switch (rule.kind) {
        case Kind::Delay:
            for (PlannedAnswer &planned : answers)
                planned.delayMilliseconds += rule.number;
            break;
        case Kind::Drop:
            answers.clear();
            break;
        case Kind::Repeat:
            if (!answers.isEmpty())
                answers.insert(answers.size(), rule.number - 1, answers.last());
            break;
        case Kind::Reorder:
            hold = true;
            break;
        case Kind::Corrupt:
            for (PlannedAnswer &planned : answers)
                planned.answer.content = corrupted(planned.answer.content, rule.text);
            break;
        case Kind::Error:
            for (PlannedAnswer &planned : answers)
                planned.answer.content = rule.text;
            break;
        case Kind::Quit:
            quit = true;
            break;
        }
    };
    m_rules.removeIf([&](const Rule &rule) {
        if (rule.operation && *rule.operation != answer.operation)
            return false;
        apply(rule);
        return rule.once;
    });
    if (quit)
        return std::nullopt;
    if (hold) {
        m_held += answers;
        return QList<PlannedAnswer>();
    }
    return answers + std::exchange(m_held, {});
}

} // namespace meetingclient
