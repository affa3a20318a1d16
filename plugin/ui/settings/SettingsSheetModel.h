// The decisions of one appointment's settings sheet, without a widget.
#pragma once

#include "plugin/workflow/vlSettingData.h"

#include <QList>
#include <QString>
#include <QVariantMap>

// The identifier of its window identifies the appointment. Main thread only.
class SettingsSheetModel {
public:
    explicit SettingsSheetModel(const QString &apptWindowID)
        : m_apptWindowID(apptWindowID) {}

    [[nodiscard]] const QString &apptWindowID() const { return m_apptWindowID; }
    [[nodiscard]] vlSettingData &settings() { return m_settings; }
    [[nodiscard]] const vlSettingData &settings() const { return m_settings; }

    // Sets the values of the appointment's meeting or, without one, of a new meeting.
    void initFields();
    // Updates the values after the personal meeting was read or deselected.
    void refresh();
    void setUsePMI(bool use);
    void getPMIMeetingInfo();
    // Stores for whom the meeting is scheduled; "" for the user.
    void setScheduleFor();

    // Whether the meeting is for another person. The personal-meeting option is hidden then, but its value is
    // kept.
    [[nodiscard]] bool isForOther() const;
    [[nodiscard]] bool usesPersonalMeeting() const { return !isForOther() && m_settings.usePMI(); }
    [[nodiscard]] QString personalMeetingNumber() const; // in groups
    [[nodiscard]] bool showsThirdPartyText() const;

    // The initial text of the sheet; null if the user has none.
    QString beginThirdPartyText();
    // `edited` is the text after the user's changes, null if the user changed nothing. A text that is hidden
    // or unchanged keeps the client's form, because a text view uses other line ends.
    [[nodiscard]] QVariantMap getSettingsData(const QString &edited);

private:
    QString m_apptWindowID;
    vlSettingData m_settings;
    QString m_shownThirdPartyAudio;
};
