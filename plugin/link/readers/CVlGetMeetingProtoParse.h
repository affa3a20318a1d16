// Reads the client's binary meeting.
#pragma once

#include <QString>

// All readers share one last good message, empty at first. Bytes that do not parse leave it as it was.
class CVlGetMeetingProtoParse {
public:
    CVlGetMeetingProtoParse(const void *bytes, int size);
    [[nodiscard]] QString GetInviteHtmlEmail() const; // always ""
};
