// Which differences between two meetings require an update.
#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlSettingData.h"

#include <algorithm>

namespace {

// The new and the old meeting, compared member by member.
struct Sides {
    QVariantMap now;
    QVariantMap before;

    [[nodiscard]] Sides inside(const QString &key) const {
        return {rt::mapValue(now.value(key)), rt::mapValue(before.value(key))};
    }
    [[nodiscard]] bool textsDiffer(const QString &key) const {
        const QString a = rt::textValue(now.value(key));
        const QString b = rt::textValue(before.value(key));
        return a.isNull() || b.isNull() || a != b;
    }
    [[nodiscard]] bool flagsDiffer(const QString &key) const {
        return rt::boolValue(now.value(key)) != rt::boolValue(before.value(key));
    }
    [[nodiscard]] bool numbersDiffer(const QString &key) const {
        return rt::integerValue(now.value(key)) != rt::integerValue(before.value(key));
    }
    // Treats a missing text and an empty text as equal.
    [[nodiscard]] bool contentsDiffer(const QString &key) const {
        const QString a = rt::textValue(now.value(key));
        const QString b = rt::textValue(before.value(key));
        return a.size() != b.size() || (!a.isEmpty() && a != b);
    }
};

bool isPasswordChanged(const Sides &settings) {
    if (rt::boolValue(settings.now.value(vl_Setting_RequiredMPW)))
        return settings.contentsDiffer(vl_Setting_MeetingPassword);
    return !rt::textValue(settings.before.value(vl_Setting_MeetingPassword)).isEmpty();
}

bool isAudioChanged(const Sides &settings) {
    if (settings.numbersDiffer(vl_Setting_AudioOption))
        return true;
    return rt::integerValue(settings.now.value(vl_Setting_AudioOption)) ==
               qint64(vlSettingData::AudioType::ThirdParty) &&
           settings.contentsDiffer(vl_Setting_ThirdPartyAudio);
}

bool areSettingsChanged(const Sides &settings) {
    const QString flags[] = {vl_Setting_EnableHostVideo, vl_Setting_EnableParticipantsVideo,
                             vl_Setting_EnableJBH, vl_Setting_IsPMI};
    return std::any_of(std::begin(flags), std::end(flags),
                       [&](const QString &flag) { return settings.flagsDiffer(flag); }) ||
           isAudioChanged(settings) || isPasswordChanged(settings);
}

} // namespace

bool isAppointmentChanged(const QVariantMap &apptInfo, const QVariantMap &loadedApptInfo) {
    const Sides appointment{apptInfo, loadedApptInfo};
    return appointment.textsDiffer(vl_ApptInfo_Subject) ||
           appointment.inside(vl_ApptInfo_StartTime).textsDiffer(vl_ApptInfo_CalDate_UTCTime) ||
           appointment.textsDiffer(vl_ApptInfo_Duration) || appointment.flagsDiffer(vl_ApptInfo_Recurrence);
}

bool vlMeetingDataMgr::isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const {
    const Sides meeting{request, loadedMeeting};
    const Sides appointment = meeting.inside(vl_Outlook_ApptInfo);
    return isAppointmentChanged(appointment.now, appointment.before) ||
           areSettingsChanged(meeting.inside(vl_Setting));
}
