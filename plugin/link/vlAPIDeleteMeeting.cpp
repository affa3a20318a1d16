#include "plugin/link/vlAPIDeleteMeeting.h"

#include "plugin/link/feedbackErrors.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/requestHandBack.h"
#include "plugin/link/vlIPCChannel.h"

namespace {
constexpr QChar fieldSeparator = u';';
}

ClientError vlAPIDeleteMeeting::doAction(QWidget *window) {
    m_parentWindow = window;
    const ClientError error = action(window);
    if (error == ClientError::None)
        vlIPCChannel::sendIPCMessageToVelaClient(quint32(ClientAction::Meeting), getAPIData());
    return error;
}

QString vlAPIDeleteMeeting::getAPIData() const {
    return QString::number(qint32(MeetingSubCommand::Delete)) + fieldSeparator + m_meetingKey;
}

ClientError vlAPIDeleteMeeting::CheckFeedbackError(const QString &content) {
    const ClientError error = checkVelaAppError();
    return error == ClientError::None ? meetingFeedbackError(content) : error;
}

void vlAPIDeleteMeeting::onVelaFeedback(const QString &content) {
    onfeedback(qint32(ClientAnswer::Delete), content);
    // Only for what it finds out about the client itself, which the result below tells.
    CheckFeedbackError(content);
    QVariantMap answer{{vl_API_Para_InvitationEmail, QStringLiteral("")}, {keyVLResult, getAPIResult()}};
    if (!content.isNull())
        answer.insert(vl_MeetingKey, content);
    handBackToMeetingMgr(m_parentWindow, MeetingCommand::CmdDeleteMeeting, answer);
}
