// The host's application delegate, which opens new appointments.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

// Keys in the main thread's dictionary for the editor that opens next; the value of a key is its own name.
// They tell the editor to add a video meeting or an audio conference at once. The argument is a dictionary or
// missing.
inline const QString keyFlagAutoAddToVlMeeting = u"keyFlagAutoAddToVlMeeting"_s;
inline const QString keyFlagAutoAddToPACMeeting = u"keyFlagAutoAddToPACMeeting"_s;
inline const QString keyFlagVlMeetingArgument = u"keyFlagVlMeetingArgument"_s;
// In the argument: the requested audio-conference account, a PACAccount.
inline const QString keyPACAccountNo = u"pacAccountNo"_s;

class vlErageAppDelegate : public vlDelegateBase {
public:
    explicit vlErageAppDelegate(rt::Object *delegate)
        : vlDelegateBase(key_vlErageAppDelegate, delegate) {}

    // Opens the editor of a new meeting.
    void newCalendarMeeting(const rt::Value &sender) const { getOLItemID(olItem_newCalendarMeeting, sender); }
    // Sets the flag, brings the host to the front, and opens a new meeting on the next turn of the run loop,
    // unless the delegate is deleted by then. An argument that is not a dictionary is ignored.
    void autoAddVelaToAppointment(const rt::Value &argument) const {
        openNewMeeting(keyFlagAutoAddToVlMeeting, argument);
    }
    void autoAddPACToAppointment(const rt::Value &argument) const {
        openNewMeeting(keyFlagAutoAddToPACMeeting, argument);
    }

private:
    void openNewMeeting(const QString &flag, const rt::Value &argument) const;
};
