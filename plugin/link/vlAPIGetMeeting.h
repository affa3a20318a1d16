// Reads a meeting back from the client.
#pragma once

#include "plugin/link/vlAPIBase.h"

#include <QPointer>
#include <QWidget>

class vlAPIGetMeeting : public vlAPIBase {
public:
    void setData(const QString &meetingKey) { m_meetingKey = meetingKey; }
    ClientError doAction(QWidget *window);
    // Keeps what the answer carries in vlGetMeetingHelper and hands it back. An answer with too few fields is
    // dropped.
    void onVelaFeedback(const QString &content);
    [[nodiscard]] QString getAPIData() const;
    ClientError CheckFeedbackError(const QString &content);

    [[nodiscard]] const QString &meetingKey() const { return m_meetingKey; }
    void setMeetingKey(const QString &meetingKey) { m_meetingKey = meetingKey; }
    // Whether the meeting is read as the user's personal one.
    [[nodiscard]] bool forPMI() const { return m_isForPMI; }
    void setForPMI(bool forPMI) { m_isForPMI = forPMI; }

private:
    void takeMeeting(const QString &content);

    QPointer<QWidget> m_parentWindow;
    QString m_meetingKey;
    bool m_isForPMI = false;
};
