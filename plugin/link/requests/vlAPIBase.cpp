#include "plugin/link/requests/vlAPIBase.h"

#include "platform/services/Services.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlOLUtils.h"

namespace {

ClientError errorOfStatus(ClientStatus status) {
    switch (status) {
    case ClientStatus::NotInstalled:
        return ClientError::NotInstalled;
    case ClientStatus::NotRunning:
        return ClientError::NotRunning;
    case ClientStatus::NotSupported:
        return ClientError::NotSupported;
    case ClientStatus::Running:
        break;
    }
    return ClientError::None;
}

// The key of the error's text; null for a code without a text.
QString textKeyOfError(ClientError error) {
    switch (error) {
    case ClientError::NotInstalled:
        return u"NoVelaClient"_s;
    case ClientError::Internet:
        return u"InternetError"_s;
    case ClientError::NotRunning:
        return u"VelaClientNotRunning"_s;
    case ClientError::NotSupported:
        return u"NotSupportedVelaClientVersion"_s;
    case ClientError::NotSignedIn:
        return u"VelaClientNotSignIn"_s;
    case ClientError::System:
        return u"SystemError"_s;
    case ClientError::MeetingNotFound:
        return u"MeetingNotFound"_s;
    case ClientError::Network:
        return u"NetworkConnectionError"_s;
    case ClientError::None:
        break;
    }
    return {};
}

} // namespace

vlAPIBase::vlAPIBase(const Kind &kind)
    : m_kind(kind)
    , m_self(std::make_shared<vlAPIBase *>(this)) {}

vlAPIBase::~vlAPIBase() = default;

QString vlAPIBase::getAPIData() const {
    return QString::number(quint32(m_kind.action));
}

ClientError vlAPIBase::doAction(QWidget *window) {
    const ClientError error = action(window);
    if (error == ClientError::None)
        vlIPCChannel::sendIPCMessageToVelaClient(quint32(m_kind.action), getAPIData());
    return error;
}

ClientError vlAPIBase::action(QWidget *window) {
    m_parentWindow = window;
    const ClientError error = checkVelaAppError();
    if (error != ClientError::None) {
        popupErrorMsg(window, error);
        deny();
        return error;
    }
    releaseTimer();
    m_owner = RequestOwner::atHand();
    startTimer();
    PendingRequest request;
    request.owner = m_owner;
    request.window = window;
    request.showsProgress = m_showCommunicationDlg;
    request.timer = myTimer;
    describe(request);
    m_pending.add(std::move(request));
    if (m_showCommunicationDlg)
        showProgress(window);
    return ClientError::None;
}

void vlAPIBase::onVelaFeedback(const QString &content) {
    const bool isError = m_kind.errorIn(content) != ClientError::None;
    const Answer answer = isError ? Answer{content, {}, {}} : decoded(content);
    if (PendingRequest *pending = m_pending.requestFor(answer.meetingKeys))
        take(*pending, answer);
    else if (CheckFeedbackError(content) == ClientError::None)
        handleUnasked(answer);
}

// Handling may send a new request and so invalidate `pending`: it is used afterwards only if handling gave no
// result.
void vlAPIBase::take(PendingRequest &pending, const Answer &answer) {
    const PendingRequest request = pending;
    pending.state = PendingRequest::State::Answered;
    if (!answer.meetingKeys.isEmpty())
        pending.meetingKey = answer.meetingKeys.first();
    m_parentWindow = request.window;
    m_owner = request.owner;
    myTimer = request.timer;
    const RequestOwner::Scope scope(request.owner.lock()); // nobody if the owner no longer exists
    onfeedback(qint32(m_kind.answer), answer.content);
    const ClientError error = CheckFeedbackError(answer.content);
    const bool isAccepted = error == ClientError::None || !m_kind.endsWithError;
    const bool isOfUse = isAccepted && handle(request, answer);
    if (request.owner.expired()) // nobody needs the meeting just read
        RequestOwner::nobody()->loadedMeeting = {};
    if (isOfUse)
        return;
    pending.state = PendingRequest::State::Refused;
    if (!isAccepted)
        popupErrorMsg(m_parentWindow, error);
    deny();
}

