// The host program as it starts, and how long it takes until its window is there, with or without the
// plug-in: bench_host [--no-plugin] calendar.ics. Prints the seconds until the window and of the loading, and
// the kilobytes in memory then.
#include "standin/mailhost/windows/HostApplication.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <unistd.h>

namespace {

long residentKilobytes() {
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace

int main(int argc, char **argv) {
    QElapsedTimer timer;
    timer.start();
    const QApplication application(argc, argv);
    QString error;
    mailhost::HostApplication host(mailhost::optionsFromArguments());
    host.installDesktopServices();
    host.start();
    if (!host.openCalendar(&error))
        qFatal("%s", qPrintable(error));
    host.show();
    QElapsedTimer loading;
    loading.start();
    if (!host.loadPlugin(&error))
        qFatal("%s", qPrintable(error));
    const double loaded = double(loading.nsecsElapsed()) * 1e-9;
    for (int turn = 0; turn < 4; ++turn) // all that follows the window
        QCoreApplication::processEvents();
    const double started = double(timer.nsecsElapsed()) * 1e-9;
    std::printf("%.9f %.9f %ld\n", started, loaded, residentKilobytes());
    std::fflush(stdout);
    std::_Exit(0);
}
