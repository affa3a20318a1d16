// The keys of every text that this module shows, in the table Localizable_prl.
#pragma once

#include "platform/Literals.h"

#include <QString>

namespace uiKeys {

// The strip of an appointment editor.
inline const QString addButton = u"AddVelaButton"_s;
inline const QString cancelButton = u"CancelVelaButton"_s;
inline const QString changeSettingButton = u"ChangeSettingButton"_s;
inline const QString addPACButton = u"AddPACButton"_s;
inline const QString account1 = u"Account1"_s;
inline const QString account2 = u"Account2"_s;
inline const QString notAllowChangeSettingsTip = u"NotAllowChangeVelaSettingsTip"_s;
inline const QString notSupportPACForOnBehalf = u"NotSupportPACForOnBehalf"_s;

// The settings sheet.
inline const QString settingWindowTitle = u"SettingWindowTitle"_s;
inline const QString videoBox = u"HostvideoBoxTitle"_s;
inline const QString audioBox = u"AudioOption"_s;
inline const QString meetingBox = u"MeetingOption"_s;
inline const QString videoHost = u"Video_Host"_s;
inline const QString videoParticipant = u"Video_Paticipant"_s;
inline const QString radioOn = u"RadioButton_On"_s;
inline const QString radioOff = u"RadioButton_Off"_s;
inline const QString audioTelephony = u"Audio_Telephony"_s;
inline const QString audioVoip = u"Audio_Voip"_s;
inline const QString audioBoth = u"Audio_Both"_s;
inline const QString audioThirdParty = u"Audio_ThirdParty"_s;
inline const QString requiredPassword = u"RequirdMeetingPassword"_s;
inline const QString joinBeforeHost = u"EnableJoinBeforeHost"_s;
inline const QString usePersonalMeetingID = u"UsePersonalMeetingID"_s;
inline const QString notShowAgain = u"SaveDataTitle"_s;
inline const QString buttonContinue = u"Button_Continue"_s;
inline const QString buttonCancel = u"Button_Cancel"_s;
inline const QString onBehalfInfo = u"OnBehalfInfo"_s; // one "%@": a person's name

// The tool-bar of the main window.
inline const QString palletLabel = u"VlPalletLabel"_s;
inline const QString instantMeetingLabel = u"InstantMeetingLabel"_s;
inline const QString instantMeetingTooltip = u"InstantMeetingTooltip"_s;
inline const QString startWithVideo = u"StartWithVideo"_s;
inline const QString startWithoutVideo = u"StartWithoutVideo"_s;
inline const QString scheduleMeetingLabel = u"ScheduleMeetingLabel"_s;
inline const QString scheduleMeetingTooltip = u"ScheduleMeetingTooltip"_s;
inline const QString schedulePACMeetingLabel = u"SchedulePACMeetingLabel"_s;
inline const QString schedulePACMeetingTooltip = u"SchedulePACMeetingTooltip"_s;
inline const QString openLogFolderLabel = u"OpenLogFolderLabel"_s;
inline const QString openLogFolderTooltip = u"OpenLogFolderTooltip"_s;

// Dialogs.
inline const QString buttonLaunchClient = u"Button_LaunchClient"_s;
inline const QString buttonOKGot = u"Button_OKGot"_s;
inline const QString removeMeetingForOther = u"RemoveVelaMeetingForOther"_s;
inline const QString communicationProgress = u"CommunicationProgressTitle"_s;
inline const QString progressSchedule = u"ProgressSchedule"_s;
inline const QString progressUpdate = u"ProgressUpdate"_s;
inline const QString progressDelete = u"ProgressDelete"_s;
inline const QString progressGetMeeting = u"ProgressGetMeeting"_s;
inline const QString progressGetUserProfile = u"ProgressGetUserProfile"_s;
inline const QString progressGetPAC = u"ProgressGetPAC"_s;

} // namespace uiKeys
