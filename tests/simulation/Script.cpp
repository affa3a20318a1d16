#include "tests/simulation/Script.h"

#include <random>

namespace simulation {

namespace {

// How often, and the line. A: an appointment, W: a new word, M: minutes, R: a rule, O: an operation, I: an
// action. Each text is for its conditions and for worse ones.
const char *const choices[] = {
    // prompt
    "10 open A|1 new plain|1 new video|1 new audio|3 front A|12 strip A add|4 strip A remove|"
    "6 strip A settings|2 audio A 1|1 audio A 2|12 sheet ok|2 sheet cancel|1 sheet escape|"
    "1 sheet videoHostMatrixOff|1 sheet bothButton|1 sheet enableJBHButton|1 sheet usePMI|"
    "1 sheet telephonyButton|1 sheet voipButton|1 sheet requiredMeetingPswButton|"
    "1 order user u-1002|1 order user u-1001|1 order accounts one|1 order accounts two|"
    "1 order accounts disabled|1 order accounts odd|1 order bosses kim@parlo.example|"
    "1 order bosses none|1 sheet notShowMeAgain|4 subject A W|1 subject A|4 place A W|"
    "5 body A W|4 later A M|1 from A 1|1 from A 0|10 save A|4 saveclose A|5 send A|4 close A|"
    "1 delete A|3 question saveChangesButton|2 question discardChangesButton|"
    "2 question keepEditingButton|2 question sendAnywayButton|3 question deleteConfirmButton|"
    "1 question deleteSeriesButton|8 alert escape|3 alert default|3 menu later A|3 menu earlier A|2 menu "
    "longer A|2 menu shorter A|"
    "4 rename A W|2 menu delete A|1 menu cancel A|1 menu undo|1 menu redo|"
    "5 wait 1|3 wait 31|2 disk full",
    // slow
    "6 rule once delay O 2000|6 rule delay O 2500|2 rule once reorder O|4 wait 3",
    // faulty
    "6 rule once R|1 rule once delay O 40000|1 rule R|1 client quits|2 client restarts|"
    "1 client uninstalled|1 client old|1 signed out|1 forget A|2 forge-meeting A|"
    "1 forge I forged-1;An invitation https://meetings.parlo.example/j/1|"
    "1 forge I 0;Error 3001|1 forge I ;;;;;;;;;;;;;e30=;|"
    "1 forge I {\"roomMeetingId\":\"77\",\"userID\":\"somebody\"}|"
    "1 forge 77777777777777777777 what"};

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u'|');
}

const QStringList operations = words("schedule|update|delete|get|profile|accounts|any");
// What takes the place of a letter.
const QMap<QString, QStringList> fillings{
    {u"M"_s, words("30|-30|60|15")},
    {u"O"_s, operations},
    {u"I"_s, words("1|2|3|4|6|9")},
    {u"R"_s, words("delay %1 500|repeat %1 3|drop %1|repeat %1 2|reorder %1|corrupt %1 truncate|"
                   "corrupt %1 flip|corrupt %1 empty|corrupt %1 json|corrupt %1 base64|"
                   "error %1 0;Error 3001|error %1 0;Error 2|error %1 0;Error VelaClientNotSignIn|"
                   "error %1 0;Something else")}};
const QStringList conditionNames = words("prompt|slow|faulty");
const QStringList verbsOnTheCalendar = words("open|rename|menu");
// What brings a fault about at the client or on the disk.
const QStringList verbsOfFaults = words("rule|client|disk|signed|forge|forge-meeting|forget");

// What puts right again what does not pass by itself.
const QMap<QString, QString> remedies{{u"disk full"_s, u"disk free"_s},
                                      {u"client quits"_s, u"client runs"_s},
                                      {u"client uninstalled"_s, u"client installed"_s},
                                      {u"client old"_s, u"client installed"_s},
                                      {u"signed out"_s, u"signed in"_s}};
constexpr int chanceOfRemedy = 15; // of a hundred
constexpr int chanceOfOpenOne = 90;
constexpr int chanceOfPurpose = 65;
constexpr int mostEditors = 3;
constexpr int triesForAStep = 200; // lines that cannot be done cost nothing

