// Attacks on the walk-through. Each program is killed without warning in the middle of it: afterwards every
// file is whole, and another walk-through succeeds with what is there. And another program floods the bus.
#include "platform/Literals.h"
#include "standin/mailhost/store/CalendarFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
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

class Walkthrough {
public:
    int run(const QStringList &options) {
        QProcess process;
        process.start(qEnvironmentVariable("PARLO_WALK"), QStringList{"--host-version", version} + options);
        EXPECT_TRUE(process.waitForFinished(longestRun));
        steps = QString::fromUtf8(process.readAllStandardOutput());
        logged = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    QString steps;
    QString logged; // the log of host, agent and client

private:
    QTemporaryDir m_folder;
};

class ProcessKill : public testing::TestWithParam<Kill> {
protected:
    // Every file of user data is complete and has the form that its program writes. Returns the number of
    // appointments.
    qsizetype expectWholeFiles() {
        QDirIterator files(walk.path("state"), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QByteArray content = contentOf(path).trimmed();
            if (path.endsWith(".json")) {
                EXPECT_TRUE(QJsonDocument::fromJson(content).isObject()) << qPrintable(path);
            } else if (path.contains("ParloMeetingsOutlookPlugin")) {
                EXPECT_TRUE(content.endsWith("</plist>")) << qPrintable(path);
            }
        }
        EXPECT_TRUE(contentOf(calendar).trimmed().endsWith("END:VCALENDAR"));
        QString error;
        const auto file = mailhost::CalendarFile::open(calendar, &error);
        EXPECT_TRUE(file) << qPrintable(error);
        return file ? file->appointments().size() : 0;
    }

    Walkthrough walk;
    QString calendar = walk.path("out/host-16/calendar.ics");
};

} // namespace

TEST_P(ProcessKill, LeavesWholeFilesAndASessionThatGoesOn) {
    const Kill kill = GetParam();
    const int code = walk.run({"--state", walk.path("state"), "--kill",
                               kill.program + u':' + QString::number(kill.atMessage), walk.path("out")});
    if (kill.program == QLatin1String("host")) {
        EXPECT_EQ(code, exitCrashed) << qPrintable(walk.steps);
    } else {
        EXPECT_TRUE(walk.steps.contains(u": 1 killed"_s)) << qPrintable(walk.steps);
        EXPECT_NE(code, exitCrashed) << "the host went down with it\n" << qPrintable(walk.steps);
    }
    EXPECT_GT(expectWholeFiles(), 5);
    if (code == 0)
        return; // nothing needed it any more
    const QString kept = walk.path("kept.ics");
    ASSERT_TRUE(QFile::copy(calendar, kept));
    EXPECT_EQ(walk.run({"--state", walk.path("state"), walk.path("again"), kept}), 0)
        << qPrintable(walk.steps + walk.logged);
}

INSTANTIATE_TEST_SUITE_P(All, ProcessKill, testing::ValuesIn(kills()), [](const auto &info) {
    return info.param.program.toStdString() + std::to_string(info.param.atMessage);
});

// Users send the log to others who help them.
TEST(OtherPrograms, CannotStopTheWalkThroughAndTheLogHoldsNoSecrets) {
    Walkthrough walk;
    EXPECT_EQ(walk.run({"--flood", walk.path("out")}), 0) << qPrintable(walk.steps + walk.logged);
    for (const char *known : {"is inviting you", "pwd=Tulip7"})
        EXPECT_TRUE(walk.steps.contains(known)) << known << " went over the bus";
    EXPECT_GT(walk.steps.count("no such command"), 20) << "nothing was flooded";
    for (const char *secret :
         {"is inviting you", "pwd=", "Tulip7", "meetings.parlo.example/j/", "Bring the figures"})
        EXPECT_FALSE(walk.logged.contains(secret)) << secret << '\n' << qPrintable(walk.logged);
    EXPECT_LT(walk.logged.size(), 100'000) << "a flood on the bus becomes a flood in the log";
}
