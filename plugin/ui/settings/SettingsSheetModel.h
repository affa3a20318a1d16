// What the settings sheet of one appointment decides, without a widget.
#pragma once

#include "plugin/workflow/vlSettingData.h"

#include <QList>
#include <QString>
#include <QVariantMap>

// The appointment is named by the identifier of its window. Main thread only.
class SettingsSheetModel {
public:
    explicit SettingsSheetModel(const QString &apptWindowID)
        : m_apptWindowID(apptWindowID) {}

    [[nodiscard]] const QString &apptWindowID() const { return m_apptWindowID; }
    [[nodiscard]] vlSettingData &settings() { return m_settings; }
    [[nodiscard]] const vlSettingData &settings() const { return m_settings; }

    // The values of a new meeting, or of the appointment's own.
    void initFields();
    // The values once the personal meeting has been read, or is not used any more.
    void refresh();
    void setUsePMI(bool use);
    void getPMIMeetingInfo();
    // For whom the meeting is scheduled; "" when it is for the user.
    void setScheduleFor();

    // The personal-meeting option is hidden when the meeting is for someone else; the choice is kept.
    [[nodiscard]] bool isForOther() const;
    [[nodiscard]] bool usesPersonalMeeting() const { return !isForOther() && m_settings.usePMI(); }
    [[nodiscard]] QString personalMeetingNumber() const; // in groups
    // A type that the sheet does not offer counts as no choice.
    void chooseAudioType(int type, const QList<int> &offered);
    [[nodiscard]] bool showsThirdPartyText() const;

    // The text that the sheet begins with; null: the user has none.
    QString beginThirdPartyText();
    // `edited`: what the user has made of the text; null: not edited. What is not shown, or shown and not
    // edited, stays as the client has it: a text view has other line ends.
    [[nodiscard]] QVariantMap getSettingsData(const QString &edited);

private:
    QString m_apptWindowID;
    vlSettingData m_settings;
    QString m_shownThirdPartyAudio;
};
