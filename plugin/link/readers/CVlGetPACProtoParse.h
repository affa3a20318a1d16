// Reads the user's audio-conference accounts.
#pragma once

#include <QString>

// All readers share one last good message, empty at first. Bytes that do not parse leave it as it was.
// Accounts are numbered from 1; for any other number a text is "" and the meeting number 0.
class CVlGetPACProtoParse {
public:
    CVlGetPACProtoParse() = default; // reads the last good message
    CVlGetPACProtoParse(const void *bytes, int size);
    [[nodiscard]] bool isParsed() const { return m_bParsed; } // whether the bytes given to it were read

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
    bool m_bParsed = false;
};
