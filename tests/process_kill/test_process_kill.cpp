// Each program is killed without warning in the middle of the walk-through. Afterwards every file is whole,
// and another walk-through succeeds with what is there.
#include "platform/Literals.h"
#include "standin/mailhost/store/CalendarFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

constexpr int exitCrashed = 4; // of the walk-through, if the host crashed
constexpr int longestRun = 300'000;
const QString version = u"16"_s;

struct Kill {
    QString program;
    int atMessage;
};

QList<Kill> kills() {
    const int each = std::max(1, qEnvironmentVariableIntValue("PARLO_PROCESS_KILLS"));
    // About as many messages go over the bus before the part of the tool-bar; the agent is not needed later.
    constexpr struct {
        const char *name;
        int lastMessage;
    } programs[] = {{"host", 60}, {"client", 60}, {"agent", 50}, {"bus", 60}};
    QList<Kill> all;
    int first = 7; // each program at another place
    for (const auto &[name, lastMessage] : programs) {
        for (int i = 0; i < each; ++i)
            all.append({QString::fromLatin1(name), 1 + (first + i * lastMessage / each) % lastMessage});
        first += 13;
    }
    return all;
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QSet<QString> uidsOf(const QByteArray &calendar) {
    QSet<QString> uids;
    for (const QByteArray &line : calendar.split('\n'))
        if (line.startsWith("UID:"))
            uids.insert(QString::fromUtf8(line.mid(4)).trimmed());
    return uids;
}

class ProcessKill : public testing::TestWithParam<Kill> {
protected:
    int runWalkthrough(const QStringList &options) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(qEnvironmentVariable("PARLO_WALK"),
                      QStringList{"--host-version", version, "--state", folder.filePath("state")} + options);
        EXPECT_TRUE(process.waitForFinished(longestRun));
        said = QString::fromUtf8(process.readAll());
        return process.exitCode();
    }
    // Every file of user data is complete and has the form that its program writes.
    void expectWholeFiles() {
        QDirIterator files(folder.filePath("state"), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QByteArray content = contentOf(path).trimmed();
            if (path.endsWith(".json")) {
                EXPECT_TRUE(QJsonDocument::fromJson(content).isObject()) << qPrintable(path);
            } else if (path.contains("ParloMeetingsOutlookPlugin")) {
                EXPECT_TRUE(content.endsWith("</plist>")) << qPrintable(path);
            }
        }
        QString error;
        EXPECT_TRUE(mailhost::CalendarFile::open(calendar(), &error)) << qPrintable(error);
        EXPECT_TRUE(contentOf(calendar()).trimmed().endsWith("END:VCALENDAR"));
    }
    [[nodiscard]] QString calendar() const { return folder.filePath("out/host-16/calendar.ics"); }

    QTemporaryDir folder;
    QString said;
};

} // namespace

TEST_P(ProcessKill, LeavesWholeFilesAndASessionThatGoesOn) {
    const Kill kill = GetParam();
    const int code = runWalkthrough(
        {"--kill", kill.program + u':' + QString::number(kill.atMessage), folder.filePath("out")});
    if (kill.program == QLatin1String("host")) {
        EXPECT_EQ(code, exitCrashed) << qPrintable(said);
    } else {
        EXPECT_TRUE(said.contains(u": 1 killed"_s)) << qPrintable(said);
        EXPECT_NE(code, exitCrashed) << "the host went down with it\n" << qPrintable(said);
    }
    expectWholeFiles();
    if (code == 0)
        return; // nothing needed it any more
    const QString kept = folder.filePath("kept.ics");
    ASSERT_TRUE(QFile::copy(calendar(), kept));
    const QSet<QString> before = uidsOf(contentOf(kept));
    EXPECT_GT(before.size(), 5);
    EXPECT_EQ(runWalkthrough({folder.filePath("again"), kept}), 0) << qPrintable(said);
}

INSTANTIATE_TEST_SUITE_P(All, ProcessKill, testing::ValuesIn(kills()), [](const auto &info) {
    return info.param.program.toStdString() + std::to_string(info.param.atMessage);
});
