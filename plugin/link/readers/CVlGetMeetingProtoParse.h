// Reads the client's binary meeting.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The binary meeting has no HTML invitation that the plug-in knows of, and nothing else is asked of it. So
// its bytes are not parsed.
class CVlGetMeetingProtoParse {
public:
    CVlGetMeetingProtoParse(const void *, int) {}
    [[nodiscard]] QString GetInviteHtmlEmail() const { return u""_s; }
};
