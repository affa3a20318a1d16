#include "tests/link/LinkFixture.h"

#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/linkSession.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/util/vlOLUtils.h"

#include <QDir>

namespace {

class NotingProgress : public RequestProgress {
public:
    explicit NotingProgress(NotingFeedback &feedback)
        : m_feedback(feedback) {}
    void showCommunication(QWidget *window) override {
        if (m_shown)
            return;
        m_shown = true;
        ++m_feedback.shown;
        ++m_feedback.shownEver;
        m_feedback.shownOn = window;
    }
    void closeCommunication() override {
        if (m_shown)
            --m_feedback.shown;
        m_shown = false;
    }

private:
    NotingFeedback &m_feedback;
    bool m_shown = false;
};

} // namespace

std::unique_ptr<RequestProgress> NotingFeedback::makeProgress() {
    return std::make_unique<NotingProgress>(*this);
}

void NotingFeedback::showAlertMessage(QWidget *window, const QString &message) {
    alerts.append({window, message, false});
}

void NotingFeedback::showClientError(QWidget *window, const QString &message) {
    alerts.append({window, message, true});
}

QVariantMap NotingReceiver::Finished::response() const {
    return data.value(keyVlAPIResponse).toMap();
}

void NotingReceiver::onExcuteCommandFinished(int command, const QVariantMap &data) {
    finished.append({MeetingCommand(command), data});
}

QString NotingReceiver::getApptWindowIDByWindow(QWidget *window) const {
    return editors.value(window);
}

void NotingReceiver::setScheduleForEmail(const QString &email) {
    scheduledFor.append(email);
}

LinkTest::LinkTest()
    : desktop(platform::installTestServices()) {
    startLinkAfresh();
    desktop.workspace->root = folder.path();
    desktop.workspace->documents = folder.filePath("Documents");
    LinkPorts::instance() = {&feedback, &receiver};
    receiver.editors.insert(window.get(), "1a2b");
}

LinkTest::~LinkTest() {
    LinkPorts::instance() = {};
    startLinkAfresh();
}

void LinkTest::givenABundle(const QString &identifier, const QString &path, const QVariantMap &info,
                            const QString &executable) {
    desktop.workspace->bundles.append({identifier, path, executable});
    const QString contents = desktop.workspace->resolve(path) + "/Contents";
    QDir().mkpath(contents);
    platform::services().propertyLists->write(contents + "/Info.plist", info);
}

void LinkTest::givenTheClient(const QString &version, bool running) {
    givenABundle(kVelausIdentify, "/Applications/Parlo Meetings.app", {{"CFBundleVersion", version}});
    if (running)
        desktop.workspace->running.append(kVelausIdentify);
}

void LinkTest::givenTheHost(const QString &version) {
    givenABundle(keyOutlookIdentifier, "/Applications/Host.app", {{"CFBundleShortVersionString", version}});
}

void LinkTest::clientAnswers(const QString &actionId, const QString &content) {
    platform::TextMap envelope{{"actionId", actionId}};
    if (!content.isNull())
        envelope.insert("content", content);
    desktop.bus->post(clientsChannel, QString(), envelope, true);
    desktop.runLoop->advance(0);
}

void LinkTest::clientAnswers(ClientAnswer answer, const QString &content) {
    clientAnswers(QString::number(qint32(answer)), content);
}

void LinkTest::agentAnswers(const platform::TextMap &envelope) {
    desktop.bus->post("vOutlookPluginAgentToVOutlookPlugin", QString(), envelope, true);
    desktop.runLoop->advance(0);
}

QList<platform::TextMap> LinkTest::posted(const QString &channel) const {
    QList<platform::TextMap> result;
    for (const auto &notification : desktop.bus->posted()) {
        if (notification.name == channel && notification.sender.isNull() && notification.deliverImmediately)
            result.append(notification.userInfo);
    }
    return result;
}

QString LinkTest::request(ClientAction action) const {
    const QList<platform::TextMap> requests = posted(kIPCNotifyOutlookPluginToVelaClient);
    const bool isTheOne =
        requests.size() == 1 && requests.first().value(VL_IPC_ACTION_ID) == QString::number(quint32(action));
    return isTheOne ? requests.first().value(VL_IPC_CONTENT) : QString();
}

QVariantMap LinkTest::requestJson(ClientAction action, qsizetype headLength) const {
    return vlOLUtils::toArrayOrNSDictionary(request(action).mid(headLength)).toMap();
}

QString LinkTest::siteConfigText() const {
    return vlOLUtils::readStrFromFile(vlMeetingCommon::getLocalVlSiteConfigPath());
}
