#include "tests/faults/Script.h"

namespace faults {

namespace {

struct Choice {
    int weight;
    const char
        *line; // A: an appointment, W: a new word, M: minutes, R: a rule, O: an operation, I: an action
    bool whenFair = true;
};

const Choice choices[] = {
    {10, "open A"},
    {1, "new plain"},
    {1, "new video"},
    {1, "new audio"},
    {3, "front A"},
    {12, "strip A add"},
    {4, "strip A remove"},
    {6, "strip A settings"},
    {2, "audio A 1"},
    {1, "audio A 2"},
    {12, "sheet ok"},
    {2, "sheet cancel"},
    {1, "sheet escape"},
    {1, "sheet videoHostMatrixOff"},
    {1, "sheet bothButton"},
    {1, "sheet enableJBHButton"},
    {1, "sheet usePMI"},
    {1, "sheet telephonyButton"},
    {1, "sheet voipButton"},
    {1, "sheet requiredMeetingPswButton"},
    {1, "order user u-1002"},
    {1, "order user u-1001"},
    {1, "order accounts one"},
    {1, "order accounts two"},
    {1, "order accounts disabled"},
    {1, "order accounts odd"},
    {1, "order bosses kim@parlo.example"},
    {1, "order bosses none"},
    {1, "sheet notShowMeAgain"},
    {4, "subject A W"},
    {1, "subject A"},
    {4, "place A W"},
    {5, "body A W"},
    {4, "later A M"},
    {1, "from A 1"},
    {1, "from A 0"},
    {10, "save A"},
    {4, "saveclose A"},
    {5, "send A"},
    {4, "close A"},
    {1, "delete A"},
    {3, "question saveChangesButton"},
    {2, "question discardChangesButton"},
    {2, "question keepEditingButton"},
    {2, "question sendAnywayButton"},
    {3, "question deleteConfirmButton"},
    {1, "question deleteSeriesButton"},
    {8, "alert escape"},
    {3, "alert default"},
    {6, "move A M"},
    {4, "resize A M"},
    {4, "rename A W"},
    {2, "menu delete A"},
    {1, "menu cancel A"},
    {1, "menu undo"},
    {1, "menu redo"},
    {1, "start video"},
    {1, "start share"},
    {5, "wait 1"},
    {3, "wait 31"},
    {6, "rule once R", false},
    {6, "rule once delay O 2000", false},
    {1, "rule once delay O 40000", false},
    {1, "rule R", false},
    {1, "client quits", false},
    {2, "client restarts", false},
    {1, "client uninstalled", false},
    {1, "client old", false},
    {1, "signed out", false},
    {1, "forget A", false},
    {2, "forge-meeting A", false},
    {1, "forge I forged-1;An invitation https://meetings.parlo.example/j/1", false},
    {1, "forge I 0;Error 3001", false},
    {1, "forge I ;;;;;;;;;;;;;e30=;", false},
    {1, "forge I {\"roomMeetingId\":\"77\",\"userID\":\"somebody\"}", false},
    {1, "forge 77777777777777777777 what", false},
};

const QStringList operations{
    QStringLiteral("schedule"), QStringLiteral("update"),   QStringLiteral("delete"), QStringLiteral("get"),
    QStringLiteral("profile"),  QStringLiteral("accounts"), QStringLiteral("any")};
const QStringList rules{QStringLiteral("delay %1 500"),
                        QStringLiteral("repeat %1 3"),
                        QStringLiteral("drop %1"),
                        QStringLiteral("repeat %1 2"),
                        QStringLiteral("reorder %1"),
                        QStringLiteral("corrupt %1 truncate"),
                        QStringLiteral("corrupt %1 flip"),
                        QStringLiteral("corrupt %1 nul"),
                        QStringLiteral("corrupt %1 empty"),
                        QStringLiteral("corrupt %1 json"),
                        QStringLiteral("corrupt %1 base64"),
                        QStringLiteral("error %1 0;Error 3001"),
                        QStringLiteral("error %1 0;Error 2"),
                        QStringLiteral("error %1 0;Error VelaClientNotSignIn"),
                        QStringLiteral("error %1 0;Something else")};
const QStringList actionIDs{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                            QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("9")};
const QStringList minutes{QStringLiteral("30"), QStringLiteral("-30"), QStringLiteral("60"),
                          QStringLiteral("15")};

const QStringList weathers{QStringLiteral("calm"), QStringLiteral("busy"), QStringLiteral("stormy")};

// What puts right again what does not pass by itself.
const QMap<QString, QString> remedies{
    {QStringLiteral("client quits"), QStringLiteral("client runs")},
    {QStringLiteral("client uninstalled"), QStringLiteral("client installed")},
    {QStringLiteral("client old"), QStringLiteral("client installed")},
    {QStringLiteral("signed out"), QStringLiteral("signed in")}};
constexpr int chanceOfFault = 40;  // of a hundred
constexpr int chanceOfRemedy = 15; // of a hundred
constexpr int chanceOfOpenOne = 90;
constexpr int mostEditors = 3;

} // namespace

QString Script::text() const {
    return QStringLiteral("host %1\nweather %2\n%3\n")
        .arg(hostVersion, weathers[int(weather)], lines.join(u'\n'));
}

Script Script::parse(const QString &text) {
    Script script;
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u"host "))
            script.hostVersion = line.mid(5);
        else if (line.startsWith(u"weather "))
            script.weather = Weather(std::max<qsizetype>(0, weathers.indexOf(line.mid(8))));
        else if (!line.startsWith(u'#'))
            script.lines.append(line.trimmed());
    }
    return script;
}

