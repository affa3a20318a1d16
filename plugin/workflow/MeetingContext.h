// What the plug-in knows of one appointment while it works on its meeting.
#pragma once

#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/requests/RequestOwner.h"
#include "plugin/workflow/PendingWriteBack.h"
#include "plugin/workflow/vlMeetingState.h"

#include <QVariantMap>
#include <memory>
#include <optional>
#include <vector>

class EditorStrip;

// One for each open editor, owned by its strip, and one for each change on the calendar. The controllers and
// the data store work on the one that is at hand: whoever comes in from outside (a hook, a button, an answer)
// brings it to hand first. Main thread only.
struct MeetingContext : RequestOwner, vlMeetingState {
    [[nodiscard]] static std::shared_ptr<MeetingContext> make();
    // That of nobody when none is at hand. Valid as long as its scope.
    [[nodiscard]] static MeetingContext &atHand();
    [[nodiscard]] static std::shared_ptr<MeetingContext> sharedAtHand();
    [[nodiscard]] bool hasMeeting(const QString &key) const override {
        return !key.isEmpty() && key == meetingKey;
    }
    // All that live, in order of creation.
    [[nodiscard]] static std::vector<std::shared_ptr<MeetingContext>> all();

    EditorStrip *strip = nullptr; // whose this is; nullptr: of a change on the calendar, or closed

    // The data store's.
    QString meetingKey; // empty or null: no meeting
    QVariantMap savedApptInfo;
    QString encodeMailBody;
    QString scheduleForEmail;
    PACAccount pacAccountNo = PACAccount::None;

    bool isPACApplied = false;                              // the account's texts are in body and location
    MeetingCommand meetingAction = MeetingCommand::CmdNone; // the last command
    MeetingCommand sheetCommand = MeetingCommand::CmdNone;  // what opened the settings sheet
    bool usesProfile = false;     // the user's profile was read, or found read, for this work
    bool isOperationHeld = false; // a host operation waits for the work to end; which one, the strip records
    bool isChangedMeanwhile = false; // the appointment, since the client was told of it
    bool isFinishing = false;        // the work has ended; the operation is run on the next turn
    bool isNewMeeting = false;       // asked for, and its record is not written yet
    QVariantMap sentAppointment;     // as the client was last told of it, or found to have it
    std::optional<PendingWriteBack> pendingWriteBack;
    std::unique_ptr<vlOLWordMailEditor> olWordMailEditor;

private:
    MeetingContext() = default;
};
