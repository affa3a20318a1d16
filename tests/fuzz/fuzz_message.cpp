// The client's binary messages.
#include "meeting.pb.h"
#include "plugin/link/readers/CVlGetMeetingProtoParse.h"
#include "plugin/link/readers/CVlGetPACProtoParse.h"
#include "plugin/link/readers/base64Reader.h"
#include "plugin/proto/vlProtoBufConvert.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

using com::brindle::webapp::proto::Response;

QString allOf(const CVlGetPACProtoParse &reader, qsizetype size) {
    QString all = QString::number(reader.GetPACCount());
    for (int account = 0; account <= reader.GetPACCount() + 1; ++account) {
        const QString lines = reader.GetPACDialInNumber(account);
        const QString line = reader.GetPACDialInNumberWithCommaSeparator(account);
        const QString invitation = reader.GetInvitationEmail(account);
        claim(!lines.isNull() && !line.isNull() && !invitation.isNull(), "an account's texts are not null");
        // The shortest number takes two bytes; its labels take about 20 characters.
        claim(lines.size() <= 16 * size + 16 && line.size() <= 16 * size + 16,
              "the size of the texts is in proportion to the input");
        all += lines + line + invitation + QString::number(reader.GetPACMeetingNumber(account));
    }
    return all;
}

void claimWrittenAsRead(const QByteArray &bytes, const QString &read) {
    Response response;
    if (!vlProtoBufConvert::ProtoFromByteStream(&response, bytes.constData(), int(bytes.size())))
        return;
    response.set_unread_1(1); // a required field
    unsigned char *buffer = nullptr;
    int size = 0;
    claim(vlProtoBufConvert::ProtoToByteStream(&response, buffer, size), "a complete message can be written");
    claimSame(allOf(CVlGetPACProtoParse(buffer, size), size), read, "a written message reads as before");
    vlProtoBufConvert::FreeProtoByteStream(buffer, size);
}

void open(const QByteArray &bytes) {
    const QString read = allOf(CVlGetPACProtoParse(bytes.constData(), int(bytes.size())), bytes.size());
    claimSame(allOf(readerOver<CVlGetPACProtoParse>(EncodeUtils::base64Encode(bytes)), bytes.size()), read,
              "base64 changes nothing");
    claimWrittenAsRead(bytes, read);
    claim(CVlGetMeetingProtoParse(bytes.constData(), int(bytes.size())).GetInviteHtmlEmail().isEmpty(),
          "nothing is read from a binary meeting yet");
}

const AddFuzzTarget target("message", open);

} // namespace
