#include "standin/support/Program.h"

#include "platform/services/Services.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

} // namespace

void introduce(const QString &name) {
    QCoreApplication::setApplicationName(name);
    QCoreApplication::setApplicationVersion(QStringLiteral(PARLO_VERSION));
}

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QString &name,
                                                  const QStringList &withoutWindow) {
    introduce(name);
    if (holdsOneOf(informative + withoutWindow, argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    QGuiApplication::setDesktopFileName(name);
    const QtMessageHandler usual = qInstallMessageHandler(whileConnecting);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(usual);
    QApplication::setWindowIcon(QIcon::fromTheme(name));
    return application;
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

// One look may find a bus that restarts, or one that answers too late.
void endWithSession() {
    constexpr int looks = 3;
    auto *timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, [away = 0]() mutable {
        away = platform::services().workspace->runningApplications().isEmpty() ? away + 1 : 0;
        if (away == looks)
            QCoreApplication::exit();
    });
    timer->start(std::chrono::seconds(10));
}

} // namespace program
