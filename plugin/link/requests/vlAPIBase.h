// What all requests to the meeting client have in common.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/requests/PendingRequests.h"

#include <QString>
#include <QVariant>
#include <memory>

class QWidget;
class RequestFeedback;
class RequestProgress;

// One object serves all requests of its kind. A request is made for the owner that is at hand, and its answer
// is handled with that owner at hand; one that nobody waits for changes no appointment. Main thread only.
// Windows are not owned and may die while a request is out.
class vlAPIBase {
public:
    static constexpr double timeOutSeconds = 30.0;

    // What one kind of request differs by.
    struct Kind {
        ClientAction action = ClientAction::StartMeeting;
        ClientAnswer answer = ClientAnswer::Schedule;
        ClientError (*errorIn)(const QString &content) = nullptr; // nullptr: no answer comes
        bool endsWithError = true; // an error is shown and the answer is not handled
        bool isAwaited = true;     // the work that asked waits for the answer
        // Where a finished request goes; nullptr: nowhere.
        void (*sendResponse)(QWidget *window, MeetingCommand command, const QVariant &data) = nullptr;
    };

    explicit vlAPIBase(const Kind &kind);
    virtual ~vlAPIBase();
    vlAPIBase(const vlAPIBase &) = delete;
    vlAPIBase &operator=(const vlAPIBase &) = delete;

    // Makes the request: checks the client, begins to wait, and posts. An error is shown on the window and
    // returned, and nothing is posted.
    virtual ClientError doAction(QWidget *window);
    // Takes the client's answer.
    void onVelaFeedback(const QString &content);
    // What is posted.
    [[nodiscard]] virtual QString getAPIData() const;
    // The status of the client now, else what the answer says went wrong.
    ClientError CheckFeedbackError(const QString &content);

    // Checks the client and begins to wait: the time-out runs and, if wished for, the progress window is
    // shown. An error is shown on the window and returned, and nothing is waited for.
    ClientError action(QWidget *window);
    // Ends the waiting of the request that was answered.
    void onfeedback(qint32 actionId, const QString &content);
    // Lets go of the time-out of the request at hand, which still comes.
    void releaseTimer();
    // Stops the time-out of the request at hand.
    void invalidateTimer();
    // Closes the progress window, unless another request of this kind needs it. The request stays ready for a
    // late answer.
    void onTimeOut();
    // Each of the two gets the other's requests.
    void exchangeOwners(const Requester &one, const Requester &other) {
        m_pending.exchangeOwners(one, other);
    }

    // Looks at the client now and keeps the outcome as the last error.
    ClientError checkVelaAppError();
    // "Fail" when the last check of the client found an error, "Success" otherwise.
    [[nodiscard]] QString getAPIResult() const;
    // Shows the text of the code; an empty text for a code that has none.
    void popupErrorMsg(QWidget *window, ClientError errorCode);
    // Shows the text itself.
    void popupWarnWithErrorMsg(QWidget *window, const QString &message);
    [[nodiscard]] ClientStatus GetVelaCLientStatus() const;

    [[nodiscard]] ClientError error() const { return m_error; }
    void setError(ClientError error) { m_error = error; }
    [[nodiscard]] bool showCommunicationDlg() const { return m_showCommunicationDlg; }
    void setShowCommunicationDlg(bool show) { m_showCommunicationDlg = show; }

protected:
    // What is noted of a request beside its owner and window: its meeting key, and whether it is for the
    // personal meeting.
    virtual void describe(PendingRequest &) const {}
    // What an answer says. It is decoded once.
    struct Answer {
        QString content;         // as it came
        QStringList meetingKeys; // that it tells, the likeliest first
        rt::Value dictionary;    // no value when it has none that can be read
    };
    // Not called for an error.
    [[nodiscard]] virtual Answer decoded(const QString &content) const { return {content, {}, {}}; }
    // Handles an answer that is no error. False: it was of no use, and nothing is handed back.
    virtual bool handle(const PendingRequest &, const Answer &) { return false; }
    // An answer that is no error and that nobody waits for.
    virtual void handleUnasked(const Answer &) {}
    [[nodiscard]] static rt::Value dictionaryIn(const QString &json);
    static constexpr QChar fieldSeparator = u';';

    // To the workflow, for the window of the request at hand.
    void sendResponse(MeetingCommand command, const QVariant &data) const;
    [[nodiscard]] QWidget *parentWindow() const { return m_parentWindow; }

private:
    void startTimer();
    void showProgress(QWidget *window);
    void closeProgress();
    // The work that waits is not going on: the user has been told, or there is nothing to tell.
    void deny() const;
    void take(PendingRequest &pending, const Answer &answer);

    Kind m_kind;
    ClientError m_error = ClientError::None;
    bool m_showCommunicationDlg = true;
    PendingRequests m_pending;
    QPointer<QWidget> m_parentWindow; // of the request at hand, and its owner
    std::weak_ptr<RequestOwner> m_owner;
    std::shared_ptr<vlAPIBase *> m_self; // lets timers know that the object is gone
    // The time-out of the request at hand; expires when it has come or its loop is gone.
    std::weak_ptr<quint64> myTimer;
    // Made when first shown, and again when the port is filled anew.
    std::unique_ptr<RequestProgress> myProgressUI;
    RequestFeedback *m_progressMaker = nullptr;
};
