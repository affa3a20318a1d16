// The meeting last read from the client for the current appointment.
#pragma once

#include "plugin/link/requests/RequestOwner.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>

// The current request owner stores the meeting until the next one replaces it. Main thread only.
class vlGetMeetingHelper : public SharedObject<vlGetMeetingHelper> {
public:
    // Replaces the meeting dictionary. For the personal meeting a "usePMI" of 1 is kept even if the new
    // dictionary differs, because the client does not report that a meeting is the personal one.
    void setMeetingData(const QVariantMap &data, bool forPMI);
    [[nodiscard]] const QVariantMap &meetingData() const {
        return RequestOwner::atHand()->loadedMeeting.data;
    }
    void setMeetingData(const QVariantMap &data) { RequestOwner::atHand()->loadedMeeting.data = data; }
    // Whether there is a meeting with a key.
    [[nodiscard]] bool hasMeetingInfo() const;
    // The meeting-info record of the meeting. Values that the meeting lacks have no entry.
    [[nodiscard]] QVariantMap getMeetingInfo() const;

    // Base64 of the binary meeting; a null text is ignored.
    void setPBMeetingData(const QString &base64);
    [[nodiscard]] bool hasPBMeetingData() const {
        return !RequestOwner::atHand()->loadedMeeting.binary.isEmpty();
    }
    [[nodiscard]] QString getInviteHtmlEmail() const; // null without a binary meeting
    [[nodiscard]] bool supportHtmlEmail() const;
    [[nodiscard]] QString getInviteEmail() const; // plain text; null if the meeting has none
};
