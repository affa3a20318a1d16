#include "tests/simulation/Script.h"

#include "plugin/ui/strip/vlActionAdditionView.h"

#include <QApplication>
#include <QMessageBox>

namespace simulation {

namespace {

struct Choice {
    int weight;
    const char
        *line; // A: an appointment, W: a new word, M: minutes, R: a rule, O: an operation, I: an action
    Conditions from = Conditions::Calm;
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
    {6, "rule once R", Conditions::Stormy},
    {2, "disk full"},
    {6, "rule once delay O 2000", Conditions::Slow},
    {6, "rule delay O 2500", Conditions::Slow},
    {2, "rule once reorder O", Conditions::Slow},
    {4, "wait 3", Conditions::Slow},
    {1, "rule once delay O 40000", Conditions::Stormy},
    {1, "rule R", Conditions::Stormy},
    {1, "client quits", Conditions::Stormy},
    {2, "client restarts", Conditions::Stormy},
    {1, "client uninstalled", Conditions::Stormy},
    {1, "client old", Conditions::Stormy},
    {1, "signed out", Conditions::Stormy},
    {1, "forget A", Conditions::Stormy},
    {2, "forge-meeting A", Conditions::Stormy},
    {1, "forge I forged-1;An invitation https://meetings.parlo.example/j/1", Conditions::Stormy},
    {1, "forge I 0;Error 3001", Conditions::Stormy},
    {1, "forge I ;;;;;;;;;;;;;e30=;", Conditions::Stormy},
    {1, "forge I {\"roomMeetingId\":\"77\",\"userID\":\"somebody\"}", Conditions::Stormy},
    {1, "forge 77777777777777777777 what", Conditions::Stormy},
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

const QStringList conditionNames{QStringLiteral("calm"), QStringLiteral("slow"), QStringLiteral("stormy")};

// What puts right again what does not pass by itself.
const QMap<QString, QString> remedies{
    {QStringLiteral("disk full"), QStringLiteral("disk free")},
    {QStringLiteral("client quits"), QStringLiteral("client runs")},
    {QStringLiteral("client uninstalled"), QStringLiteral("client installed")},
    {QStringLiteral("client old"), QStringLiteral("client installed")},
    {QStringLiteral("signed out"), QStringLiteral("signed in")}};
constexpr int chanceOfFault = 40;  // of a hundred
constexpr int chanceOfRemedy = 15; // of a hundred
constexpr int chanceOfOpenOne = 90;
constexpr int chanceOfPurpose = 65;
constexpr int mostEditors = 3;

// What a user who wants something does next. Nobody wants the same in two places at once.
QStringList purposes(const Desktop &desktop) {
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!isReachable(window))
            continue;
        if (qobject_cast<const QMessageBox *>(window) && window->objectName().isEmpty())
            return {QStringLiteral("alert escape"), QStringLiteral("alert default")};
        if (window->findChild<QWidget *>(QStringLiteral("buttonContinue")))
            return {QStringLiteral("sheet ok")};
    }
    QStringList lines;
    for (const Editor &editor : desktop.editors()) {
        const vlActionAdditionView *strip = roads::Desk::stripOf(editor.window);
        const QString &name = editor.appointment;
        const bool isAttached = strip && strip->uiStatus() == StripState::MeetingAttached;
        if (!isReachable(editor.window))
            continue;
        if (!isAttached)
            lines += QStringLiteral("strip %1 add").arg(name);
        else if (!editor.window->viewController()->isDirty())
            lines += {QStringLiteral("subject %1 W").arg(name), QStringLiteral("later %1 M").arg(name),
                      QStringLiteral("body %1 W").arg(name), QStringLiteral("strip %1 settings").arg(name)};
        else if (name == u"invited")
            lines += QStringLiteral("send %1").arg(name);
        else
            lines += {QStringLiteral("save %1").arg(name), QStringLiteral("save %1").arg(name),
                      QStringLiteral("saveclose %1").arg(name)};
    }
    if (desktop.editors().size() < 2)
        lines += QStringLiteral("open A");
    if (desktop.onDisk())
        for (auto it = desktop.onDisk()->begin(); it != desktop.onDisk()->end(); ++it)
            if (!it->ucCapabilities.isEmpty())
                lines +=
                    {QStringLiteral("move %1 M").arg(it.key()), QStringLiteral("rename %1 W").arg(it.key())};
    return lines;
}

} // namespace

