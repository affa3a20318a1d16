// Runs through a user's actions automatically on the real windows: parlo-walkthrough [--host-version V] OUT
// [my.ics]
#include "platform/Literals.h"
#include "standin/support/OwnRoot.h"
#include "standin/support/PrivateBus.h"
#include "standin/walkthrough/BusFlood.h"
#include "standin/walkthrough/Parts.h"
#include "standin/walkthrough/ResultPage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPalette>
#include <QProcess>
#include <cstdio>

namespace {

const QString versionOption = u"host-version"_s;
const QString languageOption = u"language"_s;
const QString scaleOption = u"scale"_s;
const QString darkOption = u"dark"_s;
const QString stateOption = u"state"_s;
const QString killOption = u"kill"_s;
const QString floodOption = u"flood"_s;
// For the processes that this program starts.
const QString innerOption = u"one-generation"_s;
const QString flooderOption = u"send-flood"_s;
constexpr int exitStepFailed = 1;
constexpr int exitNoBus = 3;
constexpr int exitCrashed = 4;
const QStringList generations = {u"15.8"_s, u"16"_s};

void addOptions(QCommandLineParser &parser) {
    parser.addHelpOption();
    parser.addOption({versionOption, u"Use this generation of the host alone."_s, u"version"_s});
    parser.addOption({languageOption, u"The desktop's language, as \"de\"."_s, u"language"_s, u"en"_s});
    parser.addOption({scaleOption, u"Pixels for each point, in each direction."_s, u"ratio"_s, u"1"_s});
    parser.addOption({darkOption, u"Use a dark palette."_s});
    parser.addOption({stateOption,
                      u"Keep what the programs keep for their user, and begin with what is there."_s,
                      u"folder"_s});
    parser.addOption({killOption,
                      u"Kill host, client, agent or bus when so many messages have gone over the "
                      "bus, as in \"client:7\"; then not every step is expected to succeed."_s,
                      u"target:message"_s});
    parser.addOption({floodOption, u"Flood the bus with what is neither request nor answer."_s});
    for (const QString &name : {innerOption, flooderOption}) {
        QCommandLineOption option(name);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    parser.addPositionalArgument(u"out"_s, u"The folder for pictures and calendar files."_s);
    parser.addPositionalArgument(u"calendar"_s, u"Use a copy of this calendar."_s, u"[my.ics]"_s);
}

// Continues the numbering of one generation's report from `count`, and keeps the lines for the page of
// results.
void relay(QProcess &process, int &count, walkthrough::GenerationResult &result) {
    QStringList pictures;
    while (process.state() != QProcess::NotRunning || process.canReadLine()) {
        if (!process.canReadLine() && !process.waitForReadyRead(100))
            continue;
        while (process.canReadLine()) {
            QString line = QString::fromUtf8(process.readLine()).trimmed();
            const bool ok = line.startsWith(u"ok - "_s);
            if (line.startsWith(walkthrough::pictureMark)) {
                pictures << line.sliced(walkthrough::pictureMark.size());
                continue;
            }
            if (ok || line.startsWith(u"not ok - "_s)) {
                const qsizetype dash = line.indexOf(u" - "_s);
                result.steps.append({ok, line.sliced(dash + 3), std::exchange(pictures, {}), {}});
                line.replace(dash, 3, u" %1 - host %2: "_s.arg(++count).arg(result.hostVersion));
            } else if (line.startsWith(u"# "_s) && !result.steps.isEmpty()) {
                result.steps.last().messages << line.sliced(2);
            }
            std::fprintf(stdout, "%s\n", qPrintable(line));
            std::fflush(stdout);
        }
    }
}

walkthrough::GenerationResult runOneGeneration(const QString &version, const QStringList &arguments,
                                               int &count, bool &crashed) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{u"--"_s + innerOption, u"--"_s + versionOption, version} + arguments);
    walkthrough::GenerationResult result{version, {}};
    relay(process, count, result);
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return result;
    crashed = crashed || process.exitStatus() == QProcess::CrashExit;
    const QString what =
        u"the walk-through comes to its end (%1 %2)"_s.arg(crashed ? u"killed by signal"_s : u"exit code"_s)
            .arg(process.exitCode());
    std::fprintf(stdout, "not ok %d - host %s: %s\n", ++count, qPrintable(version), qPrintable(what));
    result.steps.append({false, what, {}, {}});
    return result;
}

