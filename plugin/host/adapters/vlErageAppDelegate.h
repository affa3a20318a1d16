// The host's application delegate, which opens new appointments.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

// Left in the main thread's dictionary for the editor that opens next, each with its own name as value: add a
// video meeting or an audio conference as soon as you are there. The argument is a dictionary, or missing.
inline const QString keyFlagAutoAddToVlMeeting = u"keyFlagAutoAddToVlMeeting"_s;
inline const QString keyFlagAutoAddToPACMeeting = u"keyFlagAutoAddToPACMeeting"_s;
inline const QString keyFlagVlMeetingArgument = u"keyFlagVlMeetingArgument"_s;
// In the argument: which audio-conference account is wanted, a PACAccount.
inline const QString keyPACAccountNo = u"pacAccountNo"_s;

class vlErageAppDelegate : public vlDelegateBase {
public:
    explicit vlErageAppDelegate(rt::Object *delegate)
        : vlDelegateBase(key_vlErageAppDelegate, delegate) {}

    // Opens the editor of a new meeting.
    void newCalendarMeeting(const rt::Value &sender) const { getOLItemID(olItem_newCalendarMeeting, sender); }
    // Leave the flag, bring the host to the front, and open a new meeting on the next turn of the run loop
    // (not at all when the delegate is gone by then). An argument that is no dictionary is not kept.
    void autoAddVelaToAppointment(const rt::Value &argument) const {
        openNewMeeting(keyFlagAutoAddToVlMeeting, argument);
    }
    void autoAddPACToAppointment(const rt::Value &argument) const {
        openNewMeeting(keyFlagAutoAddToPACMeeting, argument);
    }

private:
    void openNewMeeting(const QString &flag, const rt::Value &argument) const;
};