QString Script::text() const {
    return QStringLiteral("host %1\nconditions %2\n%3\n")
        .arg(hostVersion, conditionNames[int(conditions)], lines.join(u'\n'));
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

bool isFault(const QString &line) {
    static const QStringList verbs{QStringLiteral("rule"),  QStringLiteral("client"),
                                   QStringLiteral("disk"),  QStringLiteral("signed"),
                                   QStringLiteral("forge"), QStringLiteral("forge-meeting"),
                                   QStringLiteral("forget")};
    return verbs.contains(line.section(u' ', 0, 0));
}

Generator::Generator(quint64 seed, Conditions conditions)
    : m_random(seed)
    , m_conditions(conditions) {
    m_hostVersion = m_random.oneOf({QStringLiteral("14.1.4"), QStringLiteral("15.8"), QStringLiteral("15.9"),
                                    QStringLiteral("16"), QStringLiteral("16")});
}

// What is done in editors is mostly done in those that are open.
QString Generator::appointmentFor(const QString &verb, const Desktop &desktop) {
    static const QStringList onTheCalendar{QStringLiteral("open"), QStringLiteral("move"),
                                           QStringLiteral("resize"), QStringLiteral("rename"),
                                           QStringLiteral("menu")};
    const auto &open = desktop.editors();
    if (open.isEmpty() || onTheCalendar.contains(verb) || !m_random.chance(chanceOfOpenOne))
        return m_random.oneOf(desktop.appointments());
    return open[m_random.below(int(open.size()))].appointment;
}

QString Generator::filled(QString line, const Desktop &desktop) {
    QStringList words = line.split(u' ');
    for (QString &word : words) {
        if (word == u"A")
            word = appointmentFor(words.first(), desktop);
        else if (word == u"W")
            word = QStringLiteral("w%1x").arg(++m_words);
        else if (word == u"M")
            word = m_random.oneOf(minutes);
        else if (word == u"O")
            word = m_random.oneOf(operations);
        else if (word == u"I")
            word = m_random.oneOf(actionIDs);
        else if (word == u"R")
            word = m_random.oneOf(rules).arg(m_random.oneOf(operations));
    }
    return words.join(u' ');
}

QString Generator::next(const Desktop &desktop) {
    if (!m_remedy.isEmpty() && m_random.chance(chanceOfRemedy))
        return std::exchange(m_remedy, QString());
    const QStringList wanted = m_random.chance(chanceOfPurpose) ? purposes(desktop) : QStringList();
    return wanted.isEmpty() ? anything(desktop) : filled(m_random.oneOf(wanted), desktop);
}

QString Generator::anything(const Desktop &desktop) {
    int sum = 0;
    for (const Choice &choice : choices)
        sum += m_conditions < choice.from ? 0 : choice.weight;
    int place = m_random.below(sum);
    for (const Choice &choice : choices) {
        if (m_conditions < choice.from)
            continue;
        place -= choice.weight;
        if (place >= 0)
            continue;
        const QString line = filled(QLatin1String(choice.line), desktop);
        const QString remedy = line.startsWith(u"rule") && !line.startsWith(u"rule once")
                                   ? QStringLiteral("rule clear")
                                   : remedies.value(line);
        const bool tooMany = line.startsWith(u"open") && desktop.editors().size() >= mostEditors;
        // Most of what the user wants cannot be done just now; what goes wrong always can.
        const bool tooOften = isFault(line) && !m_random.chance(chanceOfFault);
        if (tooMany || tooOften || (!remedy.isEmpty() && !m_remedy.isEmpty()))
            return {};
        if (!remedy.isEmpty())
            m_remedy = remedy;
        return line;
    }
    return {};
}

} // namespace simulation
