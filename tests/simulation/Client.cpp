// Steps of the meeting client, of other programs on its channel, and of the disk.
#include "plugin/link/channel/vlIPCChannel.h"
#include "standin/meetingclient/MeetingService.h"
#include "standin/meetingclient/People.h"
#include "tests/simulation/Desktop.h"

namespace simulation {

namespace {

const QString oldVersion = u"3.6.40486"_s; // the newest one that is too old

using Words = QStringList;

void post(Desktop &desktop, const QString &action, const QString &content) {
    desktop.scenario().desktop().bus->post(kIPCNotifyVelaClientToOutlookPlugin, QString(),
                                           {{u"actionId"_s, action}, {u"content"_s, content}}, true);
}

bool rule(Desktop &desktop, const Words &words) {
    desktop.scenario().given(words.join(u' '));
    return true;
}

// "full" or "free", from the next step on.
bool disk(Desktop &desktop, const Words &words) {
    desktop.setDiskFull(words[0] == u"full");
    return true;
}

// "runs", "quits" (with all that it has not answered yet), "restarts", "uninstalled", "installed", "old".
bool client(Desktop &desktop, const Words &words) {
    scenarios::Scenario &scenario = desktop.scenario();
    if (words[0] == u"uninstalled")
        scenario.clientIsUninstalled();
    else if (words[0] == u"installed")
        scenario.clientIsInstalled();
    else if (words[0] == u"old")
        scenario.clientIsInstalled(oldVersion);
    else
        scenario.clientQuits();
    if (words[0] != u"uninstalled" && words[0] != u"quits")
        scenario.clientRuns();
    return true;
}

bool signedInOrOut(Desktop &desktop, const Words &words) {
    desktop.scenario().client().setSignedIn(words[0] == u"in");
    return true;
}

// The meeting was deleted somewhere else.
bool forget(Desktop &desktop, const Words &words) {
    return desktop.scenario().client().removeMeeting(desktop.keyInFile(words[0]));
}

// As in the client's own window: another user, other accounts, others who grant something.
bool order(Desktop &desktop, const Words &words) {
    QString error;
    return meetingclient::obey(desktop.scenario().client(), words.join(u' '), &error);
}

// Sends this text as an answer without a request.
bool forge(Desktop &desktop, const Words &words) {
    post(desktop, words[0], words.mid(1).join(u' '));
    return true;
}

// Sends the client's real answer about an appointment's meeting without a request.
bool forgeMeeting(Desktop &desktop, const Words &words) {
    meetingclient::MeetingService service(desktop.scenario().client());
    post(desktop, u"4"_s, service.handle(3, u"4;"_s + desktop.keyInFile(words[0]))->content);
    return true;
}

} // namespace

QList<Command> clientsCommands() {
    return {{"rule", 1, rule},     {"disk", 1, disk},
            {"client", 1, client}, {"signed", 1, signedInOrOut},
            {"forget", 1, forget}, {"order", 2, order},
            {"forge", 1, forge},   {"forge-meeting", 1, forgeMeeting}};
}

} // namespace simulation
