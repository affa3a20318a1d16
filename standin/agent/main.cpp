// The stand-in plug-in agent: a process without a window.
#include "platform/services/Services.h"
#include "standin/agent/PluginAgent.h"
#include "standin/program/Program.h"
#include "standin/support/BusNames.h"

#include <QTimer>

namespace {

// Ends the process with its session: when two successive checks find no bus. A single check may fall into the
// moment in which a bus restarts.
class SessionWatch {
public:
    SessionWatch() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(interval);
    }

private:
    void look() {
        const bool isThere = !platform::services().workspace->runningApplications().isEmpty();
        if (!isThere && m_wasAway)
            QCoreApplication::quit();
        m_wasAway = !isThere;
    }

    static constexpr std::chrono::seconds interval{10};
    QTimer m_timer;
    bool m_wasAway = false;
};

} // namespace

int main(int argc, char **argv) {
    const auto application = program::makeWindowlessApplication(argc, argv, u"parlo-agent"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Finds and starts the meeting client for the calendar's plug-in."_s);
    program::parse(parser);
    platform::DesktopOptions options;
    platform::setServices(platform::makeDesktopServices(options));
    if (platform::services().workspace->runningApplications().contains(standin::names::agent))
        return 0; // another agent is already running
    options.bundleIdentifier = standin::names::agent;
    platform::setServices(platform::makeDesktopServices(options));
    const pluginagent::PluginAgent agent;
    const SessionWatch watch;
    return QCoreApplication::exec();
}
