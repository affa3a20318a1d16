// Adding one of the user's audio conferences to an appointment.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/link/clientCodes.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>

class EditorStrip;

// The chosen account is kept with the meeting data of its appointment until that is
// cleared. Main thread only.
class vlPACMeetingMgr : public SharedObject<vlPACMeetingMgr> {
public:
    // Chooses the account and applies it, after reading profile and accounts where they are missing. Always
    // 0.
    int addPACMeeting(EditorStrip *strip, PACAccount account);
    void executeGetPAC(EditorStrip *strip);
    // Asks for the accounts unless those in memory are the user's, with a progress window only while an audio
    // conference is being added. Whether it has asked.
    bool requestAccountsIfNeeded(const EditorStrip *strip);
    // Whether the accounts in memory are those of the user who is signed in.
    [[nodiscard]] static bool knowsTheUsersAccounts();
    // Writes the chosen account into body and location; an alert when it has no invitation. Always 0.
    int schedulePACMeeting(EditorStrip *strip);
    // The accounts were answered. Writes nothing unless an audio conference is being added.
    int onGetPACActionFinished(const QVariantMap &data);

    // The account's part of a location: dial-in numbers and meeting id; null when no accounts are known.
    [[nodiscard]] QString getLocationWithPACAccountNo(PACAccount account) const;
    // The location with the chosen account's part in place of any account's; null when neither
    // the user nor the account puts anything there.
    [[nodiscard]] QString getNewLocationForPAC(const QString &location) const;
    void updateLocation(rt::Object *editor);
    // The location without the numbers and ids of all accounts; null for a null or empty one.
    [[nodiscard]] QString getOLUserInputString(const QString &location) const;
};
