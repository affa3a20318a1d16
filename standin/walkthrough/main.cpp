// Walks the whole road on the real windows without a person: parlo-walkthrough [--host-version V] OUT
// [my.ics]
#include "standin/walkthrough/Desktop.h"
#include "standin/walkthrough/RoadSteps.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QProcess>
#include <cstdio>

namespace {

const QString versionOption = QStringLiteral("host-version");
const QString innerOption = QStringLiteral("one-generation");
const QStringList generations = {QStringLiteral("15.8"), QStringLiteral("16")};

// Numbers the lines of one generation's report on from `count`. False when one of them is a failure.
bool relay(QProcess &process, int &count, const QString &version) {
    bool good = true;
    while (process.state() != QProcess::NotRunning || process.canReadLine()) {
        if (!process.canReadLine() && !process.waitForReadyRead(100))
            continue;
        while (process.canReadLine()) {
            QString line = QString::fromUtf8(process.readLine()).trimmed();
            const bool ok = line.startsWith(QStringLiteral("ok - "));
            if (ok || line.startsWith(QStringLiteral("not ok - "))) {
                good = good && ok;
                line.replace(line.indexOf(QStringLiteral(" - ")), 3,
                             QStringLiteral(" %1 - host %2: ").arg(++count).arg(version));
            }
            std::fprintf(stdout, "%s\n", qPrintable(line));
            std::fflush(stdout);
        }
    }
    return good;
}

bool walkOneGeneration(const QString &version, const QStringList &arguments, int &count) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(
        QCoreApplication::applicationFilePath(),
        QStringList{QStringLiteral("--") + innerOption, QStringLiteral("--") + versionOption, version} +
            arguments);
    const bool good = relay(process, count, version);
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return good;
    std::fprintf(stdout, "not ok %d - host %s: the walk came to its end (exit code %d)\n", ++count,
                 qPrintable(version), process.exitCode());
    return false;
}

// A walk does not depend on the display, the language or the folders of the person who starts it.
void prepareEnvironment(const walkthrough::PrivateBus &bus, const QTemporaryDir &home) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    qputenv("LC_ALL", "C.UTF-8");
    for (const char *name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const QString folder = home.filePath(QString::fromLatin1(name));
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, folder.toUtf8());
    }
    if (!qEnvironmentVariableIsSet("PARLO_ROOT"))
        qputenv("PARLO_ROOT", QDir(QCoreApplication::applicationDirPath())
                                  .absoluteFilePath(QStringLiteral("../root"))
                                  .toUtf8());
}

int walkAllGenerations(const QStringList &versions, const QStringList &arguments) {
    const walkthrough::PrivateBus bus;
    const QTemporaryDir home;
    if (bus.address().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(bus.error()));
        return 3;
    }
    prepareEnvironment(bus, home);
    int count = 0;
    bool good = true;
    for (const QString &version : versions)
        good = walkOneGeneration(version, arguments, count) && good;
    std::fprintf(stdout, "1..%d\n", count);
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    // Set before the application object exists: the outer process draws nothing.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("parlo-walkthrough"));
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Adds, changes, sends and removes a meeting on the real "
                                                    "windows, reports each step as TAP, and leaves "
                                                    "pictures and calendar files in a folder."));
    parser.addHelpOption();
    parser.addOption({versionOption, QStringLiteral("Walk in this generation of the host alone."),
                      QStringLiteral("version")});
    QCommandLineOption inner(innerOption);
    inner.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(inner);
    parser.addPositionalArgument(QStringLiteral("out"),
                                 QStringLiteral("The folder for pictures and calendar files."));
    parser.addPositionalArgument(QStringLiteral("calendar"),
                                 QStringLiteral("Walk on a copy of this calendar."),
                                 QStringLiteral("[my.ics]"));
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        parser.showHelp(2);

    if (parser.isSet(innerOption))
        return walkthrough::walkTheRoad(parser.value(versionOption), arguments.value(0), arguments.value(1));
    const QStringList versions =
        parser.isSet(versionOption) ? QStringList{parser.value(versionOption)} : generations;
    return walkAllGenerations(versions, arguments);
}
