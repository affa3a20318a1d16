// The user's personal audio-conference accounts, as the client last told them.
#pragma once

#include "plugin/link/readers/CVlGetPACProtoParse.h"
#include "plugin/util/sharedObject.h"

#include <QString>

// Accounts are numbered from 1. Without any answer the texts are null and the numbers 0; for an account that
// is not there texts are "" and the meeting id "0". An answer that cannot be read leaves the accounts of the
// last one that could. Main thread only.
class vlGetPACHelper : public SharedObject<vlGetPACHelper> {
public:
    // Base64 of the client's answer; a null text is ignored. Also notes in the site configuration whether
    // there are accounts.
    void setPACInfo(const QString &base64);
    [[nodiscard]] bool hasPACInfo() const { return !m_dataPACInfo.isEmpty(); }
    // Whether the accounts in memory are those of the user who is signed in: an answer that cannot be read
    // leaves those of the user before.
    [[nodiscard]] bool isOfPresentUser() const;
    [[nodiscard]] int pacCount() const;
    [[nodiscard]] QString pacDialInNumber(int account) const; // one line for each number
    [[nodiscard]] QString pacDialInNumberWithCommaSeparator(int account) const;
    [[nodiscard]] QString pacMeetingID(int account) const; // decimal
    [[nodiscard]] QString invitationMail(int account) const;
    [[nodiscard]] QString htmlInvitationMail(int account) const;
    [[nodiscard]] bool supportHtmlInvitationMail(int account) const;
    // What the site configuration says; false when it says nothing.
    [[nodiscard]] bool isPACEnabled() const;

private:
    QString m_dataPACInfo;
    CVlGetPACProtoParse m_accounts; // of the last answer that could be read
    QString m_userID;               // for whom the accounts were read
};