// What a user who wants something does next. Nobody wants the same in two places at once.
QStringList purposes(const Desktop &desktop) {
    bool hasAlert = false;
    bool hasSheet = false;
    for (const QWidget *window : QApplication::topLevelWidgets()) { // in another order on every run
        if (!qobject_cast<const QDialog *>(window) || !isReachable(window))
            continue;
        hasAlert |= isAlert(qobject_cast<const QMessageBox *>(window));
        hasSheet |= window->findChild<QWidget *>(u"buttonContinue"_s) != nullptr;
    }
    if (hasAlert)
        return {u"alert escape"_s, u"alert default"_s};
    if (hasSheet)
        return {u"sheet ok"_s};
    QStringList lines;
    for (const Editor &editor : desktop.editors()) {
        const vlActionAdditionView *strip = scenarios::Scenario::stripOf(editor.window);
        const QString &name = editor.appointment;
        const bool isAttached = strip && strip->uiStatus() == StripState::MeetingAttached;
        if (!isReachable(editor.window))
            continue;
        if (!isAttached)
            lines += u"strip %1 add"_s.arg(name);
        else if (!editor.window->viewController()->isDirty())
            lines += {u"subject %1 W"_s.arg(name), u"later %1 M"_s.arg(name), u"body %1 W"_s.arg(name),
                      u"strip %1 settings"_s.arg(name)};
        else if (name == u"invited")
            lines += u"send %1"_s.arg(name);
        else
            lines += {u"save %1"_s.arg(name), u"save %1"_s.arg(name), u"saveclose %1"_s.arg(name)};
    }
    if (desktop.editors().size() < 2)
        lines += u"open A"_s;
    if (desktop.onDisk())
        for (auto it = desktop.onDisk()->begin(); it != desktop.onDisk()->end(); ++it)
            if (!it->ucCapabilities.isEmpty())
                lines += {u"menu later %1"_s.arg(it.key()), u"rename %1 W"_s.arg(it.key())};
    return lines;
}

// Chooses what may come next; most of it can be done, not all.
class Generator {
public:
    Generator(quint64 seed, Conditions conditions)
        : m_random(seed)
        , m_hostVersion(oneOf(words("14.1.4|15.8|15.9|16|16"))) {
        for (int level = 0; level <= int(conditions); ++level)
            for (const QString &choice : words(choices[level]))
                for (int n = choice.section(u' ', 0, 0).toInt(); n > 0; --n)
                    m_choices += choice.section(u' ', 1);
    }
    [[nodiscard]] const QString &hostVersion() const { return m_hostVersion; }

    // The next line that can be done, done; an empty one when there is none.
    QString performNext(Desktop &desktop) {
        for (int attempt = 0; attempt < triesForAStep; ++attempt)
            if (const QString line = next(desktop); desktop.perform(line))
                return line;
        return {};
    }

private:
    // An empty text when the choice cannot be done now.
    QString next(const Desktop &desktop) {
        if (!m_remedy.isEmpty() && chance(chanceOfRemedy))
            return std::exchange(m_remedy, QString());
        const QStringList wanted = chance(chanceOfPurpose) ? purposes(desktop) : QStringList();
        return wanted.isEmpty() ? anything(desktop) : filled(oneOf(wanted), desktop);
    }
    QString anything(const Desktop &desktop) {
        const QString line = filled(oneOf(m_choices), desktop);
        const bool isRule = line.startsWith(u"rule") && !line.startsWith(u"rule once");
        const QString remedy = isRule ? u"rule clear"_s : remedies.value(line);
        const bool tooMany = line.startsWith(u"open") && desktop.editors().size() >= mostEditors;
        if (tooMany || (!remedy.isEmpty() && !m_remedy.isEmpty()))
            return {};
        if (!remedy.isEmpty())
            m_remedy = remedy;
        return line;
    }
    QString filled(const QString &line, const Desktop &desktop) {
        QStringList parts = line.split(u' ');
        for (QString &word : parts) {
            if (word == u"A")
                word = appointmentFor(parts.first(), desktop);
            else if (word == u"W")
                word = u"w%1x"_s.arg(++m_words);
            else if (fillings.contains(word))
                word = oneOf(fillings[word]);
            if (word.contains(u"%1"))
                word = word.arg(oneOf(operations));
        }
        return parts.join(u' ');
    }
    // What is done in editors is mostly done in those that are open.
    QString appointmentFor(const QString &verb, const Desktop &desktop) {
        const auto &open = desktop.editors();
        if (open.isEmpty() || verbsOnTheCalendar.contains(verb) || !chance(chanceOfOpenOne))
            return oneOf(desktop.appointments());
        return open[below(int(open.size()))].appointment;
    }
    int below(int end) { return int(m_random() % quint64(end)); } // the same on every system
    bool chance(int percent) { return below(100) < percent; }
    QString oneOf(const QStringList &list) { return list[below(int(list.size()))]; }

