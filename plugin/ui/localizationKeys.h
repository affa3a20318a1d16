// The keys of every text that this room shows, in the table Localizable_prl.
#pragma once

#include <QString>

namespace uiKeys {

// The strip of an appointment editor.
inline const QString addButton = QStringLiteral("AddVelaButton");
inline const QString cancelButton = QStringLiteral("CancelVelaButton");
inline const QString changeSettingButton = QStringLiteral("ChangeSettingButton");
inline const QString addPACButton = QStringLiteral("AddPACButton");
inline const QString account1 = QStringLiteral("Account1");
inline const QString account2 = QStringLiteral("Account2");
inline const QString notAllowChangeSettingsTip = QStringLiteral("NotAllowChangeVelaSettingsTip");
inline const QString notSupportPACForOnBehalf = QStringLiteral("NotSupportPACForOnBehalf");

// The settings sheet.
inline const QString settingWindowTitle = QStringLiteral("SettingWindowTitle");
inline const QString videoBox = QStringLiteral("HostvideoBoxTitle");
inline const QString audioBox = QStringLiteral("AudioOption");
inline const QString meetingBox = QStringLiteral("MeetingOption");
inline const QString videoHost = QStringLiteral("Video_Host");
inline const QString videoParticipant = QStringLiteral("Video_Paticipant");
inline const QString radioOn = QStringLiteral("RadioButton_On");
inline const QString radioOff = QStringLiteral("RadioButton_Off");
inline const QString audioTelephony = QStringLiteral("Audio_Telephony");
inline const QString audioVoip = QStringLiteral("Audio_Voip");
inline const QString audioBoth = QStringLiteral("Audio_Both");
inline const QString audioThirdParty = QStringLiteral("Audio_ThirdParty");
inline const QString requiredPassword = QStringLiteral("RequirdMeetingPassword");
inline const QString joinBeforeHost = QStringLiteral("EnableJoinBeforeHost");
inline const QString usePersonalMeetingID = QStringLiteral("UsePersonalMeetingID");
inline const QString notShowAgain = QStringLiteral("SaveDataTitle");
inline const QString buttonContinue = QStringLiteral("Button_Continue");
inline const QString buttonCancel = QStringLiteral("Button_Cancel");
inline const QString onBehalfInfo = QStringLiteral("OnBehalfInfo"); // one "%@": a person's name

// The tool-bar of the main window.
inline const QString palletLabel = QStringLiteral("VlPalletLabel");
inline const QString instantMeetingLabel = QStringLiteral("InstantMeetingLabel");
inline const QString instantMeetingTooltip = QStringLiteral("InstantMeetingTooltip");
inline const QString startWithVideo = QStringLiteral("StartWithVideo");
inline const QString startWithoutVideo = QStringLiteral("StartWithoutVideo");
inline const QString scheduleMeetingLabel = QStringLiteral("ScheduleMeetingLabel");
inline const QString scheduleMeetingTooltip = QStringLiteral("ScheduleMeetingTooltip");
inline const QString schedulePACMeetingLabel = QStringLiteral("SchedulePACMeetingLabel");
inline const QString schedulePACMeetingTooltip = QStringLiteral("SchedulePACMeetingTooltip");
inline const QString openLogFolderLabel = QStringLiteral("OpenLogFolderLabel");
inline const QString openLogFolderTooltip = QStringLiteral("OpenLogFolderTooltip");

// Dialogs.
inline const QString buttonLaunchClient = QStringLiteral("Button_LaunchClient");
inline const QString buttonOKGot = QStringLiteral("Button_OKGot");
inline const QString removeMeetingForOther = QStringLiteral("RemoveVelaMeetingForOther");
inline const QString communicationProgress = QStringLiteral("CommunicationProgressTitle");

} // namespace uiKeys
