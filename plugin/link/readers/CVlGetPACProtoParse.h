// Reads the user's audio-conference accounts.
#pragma once

#include <QString>
#include <memory>

namespace com::brindle::webapp::proto {
class PACMeeting;
class Response;
} // namespace com::brindle::webapp::proto

// A value type that is cheap to copy. Account numbers start at 1; for any other number texts are "" and the
// meeting number is 0. Bytes that do not parse contain no account.
class CVlGetPACProtoParse {
public:
    CVlGetPACProtoParse() = default; // no account
    CVlGetPACProtoParse(const void *bytes, int size);
    [[nodiscard]] bool isParsed() const { return bool(m_response); }

    [[nodiscard]] int GetPACCount() const;
    // "number (country Toll Free)" and CRLF for each toll-free number, then the same for each toll number. A
    // number without a country has no line break, because the readers of this text expect none.
    [[nodiscard]] QString GetPACDialInNumber(int account) const;
    // The same numbers on one line, joined by ", ".
    [[nodiscard]] QString GetPACDialInNumberWithCommaSeparator(int account) const;
    [[nodiscard]] qint64 GetPACMeetingNumber(int account) const;
    [[nodiscard]] QString GetInvitationEmail(int account) const;
    [[nodiscard]] QString GetHtmlInvitationEmail(int account) const; // always ""

private:
    // nullptr if the account does not exist.
    [[nodiscard]] const com::brindle::webapp::proto::PACMeeting *accountAt(int account) const;

    std::shared_ptr<const com::brindle::webapp::proto::Response> m_response; // nullptr: no parsed answer
};
