// Schedules a new meeting for an appointment, or updates the appointment's meeting.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

#include <QVariantMap>

class vlAPICommitMeeting : public vlAPIBase {
public:
    // In UTF-16 units; the rest of the subject is not sent.
    static constexpr qsizetype maximumSubjectLength = 128;

    explicit vlAPICommitMeeting(ClientAnswer answer = ClientAnswer::Schedule,
                                decltype(Kind::sendResponse) sendResponse = nullptr);
    // Replaces the meeting-info record {"apptInfo", "setting", "meetingKey"}.
    void setData(const QVariantMap &meetingInfo) { m_dataMeetingInfo = meetingInfo; }
    void setMsgParamAction(MeetingSubCommand subCommand) { m_msgParamActionId = subCommand; }
    // Also reports to the receiver for whom the meeting is scheduled.
    ClientError doAction(QWidget *window) override;

    [[nodiscard]] bool hasValidMeetingInfo() const { return true; }
    [[nodiscard]] QString getAPIData() const override;
    [[nodiscard]] QString getContentIdentifierHead() const;
    [[nodiscard]] bool isUpdateMeeting() const { return m_msgParamActionId == MeetingSubCommand::Update; }
    [[nodiscard]] const QVariantMap &meetingInfo() const { return m_dataMeetingInfo; }
    void setMeetingInfo(const QVariantMap &meetingInfo) { m_dataMeetingInfo = meetingInfo; }

protected:
    void describe(PendingRequest &request) const override;
    [[nodiscard]] Answer decoded(const QString &content) const override;
    bool handle(const PendingRequest &request, const Answer &answer) override;

private:
    QVariantMap m_dataMeetingInfo;
    MeetingSubCommand m_msgParamActionId = MeetingSubCommand::Schedule;
};