// Makes the run independent of the language and folders of the user who starts it. All programs use this
// program's platform.
void prepareEnvironment(const QTemporaryDir &home, const QCommandLineParser &parser) {
    qputenv("QT_QPA_PLATFORM", QGuiApplication::platformName().toUtf8());
    if (!qEnvironmentVariableIsSet("XAUTHORITY")) // keeps the X server's key
        qputenv("XAUTHORITY", QDir::home().filePath(u".Xauthority"_s).toUtf8());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", parser.value(languageOption).toUtf8());
    qputenv("QT_SCALE_FACTOR", parser.value(scaleOption).toUtf8());
    const QProcessEnvironment folders = standin::userFolders(home.path());
    for (const QString &name : folders.keys())
        qputenv(qPrintable(name), folders.value(name).toUtf8());
    const QString built = QDir(QCoreApplication::applicationDirPath()).filePath(u"../root"_s);
    const QString root = home.filePath(u"root"_s);
    standin::makeRoot(root, qEnvironmentVariable("PARLO_ROOT", built));
    qputenv("PARLO_ROOT", root.toUtf8());
}

int runAllGenerations(const QCommandLineParser &parser) {
    QStringList arguments = parser.positionalArguments();
    for (const QString &option : {stateOption, killOption})
        if (parser.isSet(option))
            arguments = QStringList{u"--"_s + option, parser.value(option)} + arguments;
    if (parser.isSet(darkOption))
        arguments.prepend(u"--"_s + darkOption);
    standin::PrivateBus bus;
    const QTemporaryDir home;
    if (!bus.start()) {
        std::fprintf(stderr, "The message bus daemon could not be started. Install the package dbus.\n");
        return exitNoBus;
    }
    prepareEnvironment(home, parser);
    QProcess flooder;
    if (parser.isSet(floodOption)) {
        flooder.start(QCoreApplication::applicationFilePath(), {u"--"_s + flooderOption});
        flooder.waitForStarted();
    }
    int count = 0;
    bool crashed = false;
    QList<walkthrough::GenerationResult> results;
    for (const QString &version :
         parser.isSet(versionOption) ? QStringList{parser.value(versionOption)} : generations)
        results << runOneGeneration(version, arguments, count, crashed);
    std::fprintf(stdout, "1..%d\n", count);
    const int failed = int(walkthrough::failedSteps(results));
    bool good = failed == 0;
    if (parser.isSet(floodOption) && (flooder.waitForFinished(0) || flooder.state() != QProcess::Running)) {
        std::fprintf(stdout, "not ok - the bus is flooded until the end\n");
        good = false;
    }
    flooder.kill();
    flooder.waitForFinished();
    const QDir out(parser.positionalArguments().constFirst());
    if (!walkthrough::writeResultPage(out.path(), results))
        std::fprintf(stderr, "The page of results cannot be written.\n");
    std::fprintf(stdout, "# %d of %d steps passed; the results are in %s\n", count - failed, count,
                 qPrintable(out.absoluteFilePath(u"index.html"_s)));
    return crashed ? exitCrashed : good ? 0 : exitStepFailed;
}

QtMessageHandler usualMessages = nullptr;

// Drops messages of the toolkit about missing abilities of a platform without a display or session, and about
// a drag that leaves the window. They do not concern a step.
void dropToolkitRemarks(QtMsgType type, const QMessageLogContext &context, const QString &text) {
    for (const QString &remark :
         {u"This plugin does not support"_s, u"XDG_RUNTIME_DIR not set"_s, u"occurs outside target window"_s})
        if (text.contains(remark))
            return;
    usualMessages(type, context, text);
}

// The palette of a dark desktop; the style has no other sign of it.
void useDarkPalette() {
    const QColor back(0x3a, 0x3a, 0x3a), field(0x1a, 0x1a, 0x1a), text(0xea, 0xea, 0xea),
        pale(0x8a, 0x8a, 0x8a);
    QPalette palette(back);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, pale);
    }
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::AlternateBase, back);
    palette.setColor(QPalette::PlaceholderText, pale);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xff));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xc4));
    QApplication::setPalette(palette);
}

} // namespace

int main(int argc, char **argv) {
    // Set before the application object exists. Only "--platform xcb" shows something on a screen.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    usualMessages = qInstallMessageHandler(dropToolkitRemarks);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"parlo-walkthrough"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Adds, changes, sends and removes a meeting on the real "
                                     "windows, reports each step as TAP, and leaves "
                                     "pictures and calendar files in a folder."_s);
    addOptions(parser);
    parser.process(application);
    if (parser.isSet(flooderOption))
        return walkthrough::floodBus();
    const QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        parser.showHelp(2);
    if (!parser.isSet(innerOption))
        return runAllGenerations(parser);
    if (parser.isSet(darkOption))
        useDarkPalette();
    return walkthrough::runWalkthrough({.hostVersion = parser.value(versionOption),
                                        .out = arguments.value(0),
                                        .calendar = arguments.value(1),
                                        .state = parser.value(stateOption),
                                        .kill = walkthrough::ProcessKill::parse(parser.value(killOption))});
}
