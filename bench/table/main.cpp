// Measures the product against other ways of doing the same, side by side, and prints one table of ratios:
// bench_table [section...]
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "platform/Literals.h"

#include <QApplication>
#include <QProcess>
#include <cstdio>
#include <span>

namespace {

struct Section {
    const char *name;
    void (*run)();
};

constexpr Section sections[] = {
    {"calls", bench::calls},         {"bus", bench::bus},
    {"add", bench::addMeeting},      {"add-in-memory", bench::addMeetingInMemory},
    {"html", bench::html},           {"bodies", bench::bodies},
    {"digests", bench::digests},     {"accounts", bench::accounts},
    {"snapshots", bench::snapshots}, {"loading", bench::loading},
    {"header", bench::header},
};
// In the other process of a section.
constexpr Section parts[] = {
    {"echo-bare", bench::echoBare},
    {"echo-notifications", bench::echoNotifications},
};

const QString sectionOption = u"--section"_s;

// Answers whether there is one of that name.
bool runHere(const QString &name) {
    for (const auto &list : {std::span<const Section>(sections), std::span<const Section>(parts)})
        for (const Section &section : list)
            if (name == QLatin1String(section.name)) {
                section.run();
                return true;
            }
    return false;
}

// What Qt's offscreen platform says of each window is of no use to anyone.
void printMessage(QtMsgType, const QMessageLogContext &, const QString &text) {
    if (!text.contains(u"propagateSizeHints"_s))
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

QStringList runElsewhere(const QString &name, bool *good) {
    std::fprintf(stderr, "measuring: %s\n", qPrintable(name));
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {sectionOption, name});
    process.waitForFinished(-1);
    *good = *good && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(printMessage);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QStringList names = QApplication::arguments().mid(1);
    if (names.value(0) == sectionOption) {
        const bool known = runHere(names.value(1));
        std::fflush(stdout);
        std::_Exit(known ? 0 : 2); // what a section leaves behind is nobody's
    }
    if (names.isEmpty())
        for (const Section &section : sections)
            names.append(QString::fromLatin1(section.name));
    bool good = true;
    QStringList lines;
    for (const QString &name : std::as_const(names))
        lines += runElsewhere(name, &good);
    std::printf("%s", qPrintable(bench::tableOf(lines)));
    return good ? 0 : 1;
}
