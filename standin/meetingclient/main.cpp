// The stand-in meeting client.
#include "standin/meetingclient/ClientLink.h"
#include "standin/meetingclient/ClientWindow.h"
#include "standin/meetingclient/People.h"
#include "standin/support/BusNames.h"
#include "standin/support/Program.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStandardPaths>

namespace names = standin::names;

namespace {

// Gives a rule or an order to the client that is already running, and ends.
int tell(const QString &rule) {
    QString error;
    meetingclient::AnswerRules check;
    meetingclient::MeetingStore tried{QString()};
    const bool known =
        rule == names::controlExit ||
        (meetingclient::isOrder(rule) ? meetingclient::obey(tried, rule, &error) : check.add(rule, &error));
    if (!known)
        program::refuse(error);
    standin::post(names::control, {{names::controlRuleKey, rule}});
    return 0;
}

void addOptions(QCommandLineParser &parser) {
    parser.setApplicationDescription(u"The meeting client that the plug-in talks to."_s);
    parser.addOption({u"data"_s, u"Keep meetings, profile and accounts in <file>."_s, u"file"_s});
    parser.addOption({u"rule"_s,
                      u"Do something to answers: \"delay schedule 5000\", \"drop get\", \"repeat update 3\", "
                      "\"reorder profile\", \"corrupt get flip\", \"error any 0;Error 3001\", \"quit "
                      "schedule\"; may be given several times, \"once\" before it for one time."_s,
                      u"rule"_s});
    parser.addOption({u"tell"_s,
                      u"Give a rule to the client that is running, and end. Or an order: \"accounts two\", "
                      "\"user u-1002\", \"bosses kim@parlo.example\", \"exit\", which ends it."_s,
                      u"rule"_s});
    parser.addOption({u"background"_s, u"Show no window until asked to."_s});
    parser.addPositionalArgument(u"url"_s, u"The start URL, as a launcher gives it."_s, u"[url]"_s);
}

} // namespace

int main(int argc, char **argv) {
    const auto application = program::makeApplication(argc, argv, u"parlo-client"_s, {u"--tell"_s});
    QCommandLineParser parser;
    addOptions(parser);
    program::parse(parser);

    // A process that only passes something on does not take the client's place on the bus.
    platform::DesktopOptions options;
    platform::setServices(platform::makeDesktopServices(options));
    const QString order = parser.value(u"tell"_s);
    if (!order.isEmpty())
        return tell(order);
    if (standin::isRunning(names::client)) { // brings it to the front
        standin::post(names::activation, {{names::activationUrlKey, parser.positionalArguments().value(0)}});
        return 0;
    }
    options.bundleIdentifier = names::client;
    platform::setServices(platform::makeDesktopServices(options));

    QString data = parser.value(u"data"_s);
    if (data.isEmpty())
        data = qEnvironmentVariable("PARLO_CLIENT_DATA");
    if (data.isEmpty())
        data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/meetings.json"_s;

    meetingclient::MeetingStore store(data);
    meetingclient::AnswerRules rules;
    for (const QString &rule : parser.values(u"rule"_s)) {
        QString error;
        if (!rules.add(rule, &error))
            program::refuse(error);
    }
    meetingclient::ClientLink link(store, rules);
    meetingclient::ClientWindow window(store, rules);
    using Link = meetingclient::ClientLink;
    using Window = meetingclient::ClientWindow;
    QObject::connect(&link, &Link::logged, &window, &Window::appendLog);
    QObject::connect(&link, &Link::changed, &window, &Window::refresh);
    QObject::connect(&link, &Link::activated, &window, &Window::bringToFront);
    QObject::connect(&link, &Link::instantMeetingStarted, &window, &Window::showInstantMeeting);
    QObject::connect(&link, &Link::quitRequested, application.get(), [] { std::_Exit(0); });
    program::endWithSession();
    if (!parser.isSet(u"background"_s))
        window.show();
    return QApplication::exec();
}
