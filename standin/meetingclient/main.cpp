// The stand-in meeting client.
#include "platform/services/Services.h"
#include "standin/meetingclient/ClientLink.h"
#include "standin/meetingclient/ClientWindow.h"
#include "standin/meetingclient/People.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <cstdio>

namespace {

const QString clientIdentifier = QStringLiteral("com.parlo.meetings");

// One client at a time: a second start brings the first to the front, and ends.
int wakeRunningClient(const QString &url) {
    platform::services().distributedNotifications->post(meetingclient::activationNotification, QString(),
                                                        {{meetingclient::activationUrlKey, url}}, true);
    return 0;
}

// Gives a rule or an order to the client that is already running, and ends.
int tell(const QString &rule) {
    QString error;
    meetingclient::AnswerRules check;
    meetingclient::MeetingStore tried{QString()};
    const bool known =
        rule == meetingclient::controlExit ||
        (meetingclient::isOrder(rule) ? meetingclient::obey(tried, rule, &error) : check.add(rule, &error));
    if (!known) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 2;
    }
    platform::services().distributedNotifications->post(meetingclient::controlNotification, QString(),
                                                        {{meetingclient::controlRuleKey, rule}}, true);
    return 0;
}

void describe(QCommandLineParser &parser) {
    parser.setApplicationDescription(QStringLiteral("The meeting client that the plug-in talks to."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("data"),
                      QStringLiteral("Keep meetings, profile and accounts in <file>."),
                      QStringLiteral("file")});
    parser.addOption(
        {QStringLiteral("rule"),
         QStringLiteral(
             "Do something to answers: \"delay schedule 5000\", \"drop get\", \"repeat update 3\", "
             "\"reorder profile\", \"corrupt get flip\", \"error any 0;Error 3001\", \"quit "
             "schedule\"; may be given several times, \"once\" before it for one time."),
         QStringLiteral("rule")});
    parser.addOption(
        {QStringLiteral("tell"),
         QStringLiteral("Give a rule to the client that is running, and end. Or an order: \"accounts two\", "
                        "\"user u-1002\", \"bosses kim@parlo.example\", \"exit\", which ends it."),
         QStringLiteral("rule")});
    parser.addOption({QStringLiteral("background"), QStringLiteral("Show no window until asked to.")});
    parser.addPositionalArgument(QStringLiteral("url"),
                                 QStringLiteral("The start URL, as a launcher gives it."),
                                 QStringLiteral("[url]"));
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("parlo-client"));
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);

    // A process that only passes something on does not take the client's place on the bus.
    platform::DesktopOptions options;
    platform::setServices(platform::makeDesktopServices(options));
    const QString order = parser.value(QStringLiteral("tell"));
    if (!order.isEmpty())
        return tell(order);
    if (platform::services().workspace->runningApplications().contains(clientIdentifier))
        return wakeRunningClient(parser.positionalArguments().value(0));
    options.bundleIdentifier = clientIdentifier;
    platform::setServices(platform::makeDesktopServices(options));

    QString data = parser.value(QStringLiteral("data"));
    if (data.isEmpty())
        data = qEnvironmentVariable("PARLO_CLIENT_DATA");
    if (data.isEmpty())
        data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
               QStringLiteral("/meetings.json");

    meetingclient::MeetingStore store(data);
    meetingclient::MeetingService service(store);
    meetingclient::AnswerRules rules;
    for (const QString &rule : parser.values(QStringLiteral("rule"))) {
        QString error;
        if (!rules.add(rule, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 2;
        }
    }
    meetingclient::ClientLink link(store, service, rules);
    meetingclient::ClientWindow window(store, rules);
    using Link = meetingclient::ClientLink;
    QObject::connect(&link, &Link::logged, &window,
                     [&window](const QString &line) { window.appendLog(line); });
    QObject::connect(&link, &Link::meetingsChanged, &window, [&window] { window.refreshMeetings(); });
    QObject::connect(&link, &Link::activated, &window,
                     [&window](const QString &url) { window.bringToFront(url); });
    QObject::connect(&link, &Link::instantMeetingStarted, &window,
                     [&window](bool video, const QString &url) { window.showInstantMeeting(video, url); });
    QObject::connect(&link, &Link::quitRequested, &application, [] { std::_Exit(0); });
    if (!parser.isSet(QStringLiteral("background")))
        window.show();
    return QApplication::exec();
}
