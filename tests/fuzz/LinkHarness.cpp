#include "tests/fuzz/LinkHarness.h"

#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/link/linkSession.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/vlAPIMgr.h"

#include <QDir>
#include <QFile>

namespace fuzz {

namespace {

class NoProgress : public RequestProgress {
public:
    void showCommunication(QWidget *) override {}
    void closeCommunication() override {}
};

const QString clientPath = u"/Applications/Parlo Meetings.app"_s;

// The client's bundle; below it, the user's documents.
const QString &rootFolder() {
    static const auto *folder = new QTemporaryDir;
    static const QString path = [] {
        const QString contents = folder->path() + clientPath + u"/Contents"_s;
        QDir().mkpath(contents);
        platform::makePropertyLists()->write(contents + u"/Info.plist"_s,
                                             QVariantMap{{u"CFBundleVersion"_s, u"3.6.40487"_s}});
        return folder->path();
    }();
    return path;
}

} // namespace

LinkHarness::LinkHarness()
    : m_desktop(platform::installTestServices()) {
    startLinkAfresh();
    m_desktop.workspace->root = rootFolder();
    m_desktop.workspace->documents = rootFolder() + u"/Documents"_s;
    m_desktop.workspace->bundles.append({kVelausIdentify, clientPath, u"/bin/run"_s});
    m_desktop.workspace->running.append(kVelausIdentify);
    QDir(m_desktop.workspace->documents).removeRecursively();
    LinkPorts::instance() = {this, this};
    (void)vlAPIMgr::sharedInstance();
    (void)vlGetClientVersionHelper::sharedInstance();
}

LinkHarness::~LinkHarness() {
    LinkPorts::instance() = {};
    startLinkAfresh();
}

void LinkHarness::receive(const QString &channel, const platform::TextMap &userInfo) {
    m_desktop.bus->post(channel, QString(), userInfo, true);
    m_desktop.runLoop->advance(0);
}

std::unique_ptr<RequestProgress> LinkHarness::makeProgress() {
    return std::make_unique<NoProgress>();
}

void LinkHarness::showAlertMessage(QWidget *, const QString &message) {
    alerts.append(message);
}

void LinkHarness::showClientError(QWidget *, const QString &message) {
    alerts.append(message);
}

void LinkHarness::onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) {
    finished.append({command, data.value(keyVlAPIResponse).toMap()});
}

QString LinkHarness::getApptWindowIDByWindow(QWidget *) const {
    return {};
}

void LinkHarness::setScheduleForEmail(const QString &) {}

} // namespace fuzz
