// Reads the user's audio-conference accounts.
#pragma once

#include <QString>
#include <memory>

namespace com::brindle::webapp::proto {
class PACMeeting;
class Response;
} // namespace com::brindle::webapp::proto

// A value: copying is cheap. Accounts are numbered from 1; for any other number a text is "" and the meeting
// number 0. Bytes that do not parse hold no account.
class CVlGetPACProtoParse {
public:
    CVlGetPACProtoParse() = default; // no account
    CVlGetPACProtoParse(const void *bytes, int size);
    [[nodiscard]] bool isParsed() const { return bool(m_response); }

    [[nodiscard]] int GetPACCount() const;
    // "number (country Toll Free)" and CRLF for each toll-free number, then each toll number likewise. A
    // number without a country has no line break, as its readers know it.
    [[nodiscard]] QString GetPACDialInNumber(int account) const;
    // The same on one line, joined by ", ".
    [[nodiscard]] QString GetPACDialInNumberWithCommaSeparator(int account) const;
    [[nodiscard]] qint64 GetPACMeetingNumber(int account) const;
    [[nodiscard]] QString GetInvitationEmail(int account) const;
    [[nodiscard]] QString GetHtmlInvitationEmail(int account) const; // always ""

private:
    // nullptr when there is no such account.
    [[nodiscard]] const com::brindle::webapp::proto::PACMeeting *accountAt(int account) const;

    std::shared_ptr<const com::brindle::webapp::proto::Response> m_response; // nullptr: none was parsed
};
