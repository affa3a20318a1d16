// The last meeting that was read from the client for the appointment that is being worked on.
#pragma once

#include "plugin/link/requests/RequestOwner.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>

// The meeting is kept with the request owner at hand, until the next one takes its place. Main thread only.
class vlGetMeetingHelper : public SharedObject<vlGetMeetingHelper> {
public:
    // Replaces the meeting dictionary. For the personal meeting a "usePMI" of 1 stays, whatever the new
    // dictionary says: the client does not report the personal meeting as one.
    void setMeetingData(const QVariantMap &data, bool forPMI);
    [[nodiscard]] const QVariantMap &meetingData() const {
        return RequestOwner::atHand()->loadedMeeting.data;
    }
    void setMeetingData(const QVariantMap &data) { RequestOwner::atHand()->loadedMeeting.data = data; }
    // Whether there is a meeting with a key.
    [[nodiscard]] bool hasMeetingInfo() const;
    // The meeting-info record of the meeting. What the meeting does not tell is left out of it.
    [[nodiscard]] QVariantMap getMeetingInfo() const;

    // Base64 of the binary meeting; a null text is ignored.
    void setPBMeetingData(const QString &base64);
    [[nodiscard]] bool hasPBMeetingData() const {
        return !RequestOwner::atHand()->loadedMeeting.binary.isEmpty();
    }
    [[nodiscard]] QString getInviteHtmlEmail() const; // null without a binary meeting
    [[nodiscard]] bool supportHtmlEmail() const;
    [[nodiscard]] QString getInviteEmail() const; // plain text; null when the meeting has none
};