rt::Value vlAPIBase::dictionaryIn(const QString &json) {
    const rt::Value parsed = vlOLUtils::toArrayOrNSDictionary(json);
    return parsed.typeId() == QMetaType::QVariantMap ? parsed : rt::Value();
}

void vlAPIBase::deny() const {
    FinishReceiver *receiver = LinkPorts::instance().finishReceiver;
    if (receiver && m_kind.isAwaited)
        receiver->onRequestDenied();
}

ClientError vlAPIBase::CheckFeedbackError(const QString &content) {
    const ClientError error = checkVelaAppError();
    return error == ClientError::None ? m_kind.errorIn(content) : error;
}

void vlAPIBase::sendResponse(MeetingCommand command, const QVariant &data) const {
    if (m_kind.sendResponse)
        m_kind.sendResponse(m_parentWindow, command, data);
}

void vlAPIBase::onfeedback(qint32, const QString &) {
    closeProgress();
    invalidateTimer();
}

void vlAPIBase::startTimer() {
    auto id = std::make_shared<quint64>();
    const std::weak_ptr<vlAPIBase *> self = m_self;
    *id = platform::services().runLoop->callAfter(timeOutSeconds, [self, id, owner = m_owner] {
        const auto object = self.lock();
        if (!object)
            return;
        if (PendingRequest *request = (*object)->m_pending.requestWithTimer(id))
            request->timedOut = true;
        (*object)->m_owner = owner;
        (*object)->onTimeOut();
    });
    myTimer = id;
}

void vlAPIBase::releaseTimer() {
    myTimer.reset();
}

void vlAPIBase::invalidateTimer() {
    // The pointer has expired if the timer has fired or if the run loop was replaced. The new loop may have
    // given the same id to another timer.
    if (const auto id = myTimer.lock())
        platform::services().runLoop->cancel(*id);
}

void vlAPIBase::onTimeOut() {
    closeProgress();
}

void vlAPIBase::showProgress(QWidget *window) {
    RequestFeedback *feedback = LinkPorts::instance().feedback;
    if (feedback != m_progressMaker) {
        myProgressUI = feedback ? feedback->makeProgress(m_kind.answer) : nullptr;
        m_progressMaker = feedback;
    }
    if (myProgressUI)
        myProgressUI->showCommunication(window);
}

void vlAPIBase::closeProgress() {
    if (myProgressUI && !m_pending.othersShowProgress(m_owner.lock()))
        myProgressUI->closeCommunication();
}

ClientError vlAPIBase::checkVelaAppError() {
    setError(errorOfStatus(GetVelaCLientStatus()));
    return m_error;
}

QString vlAPIBase::getAPIResult() const {
    return m_error == ClientError::None ? keyVLSuccess : keyVLFail;
}

void vlAPIBase::popupErrorMsg(QWidget *window, ClientError errorCode) {
    const QString key = textKeyOfError(errorCode);
    const QString message = key.isNull() ? u""_s : vlLocalizedString(key);
    if (errorCode != ClientError::NotRunning)
        popupWarnWithErrorMsg(window, message);
    else if (RequestFeedback *feedback = LinkPorts::instance().feedback)
        feedback->showClientError(window, message);
}

void vlAPIBase::popupWarnWithErrorMsg(QWidget *window, const QString &message) {
    if (RequestFeedback *feedback = LinkPorts::instance().feedback)
        feedback->showAlertMessage(window, message);
}

ClientStatus vlAPIBase::GetVelaCLientStatus() const {
    const vlAppHelper &applications = vlAppHelper::sharedInstance();
    if (!applications.isVelausInstalled())
        return ClientStatus::NotInstalled;
    if (!vlClientFeatureMgr::sharedInstance().isSupportedVelaClientVersion())
        return ClientStatus::NotSupported;
    return applications.isVelaRunning() ? ClientStatus::Running : ClientStatus::NotRunning;
}
