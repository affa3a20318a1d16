// Deletes a meeting.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

// Delivers the client's answer unread and never shows an alert, because the appointment is deleted in any
// case.
class vlAPIDeleteMeeting : public vlAPIBase {
public:
    explicit vlAPIDeleteMeeting(decltype(Kind::sendResponse) sendResponse = nullptr);
    void setData(const QString &meetingKey) { m_meetingKey = meetingKey; }
    [[nodiscard]] QString getAPIData() const override;

    [[nodiscard]] const QString &meetingKey() const { return m_meetingKey; }
    void setMeetingKey(const QString &meetingKey) { m_meetingKey = meetingKey; }

protected:
    void describe(PendingRequest &request) const override;
    [[nodiscard]] Answer decoded(const QString &content) const override { return {content, {content}, {}}; }
    bool handle(const PendingRequest &request, const Answer &answer) override;

private:
    QString m_meetingKey;
};
