// Deletes a meeting.
#pragma once

#include "plugin/link/vlAPIBase.h"

#include <QPointer>
#include <QWidget>

class vlAPIDeleteMeeting : public vlAPIBase {
public:
    void setData(const QString &meetingKey) { m_meetingKey = meetingKey; }
    ClientError doAction(QWidget *window);
    // Hands back whatever the client says and never shows an alert: the appointment goes either way.
    void onVelaFeedback(const QString &content);
    [[nodiscard]] QString getAPIData() const;
    ClientError CheckFeedbackError(const QString &content);

    [[nodiscard]] const QString &meetingKey() const { return m_meetingKey; }
    void setMeetingKey(const QString &meetingKey) { m_meetingKey = meetingKey; }

private:
    QPointer<QWidget> m_parentWindow;
    QString m_meetingKey;
};
