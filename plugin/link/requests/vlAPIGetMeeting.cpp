#include "plugin/link/requests/vlAPIGetMeeting.h"

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/requests/feedbackErrors.h"
#include "plugin/util/EncodeUtils.h"

namespace {

// Positions of the fields in use. An answer that ends before the first of them is dropped.
constexpr qsizetype meetingField = 13;
constexpr qsizetype binaryMeetingField = 14;

} // namespace

vlAPIGetMeeting::vlAPIGetMeeting(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase({ClientAction::Meeting, ClientAnswer::GetMeeting, meetingFeedbackError, true, true,
                 sendResponse}) {}

QString vlAPIGetMeeting::getAPIData() const {
    return QString::number(qint32(MeetingSubCommand::Get)) + fieldSeparator + m_meetingKey;
}

void vlAPIGetMeeting::describe(PendingRequest &request) const {
    request.meetingKey = m_meetingKey;
    request.forPMI = m_isForPMI;
}

// A request for the personal meeting uses that meeting's number as its key.
vlAPIGetMeeting::Answer vlAPIGetMeeting::decoded(const QString &content) const {
    const QString encoded = content.section(fieldSeparator, meetingField, meetingField);
    Answer answer{content, {}, dictionaryIn(EncodeUtils::base64Decode(encoded))};
    const QVariantMap meeting = rt::mapValue(answer.dictionary);
    for (const QString &member : {vl_MeetingKey, vl_Meeting_OriginalNumber})
        if (const QString key = meeting.value(member).toString(); !key.isEmpty())
            answer.meetingKeys.append(key);
    return answer;
}

bool vlAPIGetMeeting::handle(const PendingRequest &request, const Answer &answer) {
    const QList<QStringView> fields = QStringView(answer.content).split(fieldSeparator);
    if (fields.size() <= meetingField)
        return false;
    vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();
    helper.setMeetingData(rt::mapValue(answer.dictionary), request.forPMI);
    if (fields.size() > binaryMeetingField)
        helper.setPBMeetingData(fields[binaryMeetingField].toString());
    sendResponse(MeetingCommand::CmdGetMeetingDone, answer.dictionary);
    return true;
}
