// The state of the plug-in's work on the meeting of one appointment.
#pragma once

#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/requests/RequestOwner.h"
#include "plugin/workflow/PendingWriteBack.h"
#include "plugin/workflow/vlMeetingState.h"

#include <QVariantMap>
#include <memory>
#include <optional>
#include <vector>

class EditorStrip;

// Each open editor has one, owned by its strip, and each change on the calendar has one. The controllers and
// the data store work on the current one: every entry from outside (a hook, a button, an answer) first makes
// its context the current one. Main thread only.
struct MeetingContext : RequestOwner, vlMeetingState {
    [[nodiscard]] static std::shared_ptr<MeetingContext> make();
    // The current context; outside of every scope the context of nobody. Valid while the scope exists.
    [[nodiscard]] static MeetingContext &atHand();
    [[nodiscard]] static std::shared_ptr<MeetingContext> sharedAtHand();
    [[nodiscard]] bool hasMeeting(const QString &key) const override {
        return !key.isEmpty() && key == meetingKey;
    }
    // All existing contexts, in order of creation.
    [[nodiscard]] static std::vector<std::shared_ptr<MeetingContext>> all();

    EditorStrip *strip = nullptr; // its owner; nullptr for a change on the calendar or a closed editor

    // Fields of the data store.
    QString meetingKey; // empty or null: no meeting
    QVariantMap savedApptInfo;
    QString encodeMailBody;
    QString scheduleForEmail;
    PACAccount pacAccountNo = PACAccount::None;

    bool isPACApplied = false;                              // body and location contain the account's texts
    MeetingCommand meetingAction = MeetingCommand::CmdNone; // the last command
    MeetingCommand sheetCommand = MeetingCommand::CmdNone;  // the command that opened the settings sheet
    bool usesProfile = false;                               // this work uses the user's profile
    bool isOperationHeld = false;    // a host operation (recorded by the strip) waits for the work
    bool isChangedMeanwhile = false; // the appointment has changed since it was sent to the client
    bool isFinishing = false;        // the work has ended; the operation runs on the next turn
    bool isNewMeeting = false;       // the meeting was requested, its record is not written yet
    QVariantMap sentAppointment;     // as last sent to the client or read from it
    std::optional<PendingWriteBack> pendingWriteBack;
    std::unique_ptr<vlOLWordMailEditor> olWordMailEditor;

private:
    MeetingContext() = default;
};
