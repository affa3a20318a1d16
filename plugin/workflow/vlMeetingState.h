// Where the meeting work stands.
#pragma once

#include "plugin/link/meetingCommand.h"

#include <QtGlobal>

// What the next answer for an appointment leads to.
enum class WorkflowState : qint64 {
    StateIdle = 0,
    StateAdd = 1,             // a meeting is being added: profile, then settings sheet
    StateChangeSettings = 2,  // the settings of the attached meeting are being changed
    StateCommit = 3,          // a schedule or update is being prepared or is out
    StateCommitDone = 4,      // it was answered; the meeting is being read back for the write-back
    StateAudioConference = 5, // an audio conference is being added
    StateSettingsPMI = 6,     // the settings sheet asked for the personal meeting
    StateAddPMI = 7,          // an add without sheet loads the personal meeting before it schedules
    StateUpdatePMI = 8        // an update of a meeting that uses the personal meeting loads it
};

class vlMeetingState {
public:
    [[nodiscard]] WorkflowState state() const { return m_State; }
    void setState(WorkflowState state) { m_State = state; }

private:
    WorkflowState m_State = WorkflowState::StateIdle;
};
