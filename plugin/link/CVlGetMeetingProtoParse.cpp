#include "plugin/link/CVlGetMeetingProtoParse.h"

#include "meeting.pb.h"
#include "plugin/link/protoParse.h"

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
    return QStringLiteral("");
}
