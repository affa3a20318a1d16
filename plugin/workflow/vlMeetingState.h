// The state of the meeting work.
#pragma once

#include <QtGlobal>

// Decides what the next answer for an appointment does.
enum class WorkflowState : qint64 {
    StateIdle = 0,
    StateAdd = 1,             // a meeting is being added: profile, then settings sheet
    StateChangeSettings = 2,  // the settings of the attached meeting are being changed
    StateCommit = 3,          // a schedule or update is being prepared or was sent
    StateCommitDone = 4,      // the client answered; the meeting is being read for the write-back
    StateAudioConference = 5, // an audio conference is being added
    StateSettingsPMI = 6,     // the settings sheet requested the personal meeting
    StateAddPMI = 7,          // adding without a sheet loads the personal meeting before scheduling
    StateUpdatePMI = 8        // updating a personal meeting loads it first
};

class vlMeetingState {
public:
    [[nodiscard]] WorkflowState state() const { return m_State; }
    void setState(WorkflowState state) { m_State = state; }

private:
    WorkflowState m_State = WorkflowState::StateIdle;
};
