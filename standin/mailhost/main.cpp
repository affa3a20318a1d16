#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/MessageBoxes.h"

#include <QApplication>
#include <QTextStream>
#include <QTimer>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"parlo-host"_s);
    QApplication::setApplicationDisplayName(u"Parlo Host"_s);
    QString error, help;
    const std::optional<mailhost::HostOptions> options =
        mailhost::parseArguments(QApplication::arguments(), &error, &help);
    if (!options || !help.isEmpty()) {
        QTextStream(options ? stdout : stderr) << (options ? help : error + u'\n');
        return options ? 0 : 2;
    }
    mailhost::HostApplication host(*options);
    host.installDesktopServices();
    if (!host.installBundle(&error))
        QTextStream(stderr) << error << '\n';
    host.start();
    QString problem;
    const bool opened = host.openCalendar(&problem);
    host.show();
    // The plug-in joins a program that is complete: its classes, its services and its main window are there.
    QString pluginError;
    const bool loaded = host.loadPlugin(&pluginError);
    if (!loaded)
        QTextStream(stderr) << pluginError << '\n';
    if (!opened || !loaded)
        mailhost::showErrorMessage(
            host.mainWindowController()->window(),
            !opened ? problem : QObject::tr("The plug-in could not be loaded: %1").arg(pluginError));
    return QApplication::exec();
}
