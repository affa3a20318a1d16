// Attacks of other programs and other users of the machine on the session.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr int longestRun = 300'000;
constexpr uid_t nobody = 65534;

struct Result {
    int code = -1;
    QString steps;
    QString logged; // the log of host, agent and client
};

Result runWalkthrough(const QStringList &options) {
    const QTemporaryDir out;
    QProcess process;
    process.start(qEnvironmentVariable("PARLO_WALK"),
                  options + QStringList{"--host-version", "16", out.path()});
    EXPECT_TRUE(process.waitForFinished(longestRun));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

// Users send the log to others who help them.
TEST(OtherPrograms, CannotStopTheWalkThroughAndTheLogHoldsNoSecrets) {
    const Result result = runWalkthrough({"--flood"});
    EXPECT_EQ(result.code, 0) << qPrintable(result.steps + result.logged);
    for (const char *known : {"is inviting you", "pwd=Tulip7"})
        EXPECT_TRUE(result.steps.contains(known)) << known << " went over the bus";
    EXPECT_GT(result.steps.count("no such command"), 20) << "nothing was flooded";
    for (const char *secret :
         {"is inviting you", "pwd=", "Tulip7", "meetings.parlo.example/j/", "Bring the figures"})
        EXPECT_FALSE(result.logged.contains(secret)) << secret << '\n' << qPrintable(result.logged);
    EXPECT_LT(result.logged.size(), 100'000) << "a flood on the bus becomes a flood in the log";
}

// The bus belongs to one user: it rejects another user who knows its address.
TEST(OtherUsers, CannotReachTheBus) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "Only the administrator can become somebody else.";
    const QTemporaryDir folder;
    QProcess daemon;
    daemon.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
    ASSERT_TRUE(daemon.waitForStarted());
    while (!daemon.canReadLine() && daemon.waitForReadyRead()) {
    }
    const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
    ASSERT_FALSE(address.isEmpty());
    const auto send = [&address](uid_t user) {
        QProcess process;
        process.setChildProcessModifier([user] {
            if (::setgid(user) != 0 || ::setuid(user) != 0)
                ::_exit(99);
        });
        process.start("dbus-send", {"--bus=" + address, "--type=signal", "/", "org.example.Notification"});
        process.waitForFinished();
        return process.exitCode();
    };
    EXPECT_EQ(send(::geteuid()), 0);
    const int refused = send(nobody);
    EXPECT_NE(refused, 0);
    EXPECT_NE(refused, 99) << "the test could not become somebody else";
    daemon.kill();
    daemon.waitForFinished();
}
