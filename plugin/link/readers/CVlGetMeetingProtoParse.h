// Reads the client's binary meeting.
#pragma once

#include "platform/Literals.h"

#include <QString>

// Does not parse the bytes: the plug-in would use only an HTML invitation, and the known binary meeting has
// none.
class CVlGetMeetingProtoParse {
public:
    CVlGetMeetingProtoParse(const void *, int) {}
    [[nodiscard]] QString GetInviteHtmlEmail() const { return u""_s; }
};
