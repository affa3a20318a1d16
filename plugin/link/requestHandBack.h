// Where a finished request goes.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/link/meetingCommand.h"

class QWidget;

// Gives the receiver the command with the dictionary {"vlAPIResponse": data, "keyApptWindowID": identifier of
// the window's editor}. No data leaves out the first entry; a window that is gone or belongs to no editor the
// second.
void handBackToMeetingMgr(QWidget *window, MeetingCommand command, const rt::Value &data);
// Tells it that a request about a meeting has ended without data, after the alert if there is one.
void tellRefused();
