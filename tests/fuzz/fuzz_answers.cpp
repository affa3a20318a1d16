// Answers of the client and the agent, in any order.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/requests/vlAPICommitMeeting.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/LinkHarness.h"

using namespace fuzz;

namespace {

// The letter is the input's first byte. Small letters stand for a complete answer; capital letters for the
// inner part of one, which is encoded here as the client does.
QString contentOf(char letter, const QByteArray &bytes) {
    const QString encoded = EncodeUtils::base64Encode(bytes);
    const QString meetingHead(13, u';');
    switch (letter) {
    case 'A':
        return encoded;
    case 'G':
        return meetingHead + encoded;
    case 'B':
        return meetingHead + EncodeUtils::base64Encode("{}") + u';' + encoded;
    default:
        return QString::fromUtf8(bytes);
    }
}

// An answer is dropped if nobody asked.
struct Kind {
    const char *letters;
    ClientAnswer answer;
    void (*ask)(vlAPIMgr &manager);
};
const Kind kinds[] = {
    {"s", ClientAnswer::Schedule, [](vlAPIMgr &manager) { manager.scheduleMeeting(nullptr, {}); }},
    {"u", ClientAnswer::Update, [](vlAPIMgr &manager) { manager.updateMeeting(nullptr, {}); }},
    {"d", ClientAnswer::Delete, [](vlAPIMgr &manager) { manager.deleteMeeting(nullptr, {}); }},
    {"p", ClientAnswer::GetUserProfile, [](vlAPIMgr &manager) { manager.getUserProfile(nullptr); }},
    {"gGB", ClientAnswer::GetMeeting, [](vlAPIMgr &manager) { manager.getMeeting(nullptr, {}); }},
    {"aA", ClientAnswer::GetPAC, [](vlAPIMgr &manager) { manager.getPAC(nullptr); }},
};

void claimOutcome(const LinkHarness &harness, ClientAnswer answer, const QString &content) {
    const QList<RecordingReceiver::Finished> &finished = harness.receiver.finished;
    claim(finished.size() + harness.feedback.alerts.size() <= 1, "an answer has at most one outcome");
    const bool isCommit = answer == ClientAnswer::Schedule || answer == ClientAnswer::Update;
    if (isCommit && !finished.isEmpty()) {
        claimSame(finished.first().response().value(vl_API_Para_InvitationEmail).toString(),
                  content.section(u';', 1), "the invitation is what follows the first separator");
        claim(!content.startsWith(u"0;") && !content.startsWith(u';'), "a meeting has a key");
    }
    if (answer == ClientAnswer::Delete)
        claim(finished.size() == 1 && finished.first().command == MeetingCommand::CmdDeleteMeeting,
              "every answer to a deletion is reported");
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
    claim(helper.isPACEnabled() == (count != 0), "accounts are enabled if there are any");
    for (const int account : {-1, 0, 1, 2, count, count + 1}) {
        claim(!helper.pacDialInNumber(account).isNull(), "an account has a text of numbers");
        claim(!helper.pacDialInNumberWithCommaSeparator(account).isNull(),
              "an account has its numbers in one line");
        claim(!helper.invitationMail(account).isNull(), "an account has an invitation");
        (void)helper.pacMeetingID(account);
    }
}

void receive(LinkHarness &harness, const Kind &kind, const QString &content) {
    kind.ask(vlAPIMgr::sharedInstance());
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
            if (QByteArrayView(kind.letters).contains(letter))
                receive(harness, kind, contentOf(letter, piece));
        }
    }
}

const AddFuzzTarget target("answers", open);

} // namespace
