#include "plugin/link/vlAPIBase.h"

#include "platform/services/Services.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/localizedString.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlAppHelper.h"
#include "plugin/link/vlClientFeatureMgr.h"

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

// The key of the code's text; null for a code without one.
QString textKeyOfError(ClientError error) {
    switch (error) {
    case ClientError::NotInstalled:
        return QStringLiteral("NoVelaClient");
    case ClientError::Internet:
        return QStringLiteral("InternetError");
    case ClientError::NotRunning:
        return QStringLiteral("VelaClientNotRunning");
    case ClientError::NotSupported:
        return QStringLiteral("NotSupportedVelaClientVersion");
    case ClientError::NotSignedIn:
        return QStringLiteral("VelaClientNotSignIn");
    case ClientError::System:
        return QStringLiteral("SystemError");
    case ClientError::MeetingNotFound:
        return QStringLiteral("MeetingNotFound");
    case ClientError::Network:
        return QStringLiteral("NetworkConnectionError");
    case ClientError::None:
        break;
    }
    return {};
}

} // namespace

vlAPIBase::vlAPIBase()
    : m_self(std::make_shared<vlAPIBase *>(this)) {}

vlAPIBase::~vlAPIBase() {
    invalidateTimer();
}

ClientError vlAPIBase::action(QWidget *window) {
    const ClientError error = checkVelaAppError();
    if (error != ClientError::None) {
        popupErrorMsg(window, error);
        return error;
    }
    releaseTimer();
    startTimer();
    if (m_showCommunicationDlg)
        showProgress(window);
    return ClientError::None;
}

void vlAPIBase::onfeedback(qint32, const QString &) {
    closeProgress();
    invalidateTimer();
}

void vlAPIBase::startTimer() {
    auto id = std::make_shared<quint64>(0);
    const std::weak_ptr<vlAPIBase *> self = m_self;
    *id = platform::services().runLoop->callAfter(timeOutSeconds, [self, id] {
        if (const auto request = self.lock())
            (*request)->onTimeOut();
    });
    myTimer = id;
}

void vlAPIBase::releaseTimer() {
    myTimer.reset();
}

void vlAPIBase::invalidateTimer() {
    // Expired: it has come, or the run loop that held it is gone and another one counts its timers from the
    // start.
    if (const auto id = myTimer.lock())
        platform::services().runLoop->cancel(*id);
    myTimer.reset();
}

void vlAPIBase::onTimeOut() {
    closeProgress();
}

void vlAPIBase::showProgress(QWidget *window) {
    RequestFeedback *feedback = LinkPorts::instance().feedback;
    if (feedback != m_progressMaker) {
        myProgressUI = feedback ? feedback->makeProgress() : nullptr;
        m_progressMaker = feedback;
    }
    if (myProgressUI)
        myProgressUI->showCommunication(window);
}

void vlAPIBase::closeProgress() {
    if (myProgressUI)
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
    const QString message = key.isNull() ? QStringLiteral("") : vlLocalizedString(key);
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
