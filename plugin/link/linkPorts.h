// What the client link needs from the layers above it.
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
    // Shows that the client is being talked to. A second call while it is shown does nothing.
    virtual void showCommunication(QWidget *window) = 0;
    virtual void closeCommunication() = 0; // nothing when not shown
};

// How a request tells the user what happens to it. Without a `window` (nullptr) a dialog stands on its own.
// Calls return at once.
class RequestFeedback {
public:
    virtual ~RequestFeedback() = default;
    // For the requests of one kind, which is named by its answer.
    [[nodiscard]] virtual std::unique_ptr<RequestProgress> makeProgress(ClientAnswer kind) = 0;
    virtual void showAlertMessage(QWidget *window, const QString &message) = 0;
    // The alert that offers to launch the client.
    virtual void showClientError(QWidget *window, const QString &message) = 0;
};

// Where finished requests go.
class FinishReceiver {
public:
    virtual ~FinishReceiver() = default;
    // The finish dictionary is {"vlAPIResponse", "keyApptWindowID"}; either entry may be missing.
    virtual void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) = 0;
    // A request of the owner at hand failed: the client did not get it, refused it or gave no usable answer.
    // No finish code follows.
    virtual void onRequestDenied() {}
    // The identifier of the appointment editor that the window belongs to; a null text when it belongs to
    // none.
    [[nodiscard]] virtual QString getApptWindowIDByWindow(QWidget *window) const = 0;
    // For whom the request being built schedules; a null or empty text: for the user.
    virtual void setScheduleForEmail(const QString &email) = 0;
};

// Filled by the composition root before the first request, emptied by tests. Neither is owned. With an empty
// port the link does its work and tells nobody.
struct LinkPorts {
    RequestFeedback *feedback = nullptr;
    FinishReceiver *finishReceiver = nullptr;
    static LinkPorts &instance();
};
