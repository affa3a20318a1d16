// The host program with and without the plug-in, in processes of their own.
#include "bench/table/Processes.h"
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"

#include <QCoreApplication>
#include <QFile>
#include <array>

namespace bench {

namespace {

constexpr int rounds = 25;
constexpr double allowedSeconds = 0.015;
constexpr double allowedBytes = 4e6;
enum Figure { Started, Loaded, Memory, FigureCount };
using Figures = std::array<std::vector<double>, FigureCount>;

void start(const QStringList &arguments, Figures &figures) {
    QProcess host;
    host.start(QCoreApplication::applicationDirPath() + u"/bench_host"_s, arguments);
    host.waitForFinished();
    const QByteArrayList words = host.readAllStandardOutput().simplified().split(' ');
    if (words.size() != FigureCount)
        qFatal("the host does not start: %s", host.readAllStandardError().constData());
    for (std::size_t i = 0; i < FigureCount; ++i)
        figures[i].push_back(words[qsizetype(i)].toDouble());
}

} // namespace

void loading() {
    const PrivateDesktop desktop;
    const QString calendar = desktop.path(u"my.ics"_s);
    QFile file(calendar);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the calendar cannot be written");
    file.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\nBEGIN:VEVENT\r\n"
               "UID:one@bench\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T090000Z\r\n"
               "DTEND:20261124T093000Z\r\nSUMMARY:Review\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    file.close();
    Figures withPlugin, alone, untimed;
    start({calendar}, untimed);
    for (int round = 0; round < rounds; ++round) {
        start({calendar}, withPlugin);
        start({u"--no-plugin"_s, calendar}, alone);
    }
    const double loaded = median(withPlugin[Loaded]);
    addRow(u"loading the plug-in"_s, timeText(loaded), QString(), QString(), u"at most 15 ms"_s,
           loaded <= allowedSeconds);
    const double added = median(withPlugin[Started]) - median(alone[Started]);
    addRow(u"the host until its window is drawn"_s, timeText(median(withPlugin[Started])),
           u"without the plug-in: "_s + timeText(median(alone[Started])),
           u"+ "_s + timeText(qMax(added, 0.0)), u"at most + 15 ms"_s, added <= allowedSeconds);
    const auto textOf = [](double kilobytes) { return sizeText(kilobytes * 1024); };
    const double with = median(withPlugin[Memory]), without = median(alone[Memory]);
    addRow(u"resident memory of the host"_s, textOf(with), u"the host alone: "_s + textOf(without),
           u"+ "_s + textOf(with - without), u"at most + 4 MB"_s, (with - without) * 1024 <= allowedBytes);
}

} // namespace bench
