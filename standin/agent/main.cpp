// The stand-in plug-in agent: a process without a window.
#include "platform/services/Services.h"
#include "standin/agent/PluginAgent.h"

#include <QApplication>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("parlo-agent"));
    QApplication::setQuitOnLastWindowClosed(false);
    platform::DesktopOptions options;
    options.bundleIdentifier = QStringLiteral("com.parlo.vOutlookPluginAgent");
    platform::setServices(platform::makeDesktopServices(options));
    const pluginagent::PluginAgent agent;
    return QApplication::exec();
}
