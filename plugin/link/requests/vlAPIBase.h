// The base class of all requests to the meeting client.
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

// One object serves all requests of its kind. A request belongs to the current owner, and its answer is
// handled with that owner as the current one. An answer without a waiting request changes no appointment.
// Main thread only. Windows are not owned and may be deleted while a request is pending.
class vlAPIBase {
public:
    static constexpr double timeOutSeconds = 30.0;

    // The properties of one kind of request.
    struct Kind {
        ClientAction action = ClientAction::StartMeeting;
        ClientAnswer answer = ClientAnswer::Schedule;
        ClientError (*errorIn)(const QString &content) = nullptr; // nullptr: the client sends no answer
        bool endsWithError = true; // an error is shown instead of handling the answer
        bool isAwaited = true;     // the meeting work waits for the answer
        // Delivers a finished request; nullptr: the result is not delivered.
        void (*sendResponse)(QWidget *window, MeetingCommand command, const QVariant &data) = nullptr;
    };

    explicit vlAPIBase(const Kind &kind);
    virtual ~vlAPIBase();
    vlAPIBase(const vlAPIBase &) = delete;
    vlAPIBase &operator=(const vlAPIBase &) = delete;

    // Makes the request: checks the client, starts to wait, and posts the message. On an error it posts
    // nothing, shows the error on the window and returns it.
    virtual ClientError doAction(QWidget *window);
    // Handles the client's answer.
    void onVelaFeedback(const QString &content);
    // The content of the message to post.
    [[nodiscard]] virtual QString getAPIData() const;
    // The error in the client's present status, else the error in the answer.
    ClientError CheckFeedbackError(const QString &content);

    // Checks the client and starts to wait: starts the time-out and, if requested, shows the progress window.
    // On an error it does not wait, shows the error on the window and returns it.
    ClientError action(QWidget *window);
    // Stops the waiting of the answered request.
    void onfeedback(qint32 actionId, const QString &content);
    // Forgets the time-out of the current request without cancelling it; it will still fire.
    void releaseTimer();
    // Cancels the time-out of the current request.
    void invalidateTimer();
    // Closes the progress window unless another request of this kind needs it. The request still accepts a
    // late answer.
    void onTimeOut();
    // Gives each of the two the other's requests.
    void exchangeOwners(const Requester &one, const Requester &other) {
        m_pending.exchangeOwners(one, other);
    }

    // Checks the client's present status and keeps the result as the last error.
    ClientError checkVelaAppError();
    // "Fail" if the last check of the client found an error, else "Success".
    [[nodiscard]] QString getAPIResult() const;
    // Shows the text of the code; an empty text if the code has none.
    void popupErrorMsg(QWidget *window, ClientError errorCode);
    // Shows the given text.
    void popupWarnWithErrorMsg(QWidget *window, const QString &message);
    [[nodiscard]] ClientStatus GetVelaCLientStatus() const;

    [[nodiscard]] ClientError error() const { return m_error; }
    void setError(ClientError error) { m_error = error; }
    [[nodiscard]] bool showCommunicationDlg() const { return m_showCommunicationDlg; }
    void setShowCommunicationDlg(bool show) { m_showCommunicationDlg = show; }

protected:
    // Fills in the request's meeting key and whether it is for the personal meeting.
    virtual void describe(PendingRequest &) const {}
    // An answer, decoded once.
    struct Answer {
        QString content;         // as received
        QStringList meetingKeys; // the likeliest first
        rt::Value dictionary;    // no value if it has no readable one
    };
    // Not called for an error.
    [[nodiscard]] virtual Answer decoded(const QString &content) const { return {content, {}, {}}; }
    // Handles an answer that is not an error. Returns false if the answer is unusable; then no result is
    // delivered.
    virtual bool handle(const PendingRequest &, const Answer &) { return false; }
    // Handles an answer that is not an error and for which no request waits.
    virtual void handleUnasked(const Answer &) {}
    [[nodiscard]] static rt::Value dictionaryIn(const QString &json);
    static constexpr QChar fieldSeparator = u';';

    // Sends the result to the workflow, for the window of the current request.
    void sendResponse(MeetingCommand command, const QVariant &data) const;
    [[nodiscard]] QWidget *parentWindow() const { return m_parentWindow; }

private:
    void startTimer();
    void showProgress(QWidget *window);
    void closeProgress();
    // Ends the work that waits for the answer. The user was told of the error if there was one.
    void deny() const;
    void take(PendingRequest &pending, const Answer &answer);

    Kind m_kind;
    ClientError m_error = ClientError::None;
    bool m_showCommunicationDlg = true;
    PendingRequests m_pending;
    QPointer<QWidget> m_parentWindow; // window and owner of the current request
    std::weak_ptr<RequestOwner> m_owner;
    std::shared_ptr<vlAPIBase *> m_self; // expires with the object, for its timers
    // The time-out of the current request; expires when it fires, when it is cancelled or when its run loop
    // no longer exists.
    std::weak_ptr<quint64> myTimer;
    // Made on first use, and again after the port has changed.
    std::unique_ptr<RequestProgress> myProgressUI;
    RequestFeedback *m_progressMaker = nullptr;
};
