// The numbers that the plug-in exchanges with the client and the agent, and the error codes of requests.
#pragma once

#include <QtGlobal>

// Action ids of messages to the client.
enum class ClientAction : quint32 { StartMeeting = 2, Meeting = 3, GetUserProfile = 6, GetPAC = 9 };
// The first field of the content of ClientAction::Meeting. The action id of the answer is the number of the
// sub-command.
enum class MeetingSubCommand : qint32 { Schedule = 1, Update = 2, Delete = 3, Get = 4 };
// Action ids of the client's answers. An answer with 2 belongs to an update, never to a start.
enum class ClientAnswer : qint32 {
    Schedule = 1,
    Update = 2,
    Delete = 3,
    GetMeeting = 4,
    GetUserProfile = 6,
    GetPAC = 9
};
// Action ids of messages to the agent; its answer has the same id.
enum class AgentAction : quint32 { GetClientVersion = 1, LaunchClient = 2 };

// The numbers of the user's audio-conference accounts.
enum class PACAccount : qint64 { None = 0, First = 1, Second = 2 };

enum class ClientStatus : qint32 { NotInstalled = 0, NotRunning = 1, Running = 2, NotSupported = 3 };

// Why a request failed. NotInstalled, NotRunning and NotSupported come from the client's status, the others
// from its answer.
enum class ClientError : qint32 {
    None = 0,
    NotInstalled = 2,
    Internet = 3, // has a text, but no request ends with it
    NotRunning = 5,
    NotSupported = 6,
    NotSignedIn = 7,
    System = 999,
    MeetingNotFound = 3001,
    Network = 5003
};
