// Schedules a new meeting for an appointment, or updates the appointment's meeting.
#pragma once

#include "plugin/link/vlAPIBase.h"

#include <QPointer>
#include <QVariantMap>
#include <QWidget>

class vlAPICommitMeeting : public vlAPIBase {
public:
    // UTF-16 units of the subject that are sent.
    static constexpr qsizetype maximumSubjectLength = 128;

    // Replaces the meeting-info record {"apptInfo", "setting", "meetingKey"}.
    void setData(const QVariantMap &meetingInfo) { m_dataMeetingInfo = meetingInfo; }
    void setMsgParamAction(MeetingSubCommand subCommand) { m_msgParamActionId = subCommand; }
    ClientError doAction(QWidget *window);
    // `actionId` is ClientAnswer::Schedule or ClientAnswer::Update; any other counts as the former.
    void onVelaFeedback(qint32 actionId, const QString &content);

    [[nodiscard]] bool hasValidMeetingInfo() const { return true; }
    // The content of the request. Also tells the receiver for whom it schedules.
    [[nodiscard]] QString getAPIData() const;
    [[nodiscard]] QString getContentIdentifierHead() const;
    ClientError CheckFeedbackError(const QString &content);
    [[nodiscard]] bool isUpdateMeeting() const { return m_msgParamActionId == MeetingSubCommand::Update; }
    [[nodiscard]] const QVariantMap &meetingInfo() const { return m_dataMeetingInfo; }
    void setMeetingInfo(const QVariantMap &meetingInfo) { m_dataMeetingInfo = meetingInfo; }

private:
    void handleAnswer(qint32 actionId, const QString &content);

    QVariantMap m_dataMeetingInfo;
    QPointer<QWidget> m_parentWindow;
    MeetingSubCommand m_msgParamActionId = MeetingSubCommand::Schedule;
};
