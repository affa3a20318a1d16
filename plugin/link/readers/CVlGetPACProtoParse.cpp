#include "plugin/link/readers/CVlGetPACProtoParse.h"

#include "meeting.pb.h"
#include "platform/Literals.h"
#include "plugin/link/readers/protoParse.h"

namespace {

using com::brindle::webapp::proto::CountryCodeProto;
using com::brindle::webapp::proto::PACMeeting;
using com::brindle::webapp::proto::Response;
using Numbers = google::protobuf::RepeatedPtrField<CountryCodeProto>;

const QString tollFreeEnd = u" Toll Free)"_s;
const QString tollEnd = u" Toll)"_s;
const QString lineBreak = u"\r\n"_s;
const QString comma = u", "_s;

Response &lastResponse() {
    static auto *response = new Response;
    return *response;
}

// nullptr when there is no such account.
const PACMeeting *accountAt(int account) {
    const auto &meetings = lastResponse().pac_info().meetings();
    return account >= 1 && account <= meetings.size() ? &meetings.Get(account - 1) : nullptr;
}

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

QString notNull(const QString &text) {
    return text.isNull() ? u""_s : text;
}

} // namespace

CVlGetPACProtoParse::CVlGetPACProtoParse(const void *bytes, int size)
    : m_bParsed(replaceWhenParsed(lastResponse(), bytes, size)) {}

int CVlGetPACProtoParse::GetPACCount() const {
    return lastResponse().pac_info().meetings_size();
}

QString CVlGetPACProtoParse::GetPACDialInNumber(int account) const {
    const PACMeeting *meeting = accountAt(account);
    if (!meeting)
        return u""_s;
    return notNull(lines(meeting->toll_free_numbers(), tollFreeEnd) +
                   lines(meeting->toll_numbers(), tollEnd));
}

QString CVlGetPACProtoParse::GetPACDialInNumberWithCommaSeparator(int account) const {
    const PACMeeting *meeting = accountAt(account);
    if (!meeting)
        return u""_s;
    const QString tollFree = commaSeparated(meeting->toll_free_numbers(), tollFreeEnd);
    const QString toll = commaSeparated(meeting->toll_numbers(), tollEnd);
    return notNull(tollFree.isEmpty() || toll.isEmpty() ? tollFree + toll : tollFree + comma + toll);
}

qint64 CVlGetPACProtoParse::GetPACMeetingNumber(int account) const {
    const PACMeeting *meeting = accountAt(account);
    return meeting ? meeting->meeting_number() : 0;
}

QString CVlGetPACProtoParse::GetInvitationEmail(int account) const {
    const PACMeeting *meeting = accountAt(account);
    return notNull(meeting ? text(meeting->invitation_email()) : QString());
}

QString CVlGetPACProtoParse::GetHtmlInvitationEmail(int) const {
    return u""_s;
}
