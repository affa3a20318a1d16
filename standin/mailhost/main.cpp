#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/MessageBoxes.h"
#include "standin/support/Program.h"

#include <QApplication>
#include <unistd.h>

namespace {

int refuseCalendar(const QString &problem) {
    program::complain(problem);
    if (::isatty(STDERR_FILENO) == 1) // the user reads it there
        return program::CannotOpen;
    QMessageBox::warning(nullptr, QGuiApplication::applicationDisplayName(),
                         QObject::tr("The calendar could not be opened.") + u"\n\n"_s + problem);
    return program::CannotOpen;
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication::setApplicationDisplayName(u"Parlo Host"_s);
    const auto application = program::makeApplication(argc, argv, u"parlo-host"_s);
    mailhost::HostApplication host(mailhost::optionsFromArguments());
    host.installDesktopServices();
    QString error;
    if (!host.installBundle(&error))
        program::complain(error);
    host.start();
    QString problem;
    if (!host.openCalendar(&problem))
        return refuseCalendar(problem);
    host.show();
    // Loads the plug-in last, when the classes, the services and the main window exist.
    if (!host.loadPlugin(&error)) {
        program::complain(error);
        mailhost::showErrorMessage(host.mainWindowController()->window(),
                                   QObject::tr("The plug-in could not be loaded: %1").arg(error));
    }
    return QApplication::exec();
}
