// The data of the current appointment's meeting.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>
#include <QVariantMap>

// Reads and writes the current context. Main thread only.
class vlMeetingDataMgr : public SharedObject<vlMeetingDataMgr> {
public:
    // A null text keeps the old value; only clearSavedMeetingData() empties these fields.
    void setMeetingKey(const QString &key);
    [[nodiscard]] const QString &meetingKey() const { return at().meetingKey; } // empty or null: no meeting
    // The digest of the invitation that was last written into the body.
    void setEncodeMailBody(const QString &digest);
    [[nodiscard]] const QString &encodeMailBody() const { return at().encodeMailBody; }
    // Empty or null: the meeting is for the user.
    void setScheduleForEmail(const QString &email);
    [[nodiscard]] const QString &scheduleForEmail() const { return at().scheduleForEmail; }
    // The appointment's snapshot from the beginning of the work; an empty map clears it.
    void setSavedApptInfo(const QVariantMap &snapshot) { at().savedApptInfo = snapshot; }
    [[nodiscard]] const QVariantMap &getSavedApptInfo() const { return at().savedApptInfo; }
    // The chosen audio-conference account.
    void setPACAccountNo(PACAccount account) { at().pacAccountNo = account; }
    [[nodiscard]] PACAccount pacAccountNo() const { return at().pacAccountNo; }

    [[nodiscard]] bool isVelaMeeting() const { return !at().meetingKey.isEmpty(); }
    [[nodiscard]] bool isPACMeeting() const { return at().pacAccountNo != PACAccount::None; }
    void clearSavedMeetingData();

    // The core of a meeting request: {"apptInfo", "setting", "meetingKey"}. The first and the last entry are
    // left out if they have no value.
    [[nodiscard]] QVariantMap getVlSchMeetingData(rt::Object *editor) const;
    // The settings in force: from the open sheet, else from the loaded meeting, else as the user last saved
    // them.
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &apptWindowID) const;
    // The record that ties an appointment to the meeting: JSON {"meetingKey", "encodeMailBody", "joinUrl"},
    // ending before the first member that is missing.
    [[nodiscard]] QString getVlDataForOLProperty(const QVariantMap &info) const;
    // Whether a request differs from the client's meeting in a way that requires an update. A text that is
    // missing on either side counts as a difference.
    [[nodiscard]] bool isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const;
    // The join URL in the saved snapshot's record; null if there is none.
    [[nodiscard]] QString getOldJoinUrl() const;

private:
    [[nodiscard]] static MeetingContext &at() { return MeetingContext::atHand(); }
};

// Whether an appointment differs from the client's copy in a way that requires an update.
[[nodiscard]] bool isAppointmentChanged(const QVariantMap &apptInfo, const QVariantMap &loadedApptInfo);
