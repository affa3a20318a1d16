// All that the workflow can ask the meeting client for.
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
// Calls return at once, with 0 when the request is on its way and a ClientError's number when it is not. The
// window may be nullptr; it is the parent of alerts and tells whose answer comes back. Main thread only.
class vlAPIMgr : public SharedObject<vlAPIMgr> {
public:
    vlAPIMgr();
    ~vlAPIMgr();
    vlAPIMgr(const vlAPIMgr &) = delete;
    vlAPIMgr &operator=(const vlAPIMgr &) = delete;

    qint32 startMeeting(bool withVideo);
    // A meeting-info record {"apptInfo", "setting", "meetingKey"}.
    qint32 scheduleMeeting(QWidget *window, const QVariantMap &data);
    qint32 updateMeeting(QWidget *window, const QVariantMap &data);
    // {"meetingKey"}.
    qint32 deleteMeeting(QWidget *window, const QVariantMap &data);
    // {"showCommunicationDlg"}: whether the progress window is shown; not when absent.
    qint32 getUserProfile(QWidget *window, const QVariantMap &data = {});
    // {"showCommunicationDlg", "meetingKey", "isForPMI"}.
    qint32 getMeeting(QWidget *window, const QVariantMap &data);
    qint32 getPAC(QWidget *window, const QVariantMap &data = {});

    // Takes one answer of the client to the request that it is for. Unknown action ids are dropped.
    void onMessageResponse(const platform::TextMap &userInfo);
    // Two appointments have got each other's answers: each takes the other's requests over.
    void exchangeOwners(const Requester &one, const Requester &other);
    // Gives the receiver the command with the dictionary {"vlAPIResponse": data, "keyApptWindowID":
    // identifier of the window's editor}. No data leaves out the first entry; a window that is gone or
    // belongs to no editor the second.
    static void sendResponseToMeetingMgr(QWidget *window, MeetingCommand command, const rt::Value &data);

private:
    std::unique_ptr<vlAPIGetUserProfile> m_apiGetUserProfile;
    std::unique_ptr<vlAPICommitMeeting> m_apiScheduleMeeting;
    std::unique_ptr<vlAPICommitMeeting> m_apiUpdateMeeting;
    std::unique_ptr<vlAPIGetMeeting> m_apiGetMeeting;
    std::unique_ptr<vlAPIDeleteMeeting> m_apiDeleteMeeting;
    std::unique_ptr<vlAPIGetPAC> m_apiGetPAC;
    std::unique_ptr<ChannelObserver> m_answers; // last: no answer comes to an object that is half gone
};
