// The programs as they are called on a command line.
#include "platform/Literals.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Call {
    const char *name;
    const char *command; // below the folder of the programs
    int status;
    const char *output; // how standard output begins; "" stands for none
    const char *error;  // what the one line on standard error holds; "" stands for none
};

std::ostream &operator<<(std::ostream &out, const Call &call) {
    return out << call.name;
}

class CommandLine : public testing::TestWithParam<Call> {};

// Without a display and a bus.
void run(QProcess &process, const QString &command) {
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(name));
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        environment.insert(QString::fromLatin1(name), folder.path());
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(qEnvironmentVariable("PARLO_BIN"));
    process.start(u"/bin/sh"_s, {u"-c"_s, u"exec "_s + command});
    ASSERT_TRUE(process.waitForFinished());
    ASSERT_EQ(process.exitStatus(), QProcess::NormalExit);
}

TEST_P(CommandLine, AnswersWithoutADisplayAndSaysInOneLineWhatIsWrong) {
    QProcess process;
    ASSERT_NO_FATAL_FAILURE(run(process, u"./"_s + QString::fromLatin1(GetParam().command)));
    EXPECT_EQ(process.exitCode(), GetParam().status);
    const QByteArray output = process.readAllStandardOutput();
    const QByteArray error = process.readAllStandardError();
    EXPECT_TRUE(output.startsWith(GetParam().output)) << output.constData();
    EXPECT_EQ(output.isEmpty(), *GetParam().output == '\0') << output.constData();
    EXPECT_TRUE(error.contains(GetParam().error)) << error.constData();
    EXPECT_EQ(error.count('\n'), *GetParam().error ? 1 : 0) << error.constData();
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandLine,
    testing::Values(
        Call{"HostHelp", "parlo-host --help", 0, "Usage: ./parlo-host [options] [calendar.ics]\n", ""},
        Call{"HostVersion", "parlo-host --version", 0, "parlo-host 1.", ""},
        Call{"HostOption", "parlo-host -platform offscreen --nonsense", 2, "", "\"parlo-host --help\" lists"},
        Call{"HostGeneration", "parlo-host -platform offscreen --host-version 17", 2, "",
             "choose one of 14.1.4"},
        Call{"HostDisplay", "parlo-host", 3, "", "parlo-host: there is no display"},
        Call{"ClientHelp", "parlo-client --help", 0, "Usage: ./parlo-client [options] [url]\n", ""},
        Call{"ClientVersion", "parlo-client -v", 0, "parlo-client 1.", ""},
        Call{"ClientOption", "parlo-client --tell=clear --nonsense", 2, "", "\"parlo-client --help\" lists"},
        Call{"ClientDisplay", "parlo-client", 3, "", "parlo-client: there is no display"},
        Call{"AgentHelp", "parlo-agent -h", 0, "Usage: ./parlo-agent [options]\n", ""},
        Call{"AgentVersion", "parlo-agent --version", 0, "parlo-agent 1.", ""},
        Call{"AgentOption", "parlo-agent --nonsense", 2, "", "\"parlo-agent --help\" lists"}),
    [](const testing::TestParamInfo<Call> &call) { return std::string(call.param.name); });

// "script" gives the program a terminal, on which everything appears.
TEST(CommandLineOnATerminal, AFileThatCannotBeOpenedEndsTheProgramOnATerminal) {
    QProcess process;
    ASSERT_NO_FATAL_FAILURE(
        run(process, u"script -qec './parlo-host -platform offscreen missing.ics' /dev/null"_s));
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray output = process.readAllStandardOutput();
    EXPECT_TRUE(output.contains("parlo-host: There is no file “missing.ics”")) << output.constData();
}

} // namespace