    std::mt19937_64 m_random;
    const QString m_hostVersion;
    QStringList m_choices; // each as often as it is to come
    QString m_remedy;      // for what is wrong with client or disk, one thing at a time
    int m_words = 0;
};

void count(const Step &step, Figures &figures) {
    ++figures.steps;
    for (const Message &message : step.messages)
        ++(message.isAnswer ? figures.answers : figures.requests);
    figures.faults += verbsOfFaults.contains(step.line.section(u' ', 0, 0)) ? 1 : 0;
    const int asked = step.timesSent(Operation::Get) + step.timesSent(Operation::Update) +
                      step.timesSent(Operation::Delete);
    figures.held += step.pressed && asked > 0 ? 1 : 0;
}

// Two things that go wrong are the same when their sentences differ in words and numbers only.
QString kindOf(const QString &wrong) {
    QString kind = wrong.section(u':', 0, 0);
    static const QRegularExpression numbers(u"w?[0-9]+x?|plain|invited|other|series"_s);
    return kind.replace(numbers, u"*"_s);
}

} // namespace

QString Script::text() const {
    return u"host %1\nconditions %2\n%3\n"_s.arg(hostVersion, conditionNames[int(conditions)],
                                                 lines.join(u'\n'));
}

Script Script::parse(const QString &text) {
    Script script;
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u"host "))
            script.hostVersion = line.mid(5);
        else if (line.startsWith(u"conditions "))
            script.conditions = Conditions(std::max<qsizetype>(0, conditionNames.indexOf(line.mid(11))));
        else if (!line.startsWith(u'#'))
            script.lines.append(line.trimmed());
    }
    return script;
}

Run runRandomly(quint64 seed, int steps, Figures *figures) {
    constexpr Conditions all[] = {Conditions::Prompt, Conditions::Faulty, Conditions::Slow,
                                  Conditions::Faulty};
    const Conditions conditions = all[seed % std::size(all)];
    Generator generator(seed, conditions);
    Run run{{generator.hostVersion(), conditions}};
    Desktop desktop(generator.hostVersion());
    Invariants invariants(desktop, conditions);
    ++figures->runs;
    while (run.script.lines.size() < steps && run.wrong.isNull()) {
        const QString line = generator.performNext(desktop);
        if (line.isEmpty())
            break;
        run.script.lines.append(line);
        count(desktop.step(), *figures);
        run.wrong = invariants.whatIsWrong();
    }
    return run;
}

Run runAgain(const Script &script) {
    Run run{{script.hostVersion, script.conditions}};
    Desktop desktop(script.hostVersion);
    Invariants invariants(desktop, script.conditions);
    for (const QString &line : script.lines) {
        if (!run.wrong.isNull() || !desktop.perform(line))
            continue;
        run.script.lines.append(line);
        run.wrong = invariants.whatIsWrong();
    }
    return run;
}

// Halves first, then smaller pieces, down to single lines, until none can go.
Script shortened(const Run &run) {
    Script best = run.script;
    for (qsizetype piece = best.lines.size() / 2; piece >= 1; piece = piece > 1 ? piece / 2 : 0) {
        for (qsizetype at = 0; at < best.lines.size();) {
            Script candidate = best;
            candidate.lines.remove(at, std::min(piece, best.lines.size() - at));
            const Run again = runAgain(candidate);
            if (kindOf(again.wrong) == kindOf(run.wrong))
                best = again.script;
            else
                at += piece;
        }
    }
    return best;
}

} // namespace simulation
