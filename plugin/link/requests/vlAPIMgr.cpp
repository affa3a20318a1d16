#include "plugin/link/requests/vlAPIMgr.h"

#include "plugin/link/channel/channelObserver.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/vlAPICommitMeeting.h"
#include "plugin/link/requests/vlAPIDeleteMeeting.h"
#include "plugin/link/requests/vlAPIGetMeeting.h"
#include "plugin/link/requests/vlAPIGetPAC.h"
#include "plugin/link/requests/vlAPIGetUserProfile.h"
#include "plugin/link/requests/vlAPIStartMeeting.h"

namespace {

bool wantsProgress(const QVariantMap &data) {
    return rt::boolValue(data.value(vl_API_Call_Para_ShowCommunicationDlg));
}

QString meetingKeyIn(const QVariantMap &data) {
    return rt::textValue(data.value(vl_MeetingKey));
}

} // namespace

vlAPIMgr::vlAPIMgr()
    : m_apiGetUserProfile(std::make_unique<vlAPIGetUserProfile>(sendResponseToMeetingMgr))
    , m_apiScheduleMeeting(
          std::make_unique<vlAPICommitMeeting>(ClientAnswer::Schedule, sendResponseToMeetingMgr))
    , m_apiUpdateMeeting(std::make_unique<vlAPICommitMeeting>(ClientAnswer::Update, sendResponseToMeetingMgr))
    , m_apiGetMeeting(std::make_unique<vlAPIGetMeeting>(sendResponseToMeetingMgr))
    , m_apiDeleteMeeting(std::make_unique<vlAPIDeleteMeeting>(sendResponseToMeetingMgr))
    , m_apiGetPAC(std::make_unique<vlAPIGetPAC>(sendResponseToMeetingMgr))
    , m_answers(std::make_unique<ChannelObserver>(
          kIPCNotifyVelaClientToOutlookPlugin,
          [this](const platform::TextMap &userInfo) { onMessageResponse(userInfo); })) {}

vlAPIMgr::~vlAPIMgr() = default;

qint32 vlAPIMgr::startMeeting(bool withVideo) {
    return qint32(vlAPIStartMeeting::sharedInstance().doAction(withVideo));
}

qint32 vlAPIMgr::scheduleMeeting(QWidget *window, const QVariantMap &data) {
    m_apiScheduleMeeting->setData(data);
    return qint32(m_apiScheduleMeeting->doAction(window));
}

qint32 vlAPIMgr::updateMeeting(QWidget *window, const QVariantMap &data) {
    m_apiUpdateMeeting->setData(data);
    m_apiUpdateMeeting->setMsgParamAction(MeetingSubCommand::Update);
    return qint32(m_apiUpdateMeeting->doAction(window));
}

qint32 vlAPIMgr::deleteMeeting(QWidget *window, const QVariantMap &data) {
    m_apiDeleteMeeting->setData(meetingKeyIn(data));
    return qint32(m_apiDeleteMeeting->doAction(window));
}

qint32 vlAPIMgr::getUserProfile(QWidget *window, const QVariantMap &data) {
    m_apiGetUserProfile->setShowCommunicationDlg(wantsProgress(data));
    return qint32(m_apiGetUserProfile->doAction(window));
}

qint32 vlAPIMgr::getMeeting(QWidget *window, const QVariantMap &data) {
    m_apiGetMeeting->setShowCommunicationDlg(wantsProgress(data));
    m_apiGetMeeting->setData(meetingKeyIn(data));
    m_apiGetMeeting->setForPMI(rt::boolValue(data.value(vl_API_Call_Para_ForPMI)));
    return qint32(m_apiGetMeeting->doAction(window));
}

qint32 vlAPIMgr::getPAC(QWidget *window, const QVariantMap &data) {
    m_apiGetPAC->setShowCommunicationDlg(wantsProgress(data));
    return qint32(m_apiGetPAC->doAction(window));
}

void vlAPIMgr::onMessageResponse(const platform::TextMap &userInfo) {
    const qint64 actionId = envelopeActionId(userInfo);
    const QString content = envelopeContent(userInfo);
    switch (actionId) {
    case qint64(ClientAnswer::Schedule):
        return m_apiScheduleMeeting->onVelaFeedback(content);
    case qint64(ClientAnswer::Update):
        return m_apiUpdateMeeting->onVelaFeedback(content);
    case qint64(ClientAnswer::Delete):
        return m_apiDeleteMeeting->onVelaFeedback(content);
    case qint64(ClientAnswer::GetMeeting):
        return m_apiGetMeeting->onVelaFeedback(content);
    case qint64(ClientAnswer::GetUserProfile):
        return m_apiGetUserProfile->onVelaFeedback(content);
    case qint64(ClientAnswer::GetPAC):
        return m_apiGetPAC->onVelaFeedback(content);
    default:
        return;
    }
}

void vlAPIMgr::exchangeOwners(const Requester &one, const Requester &other) {
    m_apiScheduleMeeting->exchangeOwners(one, other);
    m_apiGetMeeting->exchangeOwners(one, other);
}

void vlAPIMgr::sendResponseToMeetingMgr(QWidget *window, MeetingCommand command, const rt::Value &data) {
    FinishReceiver *receiver = LinkPorts::instance().finishReceiver;
    if (!receiver)
        return;
    QVariantMap answer;
    if (rt::isPresent(data))
        answer.insert(keyVlAPIResponse, data);
    const QString apptWindowID = window ? receiver->getApptWindowIDByWindow(window) : QString();
    if (!apptWindowID.isNull())
        answer.insert(keyApptWindowID, apptWindowID);
    receiver->onExcuteCommandFinished(command, answer);
}
