// The stand-in plug-in agent: a process without a window.
#include "standin/agent/PluginAgent.h"
#include "standin/support/BusNames.h"
#include "standin/support/Program.h"

int main(int argc, char **argv) {
    program::introduce(u"parlo-agent"_s);
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Finds and starts the meeting client for the calendar's plug-in."_s);
    program::parse(parser);
    platform::DesktopOptions options;
    platform::setServices(platform::makeDesktopServices(options));
    if (standin::isRunning(standin::names::agent))
        return 0; // another agent is already running
    options.bundleIdentifier = standin::names::agent;
    platform::setServices(platform::makeDesktopServices(options));
    const pluginagent::PluginAgent agent;
    program::endWithSession();
    return QCoreApplication::exec();
}
