// Runs through a user's actions automatically on the real windows: parlo-walkthrough [--host-version V] OUT
// [my.ics]
#include "standin/support/OwnRoot.h"
#include "standin/support/PrivateBus.h"
#include "standin/walkthrough/BusFlood.h"
#include "standin/walkthrough/Generations.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPalette>
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

void addOptions(QCommandLineParser &parser) {
    parser.setApplicationDescription(u"Adds, changes, sends and removes a meeting on the real "
                                     "windows, reports each step as TAP, and leaves "
                                     "pictures and calendar files in a folder."_s);
    parser.addHelpOption();
    parser.addOptions(
        {{versionOption, u"Use this generation of the host alone."_s, u"version"_s},
         {languageOption, u"The desktop's language, as \"de\"."_s, u"language"_s, u"en"_s},
         {scaleOption, u"Pixels for each point, in each direction."_s, u"ratio"_s, u"1"_s},
         {darkOption, u"Use a dark palette."_s},
         {stateOption, u"Keep what the programs keep for their user, and begin with what is there."_s,
          u"folder"_s},
         {killOption,
          u"Kill host, client, agent or bus when so many messages have gone over the "
          "bus, as in \"client:7\"; then not every step is expected to succeed."_s,
          u"target:message"_s},
         {floodOption, u"Flood the bus with what is neither request nor answer."_s}});
    for (const QString &name : {innerOption, flooderOption}) {
        QCommandLineOption option(name);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    parser.addPositionalArgument(u"out"_s, u"The folder for pictures and calendar files."_s);
    parser.addPositionalArgument(u"calendar"_s, u"Use a copy of this calendar."_s, u"[my.ics]"_s);
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
    standin::PrivateBus bus;
    const QTemporaryDir home;
    if (!bus.start()) {
        std::fprintf(stderr, "The message bus daemon could not be started. Install the package dbus.\n");
        return exitNoBus;
    }
    prepareEnvironment(home, parser);
    standin::Child flooder;
    if (parser.isSet(floodOption))
        flooder.run(QCoreApplication::applicationFilePath(), {u"--"_s + flooderOption});
    const QStringList versions = parser.isSet(versionOption) ? QStringList{parser.value(versionOption)}
                                                             : QStringList{u"15.8"_s, u"16"_s};
    walkthrough::Generations generations;
    for (const QString &version : versions)
        generations.run(version, QStringList{u"--"_s + innerOption, u"--"_s + versionOption, version} +
                                     QCoreApplication::arguments().mid(1));
    const int count = generations.count();
    std::fprintf(stdout, "1..%d\n", count);
    bool good = generations.failed() == 0;
    if (parser.isSet(floodOption) && (flooder.waitForFinished(0) || flooder.state() != QProcess::Running)) {
        std::fprintf(stdout, "not ok - the bus is flooded until the end\n");
        good = false;
    }
    const QDir out(parser.positionalArguments().constFirst());
    if (!generations.writePage(out.path()))
        std::fprintf(stderr, "The page of results cannot be written.\n");
    std::fprintf(stdout, "# %d of %d steps passed; the results are in %s\n", count - generations.failed(),
                 count, qPrintable(out.absoluteFilePath(u"index.html"_s)));
    return generations.crashed() ? exitCrashed : good ? 0 : exitStepFailed;
}

int runOneGeneration(const walkthrough::SessionOptions &options) {
    walkthrough::Session walk(options);
    const char *name = "start";
    try {
        walk.start();
        for (const auto &part : walkthrough::parts) {
            name = part.name;
            part.run(walk);
        }
    } catch (const walkthrough::Stopped &) {
        walk.comment(u"stopped in the part \"%1\""_s.arg(QLatin1String(name)));
    }
    return walk.failed() ? exitStepFailed : 0;
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
    return runOneGeneration({.hostVersion = parser.value(versionOption),
                             .out = arguments.value(0),
                             .calendar = arguments.value(1),
                             .state = parser.value(stateOption),
                             .kill = parser.value(killOption)});
}
