// Answers of the client and the agent: texts of each kind, one after the other.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/requests/vlAPICommitMeeting.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/LinkHarness.h"

using namespace fuzz;

namespace {

const QString meetingHead = QString(13, u';');

QString base64(const QByteArray &bytes) {
    return EncodeUtils::base64Encode(bytes);
}

QString asText(const QByteArray &bytes) {
    return QString::fromUtf8(bytes);
}

// The meaning of an input's first byte: a complete answer, or the inner part of one, encoded as the client
// does. An answer without a request is dropped.
struct Kind {
    char letter;
    ClientAnswer answer;
    void (*ask)(vlAPIMgr &manager);
    QString (*content)(const QByteArray &bytes);
};
void askForMeeting(vlAPIMgr &manager) {
    manager.getMeeting(nullptr, {});
}
void askForAccounts(vlAPIMgr &manager) {
    manager.getPAC(nullptr);
}
const Kind kinds[] = {
    {'s', ClientAnswer::Schedule, [](vlAPIMgr &manager) { manager.scheduleMeeting(nullptr, {}); }, asText},
    {'u', ClientAnswer::Update, [](vlAPIMgr &manager) { manager.updateMeeting(nullptr, {}); }, asText},
    {'d', ClientAnswer::Delete, [](vlAPIMgr &manager) { manager.deleteMeeting(nullptr, {}); }, asText},
    {'p', ClientAnswer::GetUserProfile, [](vlAPIMgr &manager) { manager.getUserProfile(nullptr); }, asText},
    {'g', ClientAnswer::GetMeeting, askForMeeting, asText},
    {'a', ClientAnswer::GetPAC, askForAccounts, asText},
    {'G', ClientAnswer::GetMeeting, askForMeeting,
     [](const QByteArray &bytes) { return meetingHead + base64(bytes); }},
    {'B', ClientAnswer::GetMeeting, askForMeeting,
     [](const QByteArray &bytes) { return meetingHead + base64("{}") + u';' + base64(bytes); }},
    {'A', ClientAnswer::GetPAC, askForAccounts, base64},
};

void claimCommit(const RecordingReceiver::Finished &finished, const QString &content) {
    claimSame(finished.response().value(vl_API_Para_InvitationEmail).toString(), content.section(u';', 1),
              "the invitation is what follows the first separator");
    claim(!content.startsWith(u"0;") && !content.startsWith(u';'), "a meeting has a key");
}

void claimOutcome(const LinkHarness &harness, ClientAnswer answer, const QString &content) {
    const QList<RecordingReceiver::Finished> &finished = harness.receiver.finished;
    claim(finished.size() + harness.feedback.alerts.size() <= 1, "an answer ends in one outcome at most");
    const bool isCommit = answer == ClientAnswer::Schedule || answer == ClientAnswer::Update;
    if (isCommit && !finished.isEmpty())
        claimCommit(finished.first(), content);
    if (answer == ClientAnswer::Delete)
        claim(finished.size() == 1 && finished.first().command == MeetingCommand::CmdDeleteMeeting,
              "every answer to a deletion is handed back");
}

// Uses the client's data as the rest of the plug-in does, and sends it in the next request.
void useMeeting() {
    const vlGetMeetingHelper &helper = vlGetMeetingHelper::sharedInstance();
    const QVariantMap info = helper.getMeetingInfo();
    (void)helper.supportHtmlEmail();
    vlAPICommitMeeting request;
    request.setData(info);
    const QString content = request.getAPIData();
    const QString head = request.getContentIdentifierHead();
    claim(content.startsWith(head), "a request begins with its head");
    claim(vlOLUtils::toArrayOrNSDictionary(content.sliced(head.size())).typeId() == QMetaType::QVariantMap,
          "a request carries a dictionary");
}

void useAccounts() {
    const vlGetPACHelper &helper = vlGetPACHelper::sharedInstance();
    const int count = helper.pacCount();
    claim(helper.isPACEnabled() == (count != 0), "the site configuration says whether there are accounts");
    for (const int account : {-1, 0, 1, 2, count, count + 1}) {
        claim(!helper.pacDialInNumber(account).isNull(), "an account's numbers are a text");
        claim(!helper.pacDialInNumberWithCommaSeparator(account).isNull(), "also on one line");
        claim(!helper.invitationMail(account).isNull(), "an account's invitation is a text");
        (void)helper.pacMeetingID(account);
    }
}

void receive(LinkHarness &harness, const Kind &kind, const QByteArray &bytes) {
    kind.ask(vlAPIMgr::sharedInstance());
    const QString content = kind.content(bytes);
    harness.receiver.finished.clear();
    harness.feedback.alerts.clear();
    harness.receive(kIPCNotifyVelaClientToOutlookPlugin,
                    {{VL_IPC_ACTION_ID, QString::number(int(kind.answer))}, {VL_IPC_CONTENT, content}});
    if (content.contains(QChar(0)))
        return; // the bus does not carry it
    claimOutcome(harness, kind.answer, content);
    if (kind.answer == ClientAnswer::GetMeeting)
        useMeeting();
    if (vlGetPACHelper::sharedInstance().hasPACInfo())
        useAccounts();
}

void receiveFromAgent(LinkHarness &harness, const QByteArray &bytes) {
    harness.receive(VL_IPC_PLUGINAGENT_TO_OUTLOOKPLUGIN,
                    {{VL_IPC_ACTION_ID, u"1"_s}, {VL_IPC_CONTENT, QString::fromUtf8(bytes)}});
    (void)vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo();
}

void open(const QByteArray &bytes) {
    LinkHarness harness;
    Pieces pieces(bytes);
    for (int count = 0; count < 8 && !pieces.atEnd(); ++count) {
        const auto letter = char(pieces.nextByte());
        const QByteArray piece = pieces.next();
        if (letter == 'v')
            receiveFromAgent(harness, piece);
        for (const Kind &kind : kinds) {
            if (kind.letter == letter)
                receive(harness, kind, piece);
        }
    }
}

const AddFuzzTarget target("answers", open);

} // namespace
