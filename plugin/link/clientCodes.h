// The numbers that are exchanged with the client and the agent, and the codes of what can go wrong with a
// request.
#pragma once

#include <QtGlobal>

// Action ids to the client.
enum class ClientAction : quint32 { StartMeeting = 2, Meeting = 3, GetUserProfile = 6, GetPAC = 9 };
// The first field of the content of ClientAction::Meeting. The answer comes under the sub-command's own
// number.
enum class MeetingSubCommand : qint32 { Schedule = 1, Update = 2, Delete = 3, Get = 4 };
// Action ids of the client's answers. 2 answers an update, never a start.
enum class ClientAnswer : qint32 {
    Schedule = 1,
    Update = 2,
    Delete = 3,
    GetMeeting = 4,
    GetUserProfile = 6,
    GetPAC = 9
};
// Action ids to the agent; an answer comes under the same number.
enum class AgentAction : quint32 { GetClientVersion = 1, LaunchClient = 2 };

// The user's audio-conference accounts, as they are numbered.
enum class PACAccount : qint64 { None = 0, First = 1, Second = 2 };

enum class ClientStatus : qint32 { NotInstalled = 0, NotRunning = 1, Running = 2, NotSupported = 3 };

// Why a request failed: NotInstalled, NotRunning and NotSupported by the client's status, the others by its
// answer.
enum class ClientError : qint32 {
    None = 0,
    NotInstalled = 2,
    Internet = 3, // kept for its text; no request ends with it
    NotRunning = 5,
    NotSupported = 6,
    NotSignedIn = 7,
    System = 999,
    MeetingNotFound = 3001,
    Network = 5003
};
