// The codes of commands to the meeting controller and of finished requests.
#pragma once

#include <QtGlobal>

// Values 1 to 12 are requests; 4 to 8 and 13 also report that the client has answered.
enum class MeetingCommand : qint32 {
    CmdNone = 0,
    CmdAddMeeting = 1,
    CmdChangeSettings = 2,
    CmdCancelMeeting = 3,
    CmdScheduleMeeting = 4,
    CmdUpdateMeeting = 5,
    CmdDeleteMeeting = 6,
    CmdGetMeetingDone = 7,
    CmdGetUserProfileDone = 8,
    CmdStartInstantVideo = 9,
    CmdStartInstantShare = 10,
    CmdAddAudioConference1 = 11,
    CmdAddAudioConference2 = 12,
    CmdGetAudioConferenceDone = 13
};
