// The user's personal audio-conference accounts from the client's last answer.
#pragma once

#include "plugin/link/readers/CVlGetPACProtoParse.h"
#include "plugin/util/sharedObject.h"

#include <QString>

// Account numbers start at 1. Before the first answer texts are null and numbers 0; for an account that does
// not exist texts are "" and the meeting id is "0". An unreadable answer keeps the accounts of the last
// readable one. Main thread only.
class vlGetPACHelper : public SharedObject<vlGetPACHelper> {
public:
    // Takes the client's answer as base64; ignores a null text. Also stores in the site configuration whether
    // the user has accounts.
    void setPACInfo(const QString &base64);
    [[nodiscard]] bool hasPACInfo() const { return !m_dataPACInfo.isEmpty(); }
    // Whether the accounts in memory belong to the signed-in user. They may be those of the previous user,
    // because an unreadable answer keeps them.
    [[nodiscard]] bool isOfPresentUser() const;
    [[nodiscard]] int pacCount() const;
    [[nodiscard]] QString pacDialInNumber(int account) const; // one line for each number
    [[nodiscard]] QString pacDialInNumberWithCommaSeparator(int account) const;
    [[nodiscard]] QString pacMeetingID(int account) const; // decimal
    [[nodiscard]] QString invitationMail(int account) const;
    [[nodiscard]] QString htmlInvitationMail(int account) const;
    [[nodiscard]] bool supportHtmlInvitationMail(int account) const;
    // The value in the site configuration; false if it has none.
    [[nodiscard]] bool isPACEnabled() const;

private:
    QString m_dataPACInfo;
    CVlGetPACProtoParse m_accounts; // of the last readable answer
    QString m_userID;               // owner of the accounts
};
