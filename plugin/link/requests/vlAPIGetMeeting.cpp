#include "plugin/link/requests/vlAPIGetMeeting.h"

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/requests/feedbackErrors.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"

namespace {

constexpr QChar fieldSeparator = u';';
// Positions of the fields that are read; an answer that ends before the first is dropped.
constexpr qsizetype meetingField = 13;
constexpr qsizetype binaryMeetingField = 14;

// The meeting, or no value when it cannot be read.
rt::Value meetingIn(const QList<QStringView> &fields) {
    if (fields.size() <= meetingField)
        return {};
    return vlOLUtils::toArrayOrNSDictionary(EncodeUtils::base64Decode(fields[meetingField].toString()));
}

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

// The personal meeting is asked for by its number.
QStringList vlAPIGetMeeting::meetingKeysIn(const QString &content) const {
    const QVariantMap meeting = rt::mapValue(meetingIn(QStringView(content).split(fieldSeparator)));
    QStringList keys;
    for (const QString &member : {vl_MeetingKey, vl_Meeting_OriginalNumber})
        if (const QString key = meeting.value(member).toString(); !key.isEmpty())
            keys.append(key);
    return keys;
}

bool vlAPIGetMeeting::handle(const PendingRequest &request, const QString &content) {
    const QList<QStringView> fields = QStringView(content).split(fieldSeparator);
    if (fields.size() <= meetingField)
        return false;
    const rt::Value parsed = meetingIn(fields);
    const bool isDictionary = parsed.typeId() == QMetaType::QVariantMap;
    vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();
    helper.setMeetingData(rt::mapValue(parsed), request.forPMI);
    if (fields.size() > binaryMeetingField)
        helper.setPBMeetingData(fields[binaryMeetingField].toString());
    sendResponse(MeetingCommand::CmdGetMeetingDone, isDictionary ? parsed : rt::Value());
    return true;
}
