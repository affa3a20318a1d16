// The stand-in plug-in agent: a process without a window.
#include "platform/services/Services.h"
#include "standin/agent/PluginAgent.h"

#include <QApplication>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"parlo-agent"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString identifier = u"com.parlo.vOutlookPluginAgent"_s;
    platform::DesktopOptions options;
    platform::setServices(platform::makeDesktopServices(options));
    if (platform::services().workspace->runningApplications().contains(identifier))
        return 0; // one is enough
    options.bundleIdentifier = identifier;
    platform::setServices(platform::makeDesktopServices(options));
    const pluginagent::PluginAgent agent;
    return QApplication::exec();
}
