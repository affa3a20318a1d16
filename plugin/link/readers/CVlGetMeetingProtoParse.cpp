#include "plugin/link/readers/CVlGetMeetingProtoParse.h"

#include "meeting.pb.h"
#include "platform/Literals.h"
#include "plugin/link/readers/protoParse.h"

namespace {

using com::brindle::webapp::proto::MeetingProto;

MeetingProto &lastMeeting() {
    static auto *meeting = new MeetingProto;
    return *meeting;
}

} // namespace

CVlGetMeetingProtoParse::CVlGetMeetingProtoParse(const void *bytes, int size) {
    replaceWhenParsed(lastMeeting(), bytes, size);
}

// The client sends no HTML invitation that the plug-in knows of.
QString CVlGetMeetingProtoParse::GetInviteHtmlEmail() const {
    return u""_s;
}
