// What is known about the meeting of the appointment that is being worked on.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>
#include <QVariantMap>

// The operations on what the context at hand holds. Main thread only.
class vlMeetingDataMgr : public SharedObject<vlMeetingDataMgr> {
public:
    // A null text leaves the old value in place; only clearSavedMeetingData() empties them.
    void setMeetingKey(const QString &key);
    [[nodiscard]] const QString &meetingKey() const { return at().meetingKey; } // empty or null: no meeting
    // The digest of the invitation that was last written into the body.
    void setEncodeMailBody(const QString &digest);
    [[nodiscard]] const QString &encodeMailBody() const { return at().encodeMailBody; }
    // Empty or null: the meeting is for the user.
    void setScheduleForEmail(const QString &email);
    [[nodiscard]] const QString &scheduleForEmail() const { return at().scheduleForEmail; }
    // The appointment's snapshot as it was when the work began; an empty one empties it.
    void setSavedApptInfo(const QVariantMap &snapshot) { at().savedApptInfo = snapshot; }
    [[nodiscard]] const QVariantMap &getSavedApptInfo() const { return at().savedApptInfo; }
    // The chosen audio-conference account.
    void setPACAccountNo(PACAccount account) { at().pacAccountNo = account; }
    [[nodiscard]] PACAccount pacAccountNo() const { return at().pacAccountNo; }

    [[nodiscard]] bool isVelaMeeting() const { return !at().meetingKey.isEmpty(); }
    [[nodiscard]] bool isPACMeeting() const { return at().pacAccountNo != PACAccount::None; }
    void clearSavedMeetingData();

    // The core of a meeting request: {"apptInfo", "setting", "meetingKey"}, the first and last where there is
    // one.
    [[nodiscard]] QVariantMap getVlSchMeetingData(rt::Object *editor) const;
    // The settings that apply: those of an open sheet, else of the loaded meeting, else those that the user
    // last saved.
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &apptWindowID) const;
    // The record that ties an appointment to the meeting: JSON {"meetingKey", "encodeMailBody", "joinUrl"},
    // ending before the first member that is missing.
    [[nodiscard]] QString getVlDataForOLProperty(const QVariantMap &info) const;
    // Whether a request differs from the client's meeting in what makes an update necessary. A missing text
    // equals nothing.
    [[nodiscard]] bool isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const;
    // The join URL in the saved snapshot's record; null when there is none.
    [[nodiscard]] QString getOldJoinUrl() const;

private:
    [[nodiscard]] static MeetingContext &at() { return MeetingContext::atHand(); }
};

// Whether an appointment differs from the client's in what makes an update necessary.
[[nodiscard]] bool isAppointmentChanged(const QVariantMap &apptInfo, const QVariantMap &loadedApptInfo);
