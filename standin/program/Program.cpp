#include "standin/program/Program.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace program {

namespace {

const QStringList informative{u"-h"_s, u"--help"_s, u"--help-all"_s, u"-v"_s, u"--version"_s};

bool holdsOneOf(const QStringList &options, int argc, char **argv) {
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (options.contains(argument.section(u'=', 0, 0)))
            return true;
    }
    return false;
}

// The toolkit reports a missing display in several lines and aborts.
void whileConnecting(QtMsgType type, const QMessageLogContext &, const QString &) {
    if (type != QtFatalMsg)
        return;
    complain(QCoreApplication::tr("there is no display to show windows on; start it on a desktop, or set "
                                  "DISPLAY or WAYLAND_DISPLAY to one"));
    std::_Exit(NoDisplay);
}

std::unique_ptr<QCoreApplication> withVersion(std::unique_ptr<QCoreApplication> application) {
    QCoreApplication::setApplicationVersion(QStringLiteral(PARLO_VERSION));
    return application;
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QString &name,
                                                  const QStringList &withoutWindow) {
    if (holdsOneOf(informative + withoutWindow, argc, argv))
        return makeWindowlessApplication(argc, argv, name);
    QCoreApplication::setApplicationName(name);
    QGuiApplication::setDesktopFileName(name);
    const QtMessageHandler usual = qInstallMessageHandler(whileConnecting);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(usual);
    QApplication::setWindowIcon(QIcon::fromTheme(name));
    return withVersion(std::move(application));
}

std::unique_ptr<QCoreApplication> makeWindowlessApplication(int &argc, char **argv, const QString &name) {
    QCoreApplication::setApplicationName(name);
    return withVersion(std::make_unique<QCoreApplication>(argc, argv));
}

void parse(QCommandLineParser &parser) {
    parser.addHelpOption();
    parser.addVersionOption();
    if (!parser.parse(QCoreApplication::arguments()))
        refuse(parser.errorText());
    parser.process(QCoreApplication::arguments());
}

void refuse(const QString &sentence) {
    QString problem = sentence;
    while (problem.endsWith(u'.'))
        problem.chop(1);
    complain(QCoreApplication::tr("%1; \"%2 --help\" lists the options")
                 .arg(problem, QCoreApplication::applicationName()));
    std::exit(WrongUsage);
}

void complain(const QString &sentence) {
    std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(sentence));
}

bool isReadOnTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace program
