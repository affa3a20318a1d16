#include "plugin/link/requests/vlAPIDeleteMeeting.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/feedbackErrors.h"

vlAPIDeleteMeeting::vlAPIDeleteMeeting(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase(
          {ClientAction::Meeting, ClientAnswer::Delete, meetingFeedbackError, false, true, sendResponse}) {}

QString vlAPIDeleteMeeting::getAPIData() const {
    return QString::number(qint32(MeetingSubCommand::Delete)) + fieldSeparator + m_meetingKey;
}

void vlAPIDeleteMeeting::describe(PendingRequest &request) const {
    request.meetingKey = m_meetingKey;
    request.isAnsweredWithKey = false; // the answer may have any content
}

bool vlAPIDeleteMeeting::handle(const PendingRequest &, const Answer &reply) {
    QVariantMap answer{{vl_API_Para_InvitationEmail, u""_s}, {keyVLResult, getAPIResult()}};
    if (!reply.content.isNull())
        answer.insert(vl_MeetingKey, reply.content);
    sendResponse(MeetingCommand::CmdDeleteMeeting, answer);
    return true;
}
