// Turns the requests of a plug-in into changes of the store and into answers.
#pragma once

#include "standin/meetingclient/MeetingStore.h"

namespace meetingclient {

// The kinds of request. The number is the action id under which it is answered.
enum class Operation {
    Schedule = 1,
    Update = 2,
    Delete = 3,
    Get = 4,
    Profile = 6,
    Accounts = 9,
    StartMeeting = 102 // not answered
};

struct Answer {
    Operation operation;
    QString content;        // of a meeting that was started its URL
    bool withVideo = false; // of such a meeting
};

// The operation of a request; none if the client does not know it.
[[nodiscard]] std::optional<Operation> operationOf(quint32 actionId, const QString &content);
// Carries out the request; no value if the client does not know it.
[[nodiscard]] std::optional<Answer> carryOut(MeetingStore &store, quint32 actionId, const QString &content);

[[nodiscard]] QString joinUrl(const QString &meetingNumber, const QString &password);

} // namespace meetingclient
