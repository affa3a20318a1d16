#include "plugin/link/vlAPIGetMeeting.h"

#include "platform/runtime/Value.h"
#include "plugin/link/feedbackErrors.h"
#include "plugin/link/requestHandBack.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/link/vlIPCChannel.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"

namespace {

constexpr QChar fieldSeparator = u';';
// Positions of the fields that are read; an answer that ends before the first is dropped.
constexpr qsizetype meetingField = 13;
constexpr qsizetype binaryMeetingField = 14;

} // namespace

ClientError vlAPIGetMeeting::doAction(QWidget *window) {
    m_parentWindow = window;
    const ClientError error = action(window);
    if (error == ClientError::None)
        vlIPCChannel::sendIPCMessageToVelaClient(quint32(ClientAction::Meeting), getAPIData());
    return error;
}

QString vlAPIGetMeeting::getAPIData() const {
    return QString::number(qint32(MeetingSubCommand::Get)) + fieldSeparator + m_meetingKey;
}

ClientError vlAPIGetMeeting::CheckFeedbackError(const QString &content) {
    const ClientError error = checkVelaAppError();
    return error == ClientError::None ? meetingFeedbackError(content) : error;
}

void vlAPIGetMeeting::onVelaFeedback(const QString &content) {
    onfeedback(qint32(ClientAnswer::GetMeeting), content);
    const ClientError error = CheckFeedbackError(content);
    if (error == ClientError::None) {
        takeMeeting(content);
    } else {
        popupErrorMsg(m_parentWindow, error);
        tellRefused();
    }
}

void vlAPIGetMeeting::takeMeeting(const QString &content) {
    const QList<QStringView> fields = QStringView(content).split(fieldSeparator);
    if (fields.size() <= meetingField)
        return tellRefused();
    const QString json = EncodeUtils::base64Decode(fields[meetingField].toString());
    const rt::Value parsed = vlOLUtils::toArrayOrNSDictionary(json);
    const bool isDictionary = parsed.typeId() == QMetaType::QVariantMap;
    vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();
    helper.setMeetingData(rt::mapValue(parsed), m_isForPMI);
    if (fields.size() > binaryMeetingField)
        helper.setPBMeetingData(fields[binaryMeetingField].toString());
    handBackToMeetingMgr(m_parentWindow, MeetingCommand::CmdGetMeetingDone,
                         isDictionary ? parsed : rt::Value());
}