bool isCalm(const QString &line, const Desktop &desktop) {
    static const QStringList besides{QStringLiteral("open"),   QStringLiteral("new"),
                                     QStringLiteral("move"),   QStringLiteral("resize"),
                                     QStringLiteral("rename"), QStringLiteral("menu")};
    return desktop.writings().isEmpty() || !besides.contains(line.section(u' ', 0, 0));
}

bool isFault(const QString &line) {
    static const QStringList verbs{QStringLiteral("rule"),          QStringLiteral("client"),
                                   QStringLiteral("signed"),        QStringLiteral("forge"),
                                   QStringLiteral("forge-meeting"), QStringLiteral("forget")};
    return verbs.contains(line.section(u' ', 0, 0));
}

Chooser::Chooser(quint64 seed, Weather weather)
    : m_dice(seed)
    , m_weather(weather) {
    m_hostVersion = m_dice.oneOf({QStringLiteral("14.1.4"), QStringLiteral("15.8"), QStringLiteral("15.9"),
                                  QStringLiteral("16"), QStringLiteral("16")});
}

QString Chooser::word() {
    return QStringLiteral("w%1x").arg(++m_words);
}

// What is done in editors is mostly done in those that are open.
QString Chooser::appointmentFor(const QString &verb, const Desktop &desktop) {
    static const QStringList onTheCalendar{QStringLiteral("open"), QStringLiteral("move"),
                                           QStringLiteral("resize"), QStringLiteral("rename"),
                                           QStringLiteral("menu")};
    const auto &open = desktop.writings();
    if (open.isEmpty() || onTheCalendar.contains(verb) || !m_dice.chance(chanceOfOpenOne))
        return m_dice.oneOf(desktop.appointments());
    return open[m_dice.below(int(open.size()))].appointment;
}

QString Chooser::filled(QString line, const Desktop &desktop) {
    QStringList words = line.split(u' ');
    for (QString &word : words) {
        if (word == u"A")
            word = appointmentFor(words.first(), desktop);
        else if (word == u"W")
            word = this->word();
        else if (word == u"M")
            word = m_dice.oneOf(minutes);
        else if (word == u"O")
            word = m_dice.oneOf(operations);
        else if (word == u"I")
            word = m_dice.oneOf(actionIDs);
        else if (word == u"R")
            word = m_dice.oneOf(rules).arg(m_dice.oneOf(operations));
    }
    return words.join(u' ');
}

QString Chooser::next(const Desktop &desktop) {
    const bool calm = m_weather == Weather::Calm;
    const bool fair = m_weather != Weather::Stormy;
    if (!m_remedy.isEmpty() && m_dice.chance(chanceOfRemedy))
        return std::exchange(m_remedy, QString());
    int sum = 0;
    for (const Choice &choice : choices)
        sum += fair && !choice.whenFair ? 0 : choice.weight;
    int place = m_dice.below(sum);
    for (const Choice &choice : choices) {
        if (fair && !choice.whenFair)
            continue;
        place -= choice.weight;
        if (place >= 0)
            continue;
        const QString line = filled(QLatin1String(choice.line), desktop);
        const QString remedy = line.startsWith(u"rule") && !line.startsWith(u"rule once")
                                   ? QStringLiteral("rule clear")
                                   : remedies.value(line);
        const bool tooMany = line.startsWith(u"open") && desktop.writings().size() >= mostEditors;
        // Most of what the person wants cannot be done just now; what goes wrong always can.
        const bool tooOften = isFault(line) && !m_dice.chance(chanceOfFault);
        if (tooMany || tooOften || (calm && !isCalm(line, desktop)) ||
            (!remedy.isEmpty() && !m_remedy.isEmpty()))
            return {};
        if (!remedy.isEmpty())
            m_remedy = remedy;
        return line;
    }
    return {};
}

} // namespace faults
