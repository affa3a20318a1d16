// All requests that the workflow can make to the meeting client.
#pragma once

#include "platform/runtime/Value.h"
#include "platform/services/bus/Notifications.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/util/sharedObject.h"

#include <QVariantMap>
#include <memory>

class ChannelObserver;
class QWidget;
struct Requester;
class vlAPICommitMeeting;
class vlAPIDeleteMeeting;
class vlAPIGetMeeting;
class vlAPIGetPAC;
class vlAPIGetUserProfile;

// Owns one request object for each operation and listens for the client's answers from its construction on.
// Calls return at once: 0 if the request was posted, else the number of a ClientError. The window may be
// nullptr; it is the parent of alerts and identifies the editor in the result. Main thread only.
class vlAPIMgr : public SharedObject<vlAPIMgr> {
public:
    vlAPIMgr();
    ~vlAPIMgr();
    vlAPIMgr(const vlAPIMgr &) = delete;
    vlAPIMgr &operator=(const vlAPIMgr &) = delete;

    qint32 startMeeting(bool withVideo);
    // `data` is a meeting-info record {"apptInfo", "setting", "meetingKey"}.
    qint32 scheduleMeeting(QWidget *window, const QVariantMap &data);
    qint32 updateMeeting(QWidget *window, const QVariantMap &data);
    // {"meetingKey"}.
    qint32 deleteMeeting(QWidget *window, const QVariantMap &data);
    // {"showCommunicationDlg"}: whether to show the progress window; false if absent.
    qint32 getUserProfile(QWidget *window, const QVariantMap &data = {});
    // {"showCommunicationDlg", "meetingKey", "isForPMI"}.
    qint32 getMeeting(QWidget *window, const QVariantMap &data);
    qint32 getPAC(QWidget *window, const QVariantMap &data = {});

    // Gives an answer of the client to its kind of request. Drops unknown action ids.
    void onMessageResponse(const platform::TextMap &userInfo);
    // For two appointments that got each other's answers: each takes over the other's requests.
    void exchangeOwners(const Requester &one, const Requester &other);
    // Gives the receiver the command with the dictionary {"vlAPIResponse": data, "keyApptWindowID":
    // identifier of the window's editor}. The first entry is left out without data, the second if the window
    // no longer exists or belongs to no editor.
    static void sendResponseToMeetingMgr(QWidget *window, MeetingCommand command, const rt::Value &data);

private:
    std::unique_ptr<vlAPIGetUserProfile> m_apiGetUserProfile;
    std::unique_ptr<vlAPICommitMeeting> m_apiScheduleMeeting;
    std::unique_ptr<vlAPICommitMeeting> m_apiUpdateMeeting;
    std::unique_ptr<vlAPIGetMeeting> m_apiGetMeeting;
    std::unique_ptr<vlAPIDeleteMeeting> m_apiDeleteMeeting;
    std::unique_ptr<vlAPIGetPAC> m_apiGetPAC;
    std::unique_ptr<ChannelObserver> m_answers; // last member: no answer reaches a partly destroyed object
};
