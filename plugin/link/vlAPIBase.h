// What all requests to the meeting client have in common.
#pragma once

#include "plugin/link/clientCodes.h"

#include <QString>
#include <memory>

class QWidget;
class RequestFeedback;
class RequestProgress;

// One object serves all requests of its kind, one after the other; a new request takes the place of one that
// is out. Main thread only. Windows are not owned and may die while a request is out.
class vlAPIBase {
public:
    static constexpr double timeOutSeconds = 30.0;

    vlAPIBase();
    virtual ~vlAPIBase();
    vlAPIBase(const vlAPIBase &) = delete;
    vlAPIBase &operator=(const vlAPIBase &) = delete;

    // Checks the client and begins to wait: the time-out runs and, if wished for, the progress window is
    // shown. An error is shown on the window and returned, and nothing is waited for.
    ClientError action(QWidget *window);
    // Ends the waiting.
    void onfeedback(qint32 actionId, const QString &content);
    // Lets go of the time-out, which still comes.
    void releaseTimer();
    // Stops the time-out.
    void invalidateTimer();
    // Closes the progress window. The request stays ready for a late answer.
    void onTimeOut();

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

private:
    void startTimer();
    void showProgress(QWidget *window);
    void closeProgress();

    ClientError m_error = ClientError::None;
    bool m_showCommunicationDlg = true;
    std::shared_ptr<vlAPIBase *> m_self; // lets timers know that the object is gone
    // The id of the time-out that is held; expires when it has come or its loop is gone.
    std::weak_ptr<quint64> myTimer;
    // Made when first shown, and again when the port is filled anew.
    std::unique_ptr<RequestProgress> myProgressUI;
    RequestFeedback *m_progressMaker = nullptr;
};
