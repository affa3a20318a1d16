// The interfaces that the client link needs from the layers above it.
#pragma once

#include "plugin/link/clientCodes.h"
#include "plugin/link/meetingCommand.h"

#include <QString>
#include <QVariantMap>
#include <memory>

class QWidget;

// The progress window of one request object.
class RequestProgress {
public:
    virtual ~RequestProgress() = default;
    // Shows that a request to the client is running. A second call while the window is shown does nothing.
    virtual void showCommunication(QWidget *window) = 0;
    virtual void closeCommunication() = 0; // does nothing if it is not shown
};

// Shows the user the progress and the errors of a request. Without a `window` (nullptr) a dialog has no
// parent. Calls return at once.
class RequestFeedback {
public:
    virtual ~RequestFeedback() = default;
    // For the requests of one kind, identified by its answer.
    [[nodiscard]] virtual std::unique_ptr<RequestProgress> makeProgress(ClientAnswer kind) = 0;
    virtual void showAlertMessage(QWidget *window, const QString &message) = 0;
    // The alert that offers to launch the client.
    virtual void showClientError(QWidget *window, const QString &message) = 0;
};

// Receives finished requests.
class FinishReceiver {
public:
    virtual ~FinishReceiver() = default;
    // `data` is {"vlAPIResponse", "keyApptWindowID"}; either entry may be missing.
    virtual void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) = 0;
    // A request of the current owner failed: the client did not receive it, refused it or gave no usable
    // answer. No finish code follows.
    virtual void onRequestDenied() {}
    // The identifier of the window's appointment editor; null if the window belongs to no editor.
    [[nodiscard]] virtual QString getApptWindowIDByWindow(QWidget *window) const = 0;
    // Sets for whom the request being built schedules; a null or empty text stands for the user.
    virtual void setScheduleForEmail(const QString &email) = 0;
};

// The composition root fills the ports before the first request; tests empty them. They are not owned. With
// an empty port the link works without reporting to the user or the workflow.
struct LinkPorts {
    RequestFeedback *feedback = nullptr;
    FinishReceiver *finishReceiver = nullptr;
    static LinkPorts &instance();
};
