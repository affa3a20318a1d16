#include "plugin/link/readers/CVlGetPACProtoParse.h"

#include "meeting.pb.h"
#include "platform/runtime/Value.h"
#include "plugin/proto/vlProtoBufConvert.h"

namespace {

using com::brindle::webapp::proto::CountryCodeProto;
using com::brindle::webapp::proto::PACMeeting;
using com::brindle::webapp::proto::Response;
using Numbers = google::protobuf::RepeatedPtrField<CountryCodeProto>;

const QString tollFreeEnd = u" Toll Free)"_s;
const QString tollEnd = u" Toll)"_s;
const QString lineBreak = u"\r\n"_s;
const QString comma = u", "_s;

QString text(const std::string &utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

QString labelled(const CountryCodeProto &entry, const QString &labelEnd) {
    QString result = entry.has_number() ? text(entry.number()) : QString();
    if (entry.has_country())
        result += u" ("_s + text(entry.country()) + labelEnd;
    return result;
}

QString lines(const Numbers &numbers, const QString &labelEnd) {
    QString result;
    for (const CountryCodeProto &entry : numbers) {
        result += labelled(entry, labelEnd);
        if (entry.has_country())
            result += lineBreak;
    }
    return result;
}

QString commaSeparated(const Numbers &numbers, const QString &labelEnd) {
    QString result;
    for (int i = 0; i < numbers.size(); ++i) {
        result += labelled(numbers.Get(i), labelEnd);
        if (i + 1 < numbers.size() && !result.isEmpty())
            result += comma;
    }
    return result;
}

} // namespace

CVlGetPACProtoParse::CVlGetPACProtoParse(const void *bytes, int size) {
    auto response = std::make_shared<Response>();
    if (vlProtoBufConvert::ProtoFromByteStream(response.get(), bytes, size))
        m_response = std::move(response);
}

const PACMeeting *CVlGetPACProtoParse::accountAt(int account) const {
    return account >= 1 && account <= GetPACCount() ? &m_response->pac_info().meetings(account - 1) : nullptr;
}

int CVlGetPACProtoParse::GetPACCount() const {
    return m_response ? m_response->pac_info().meetings_size() : 0;
}

QString CVlGetPACProtoParse::GetPACDialInNumber(int account) const {
    const PACMeeting *meeting = accountAt(account);
    if (!meeting)
        return u""_s;
    return rt::orEmpty(lines(meeting->toll_free_numbers(), tollFreeEnd) +
                       lines(meeting->toll_numbers(), tollEnd));
}

QString CVlGetPACProtoParse::GetPACDialInNumberWithCommaSeparator(int account) const {
    const PACMeeting *meeting = accountAt(account);
    if (!meeting)
        return u""_s;
    const QString tollFree = commaSeparated(meeting->toll_free_numbers(), tollFreeEnd);
    const QString toll = commaSeparated(meeting->toll_numbers(), tollEnd);
    return rt::orEmpty(tollFree.isEmpty() || toll.isEmpty() ? tollFree + toll : tollFree + comma + toll);
}

qint64 CVlGetPACProtoParse::GetPACMeetingNumber(int account) const {
    const PACMeeting *meeting = accountAt(account);
    return meeting ? meeting->meeting_number() : 0;
}

QString CVlGetPACProtoParse::GetInvitationEmail(int account) const {
    const PACMeeting *meeting = accountAt(account);
    return rt::orEmpty(meeting ? text(meeting->invitation_email()) : QString());
}

QString CVlGetPACProtoParse::GetHtmlInvitationEmail(int) const {
    return u""_s;
}
