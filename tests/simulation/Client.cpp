// What the meeting client does, and whoever else speaks on its channel.
#include "standin/meetingclient/MeetingService.h"
#include "standin/meetingclient/People.h"
#include "tests/simulation/Desktop.h"

#include <QJsonObject>

namespace simulation {

namespace {

const QString usualVersion = u"3.6.40500"_s;
const QString oldVersion = u"3.6.40486"_s; // the newest one that is too old
constexpr quint32 meetingAction = 3;

} // namespace

QList<Desktop::Verb> Desktop::clientsVerbs() {
    return {{"rule", 1, &Desktop::rule},
            {"disk", 1, &Desktop::disk},
            {"client", 1, &Desktop::clientRuns},
            {"signed", 1, &Desktop::clientSignsIn},
            {"forget", 1, &Desktop::clientForgets},
            {"order", 2, &Desktop::clientObeys},
            {"forge", 1, &Desktop::forge},
            {"forge-meeting", 1, &Desktop::forgeMeeting}};
}

bool Desktop::rule(const Words &words) {
    m_scenario.given(words.join(u' ').toUtf8().constData());
    return true;
}

// "full" or "free", from the next step on.
bool Desktop::disk(const Words &words) {
    m_diskFull = words[0] == u"full";
    return true;
}

// "runs", "quits" (with all that it has not answered yet), "restarts", "uninstalled", "installed", "old".
bool Desktop::clientRuns(const Words &words) {
    if (words[0] == u"uninstalled")
        m_scenario.clientIsUninstalled();
    else if (words[0] == u"installed" || words[0] == u"old")
        m_scenario.clientIsInstalled(words[0] == u"old" ? oldVersion : usualVersion);
    else
        m_scenario.clientQuits();
    if (words[0] != u"uninstalled" && words[0] != u"quits")
        m_scenario.clientRuns();
    return true;
}

bool Desktop::clientSignsIn(const Words &words) {
    m_scenario.client().setSignedIn(words[0] == u"in");
    return true;
}

// The meeting was deleted somewhere else.
bool Desktop::clientForgets(const Words &words) {
    const bool stored = m_onDisk && m_onDisk->contains(words[0]);
    return stored && m_scenario.client().removeMeeting(m_scenario.meetingKey(uidOf(words[0])));
}

void Desktop::post(const QString &actionId, const QString &content) {
    m_scenario.desktop().bus->post(u"VelaVideoClientToVelaOutlookPlugin_PRL"_s, QString(),
                                   {{u"actionId"_s, actionId}, {u"content"_s, content}}, true);
}

// As in the client's own window: another user, other accounts, other people who grant something.
bool Desktop::clientObeys(const Words &words) {
    QString error;
    return meetingclient::obey(m_scenario.client(), words.join(u' '), &error);
}

// An answer that nobody asked for, to the letter: an action id and the content.
bool Desktop::forge(const Words &words) {
    post(words[0], words.mid(1).join(u' '));
    return true;
}

// The client's true answer to a question about the meeting of an appointment that nobody has asked.
bool Desktop::forgeMeeting(const Words &words) {
    if (!m_onDisk || !m_onDisk->contains(words[0]))
        return false;
    meetingclient::MeetingService service(m_scenario.client());
    const auto answer = service.handle(meetingAction, u"4;"_s + m_scenario.meetingKey(uidOf(words[0])));
    post(u"4"_s, answer->content);
    return true;
}

} // namespace simulation
