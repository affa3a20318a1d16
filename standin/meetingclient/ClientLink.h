// The meeting client on the bus: receives requests, sends answers, comes to the front, and takes orders.
#pragma once

#include "platform/services/bus/Notifications.h"
#include "standin/meetingclient/AnswerRules.h"

#include <QObject>

namespace meetingclient {

class ClientLink : public QObject {
    Q_OBJECT
public:
    // The services and the references must outlive the link.
    ClientLink(MeetingStore &store, AnswerRules &rules);
    ~ClientLink() override;

Q_SIGNALS:
    // One line for the log on the client's window.
    void logged(const QString &line);
    void changed(); // the meetings, the user, what the user has, or the rules
    void activated(const QString &url);
    void instantMeetingStarted(bool withVideo, const QString &joinUrl);
    // The client must end itself.
    void quitRequested();

private:
    void onRequest(quint32 actionId, const QString &content);
    void onControl(const QString &line);
    void answer(const Answer &answer);
    void send(const Answer &answer);
    MeetingStore &m_store;
    AnswerRules &m_rules;
    QList<platform::ObserverId> m_observers;
};

} // namespace meetingclient
