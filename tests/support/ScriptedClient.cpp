#include "tests/support/ScriptedClient.h"

#include "meeting.pb.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/EncodeUtils.h"
#include "tests/support/FreshPlugin.h"

namespace {

namespace wire = com::brindle::webapp::proto;
using Asked = ScriptedClient::Asked;

const QString clientPath = u"/Applications/Parlo Meetings.app"_s;
constexpr qsizetype meetingField = 13;

QVariantMap jsonIn(const QString &content) {
    return rt::mapValue(vlOLUtils::toArrayOrNSDictionary(content.mid(content.indexOf(u'{'))));
}

// Requests have the codes of their answers; those about meetings, in front of their content.
ScriptedClient::Request requestIn(const platform::TextMap &envelope) {
    const QString content = envelope.value(VL_IPC_CONTENT);
    const int action = envelope.value(VL_IPC_ACTION_ID).toInt();
    if (ClientAction(action) == ClientAction::StartMeeting)
        return {Asked::Start, {}, jsonIn(content)};
    if (ClientAction(action) != ClientAction::Meeting)
        return {Asked(action), {}, {}};
    const auto what = Asked(content.section(u';', 0, 0).toInt());
    if (what == Asked::Delete || what == Asked::GetMeeting)
        return {what, content.section(u';', 1), {}};
    return {what, {}, jsonIn(content)};
}

} // namespace

ScriptedClient::ScriptedClient(const platform::TestDesktop &desktop, bool isThere)
    : m_desktop(desktop) {
    m_desktop.workspace->root = m_root.path();
    m_desktop.workspace->documents = m_root.filePath(u"Documents"_s);
    if (isThere)
        isInstalled();
    m_observer = m_desktop.bus->addObserver(
        kIPCNotifyOutlookPluginToVelaClient,
        [this](const QString &, const platform::TextMap &envelope) { hear(envelope); });
}

ScriptedClient::~ScriptedClient() {
    m_desktop.bus->removeObserver(m_observer);
}

void ScriptedClient::hear(const platform::TextMap &envelope) {
    m_requests.append(requestIn(envelope));
    const auto answer = m_answers.constFind(m_requests.last().what);
    if (answer != m_answers.constEnd())
        sendsNow(m_requests.last().what, *answer);
}

void ScriptedClient::sendsNow(const QString &actionId, const QString &content) {
    platform::TextMap envelope{{VL_IPC_ACTION_ID, actionId}};
    if (!content.isNull())
        envelope.insert(VL_IPC_CONTENT, content);
    m_desktop.bus->post(kIPCNotifyVelaClientToOutlookPlugin, QString(), envelope, true);
}

void ScriptedClient::isInstalled(const QString &version, bool running) {
    installBundle(m_desktop, kVelausIdentify, clientPath, {{u"CFBundleVersion"_s, version}});
    if (running)
        m_desktop.workspace->running.append(kVelausIdentify);
}

void ScriptedClient::isUninstalled() {
    quits();
    m_desktop.workspace->bundles.clear();
}

QString ScriptedClient::meetingAnswer(const QVariantMap &meeting) {
    const QByteArray json = vlOLUtils::toJSONData(meeting);
    return QString(meetingField, u';') + EncodeUtils::base64Encode(json);
}

QString ScriptedClient::accountsAnswer(const QList<Account> &accounts) {
    wire::Response response;
    response.mutable_pac_info();
    for (const Account &account : accounts) {
        wire::PACMeeting *meeting = response.mutable_pac_info()->add_meetings();
        meeting->set_meeting_number(account.meetingID);
        meeting->set_invitation_email(account.invitation.toStdString());
        if (account.number.isEmpty())
            continue;
        wire::CountryCodeProto *number = meeting->add_toll_free_numbers();
        number->set_number(account.number.toStdString());
        number->set_country("US");
    }
    return EncodeUtils::base64Encode(QByteArray::fromStdString(response.SerializePartialAsString()));
}

QList<Asked> ScriptedClient::asked() const {
    QList<Asked> kinds;
    for (const Request &request : m_requests)
        kinds.append(request.what);
    return kinds;
}
