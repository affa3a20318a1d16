// Turns the requests of a plug-in into changes of the store and into answers.
#pragma once

#include "standin/meetingclient/MeetingStore.h"

#include <QString>
#include <optional>

namespace meetingclient {

// The kinds of request, and the action id under which each is answered.
enum class Operation {
    Schedule = 1,
    Update = 2,
    Delete = 3,
    Get = 4,
    Profile = 6,
    Accounts = 9,
    StartMeeting = 102
};

struct Answer {
    Operation operation;
    QString content;
    [[nodiscard]] quint32 actionId() const { return quint32(operation); }
};

// The instant meeting of a start request.
struct InstantMeeting {
    bool withVideo = false;
    QString joinUrl;
};

class MeetingService {
public:
    explicit MeetingService(MeetingStore &store)
        : m_store(store) {}

    // The operation of a request; none if the client does not know it.
    [[nodiscard]] static std::optional<Operation> operationOf(quint32 actionId, const QString &content);
    // Carries out the request. Returns no answer to a start request or an unknown request.
    std::optional<Answer> handle(quint32 actionId, const QString &content);
    // The instant meeting that the last handle() started.
    [[nodiscard]] const std::optional<InstantMeeting> &startedMeeting() const { return m_started; }

    [[nodiscard]] static QString joinUrl(const QString &meetingNumber, const QString &password);
    // The plain-text invitation of a meeting.
    [[nodiscard]] QString invitation(const QJsonObject &meeting) const;

private:
    QString answerTo(Operation operation, const QString &content);
    QString schedule(const QString &content);
    QString update(const QString &content);
    QString remove(const QString &key);
    QString get(const QString &key) const;
    QString profile() const;
    QString accounts() const;
    void start(const QString &content);
    void applyRequest(const QJsonObject &request, QJsonObject &meeting) const;
    QString committed(const QString &key) const;

    MeetingStore &m_store;
    std::optional<InstantMeeting> m_started;
};

} // namespace meetingclient
