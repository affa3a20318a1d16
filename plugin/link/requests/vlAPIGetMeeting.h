// Reads a meeting back from the client.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

// Stores the meeting in vlGetMeetingHelper and delivers it. An answer with too few fields is dropped.
class vlAPIGetMeeting : public vlAPIBase {
public:
    explicit vlAPIGetMeeting(decltype(Kind::sendResponse) sendResponse = nullptr);
    void setData(const QString &meetingKey) { m_meetingKey = meetingKey; }
    [[nodiscard]] QString getAPIData() const override;

    [[nodiscard]] const QString &meetingKey() const { return m_meetingKey; }
    void setMeetingKey(const QString &meetingKey) { m_meetingKey = meetingKey; }
    // Whether the meeting is read as the user's personal one.
    [[nodiscard]] bool forPMI() const { return m_isForPMI; }
    void setForPMI(bool forPMI) { m_isForPMI = forPMI; }

protected:
    void describe(PendingRequest &request) const override;
    [[nodiscard]] Answer decoded(const QString &content) const override;
    bool handle(const PendingRequest &request, const Answer &answer) override;

private:
    QString m_meetingKey;
    bool m_isForPMI = false;
};
