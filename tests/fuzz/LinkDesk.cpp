#include "tests/fuzz/LinkDesk.h"

#include "plugin/link/linkSession.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlAPIMgr.h"
#include "plugin/link/vlAppHelper.h"
#include "plugin/link/vlGetClientVersionHelper.h"

#include <QDir>
#include <QFile>

namespace fuzz {

namespace {

class NoProgress : public RequestProgress {
public:
    void showCommunication(QWidget *) override {}
    void closeCommunication() override {}
};

const QString clientPath = QStringLiteral("/Applications/Parlo Meetings.app");

// The client's bundle; below it, the user's documents.
const QString &rootFolder() {
    static const auto *folder = new QTemporaryDir;
    static const QString path = [] {
        const QString contents = folder->path() + clientPath + QStringLiteral("/Contents");
        QDir().mkpath(contents);
        platform::makePropertyLists()->write(
            contents + QStringLiteral("/Info.plist"),
            QVariantMap{{QStringLiteral("CFBundleVersion"), QStringLiteral("3.6.40487")}});
        return folder->path();
    }();
    return path;
}

} // namespace

LinkDesk::LinkDesk()
    : m_desktop(platform::installTestServices()) {
    startLinkAfresh();
    m_desktop.workspace->root = rootFolder();
    m_desktop.workspace->documents = rootFolder() + QStringLiteral("/Documents");
    m_desktop.workspace->bundles.append({kVelausIdentify, clientPath, QStringLiteral("/bin/run")});
    m_desktop.workspace->running.append(kVelausIdentify);
    QDir(m_desktop.workspace->documents).removeRecursively();
    LinkPorts::instance() = {this, this};
    (void)vlAPIMgr::sharedInstance();
    (void)vlGetClientVersionHelper::sharedInstance();
}

LinkDesk::~LinkDesk() {
    LinkPorts::instance() = {};
    startLinkAfresh();
}

void LinkDesk::receive(const QString &channel, const platform::TextMap &userInfo) {
    m_desktop.bus->post(channel, QString(), userInfo, true);
    m_desktop.runLoop->advance(0);
}

std::unique_ptr<RequestProgress> LinkDesk::makeProgress() {
    return std::make_unique<NoProgress>();
}

void LinkDesk::showAlertMessage(QWidget *, const QString &message) {
    alerts.append(message);
}

void LinkDesk::showClientError(QWidget *, const QString &message) {
    alerts.append(message);
}

void LinkDesk::onExcuteCommandFinished(int command, const QVariantMap &data) {
    finished.append({command, data.value(keyVlAPIResponse).toMap()});
}

QString LinkDesk::getApptWindowIDByWindow(QWidget *) const {
    return {};
}

void LinkDesk::setScheduleForEmail(const QString &) {}

} // namespace fuzz
