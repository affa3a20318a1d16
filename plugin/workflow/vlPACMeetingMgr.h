// Adds one of the user's audio conferences to an appointment.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/link/clientCodes.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>

class EditorStrip;

// The selected account belongs to its appointment's meeting data until that is cleared. Main thread only.
class vlPACMeetingMgr : public SharedObject<vlPACMeetingMgr> {
public:
    // Selects the account and applies it; reads profile and accounts first if they are missing. Returns 0.
    int addPACMeeting(EditorStrip *strip, PACAccount account);
    void executeGetPAC(EditorStrip *strip);
    // Requests the accounts unless memory holds those of the user. Shows a progress window only while an
    // audio conference is being added. Returns whether it sent a request.
    bool requestAccountsIfNeeded(const EditorStrip *strip);
    // Whether the accounts in memory are those of the user who is signed in.
    [[nodiscard]] static bool knowsTheUsersAccounts();
    // Writes the selected account into body and location; alerts if it has no invitation. Returns 0.
    int schedulePACMeeting(EditorStrip *strip);
    // Handles the answer with the accounts. Writes nothing unless an audio conference is being added.
    int onGetPACActionFinished(const QVariantMap &data);

    // The account's part of a location: dial-in numbers and meeting id; null if no accounts are known.
    [[nodiscard]] QString getLocationWithPACAccountNo(PACAccount account) const;
    // The location with the parts of all accounts replaced by the part of the selected account; null if
    // neither the user nor the account contributes text.
    [[nodiscard]] QString getNewLocationForPAC(const QString &location) const;
    void updateLocation(rt::Object *editor);
    // The location without the numbers and ids of all accounts; null for a null or empty location.
    [[nodiscard]] QString getOLUserInputString(const QString &location) const;
};
