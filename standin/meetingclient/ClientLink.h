// The meeting client on the bus: receives requests, sends answers, comes to the front, and takes orders.
#pragma once

#include "platform/services/bus/Notifications.h"
#include "standin/meetingclient/AnswerRules.h"
#include "standin/meetingclient/MeetingService.h"

#include <QObject>

namespace meetingclient {

class ClientLink : public QObject {
    Q_OBJECT
public:
    // The services and the references must outlive the link.
    ClientLink(MeetingStore &store, MeetingService &service, AnswerRules &rules, QObject *parent = nullptr);
    ~ClientLink() override;

Q_SIGNALS:
    // One line for the log on the client's window.
    void logged(const QString &line);
    void meetingsChanged(); // or the user, or what the user has
    void activated(const QString &url);
    void instantMeetingStarted(bool withVideo, const QString &joinUrl);
    // A rule requires that the client ends itself.
    void quitRequested();

private:
    void onRequest(const platform::TextMap &userInfo);
    void onControl(const platform::TextMap &userInfo);
    void send(const Answer &answer);
    MeetingStore &m_store;
    MeetingService &m_service;
    AnswerRules &m_rules;
    QList<platform::ObserverId> m_observers;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace meetingclient
