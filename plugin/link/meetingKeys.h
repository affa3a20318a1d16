// The keys of the records that the client, the workflow and the appointment exchange, grouped by record.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The envelope of a message to or from the client and the agent.
inline const QString VL_IPC_ACTION_ID = u"actionId"_s;
inline const QString VL_IPC_CONTENT = u"content"_s;

// The meeting-info record: appointment, settings, key and invitation of one meeting.
inline const QString vl_Outlook_ApptInfo = u"apptInfo"_s;
inline const QString vl_Setting = u"setting"_s;
inline const QString vl_MeetingKey = u"meetingKey"_s;
inline const QString vl_Meeting_OriginalNumber = u"originalMeetingNumber"_s; // of a personal meeting
inline const QString vl_Meeting_JoinUrl = u"joinUrl"_s;
inline const QString vl_API_Para_InviteHtmlEmail = u"invitehtmlemail"_s;
inline const QString vl_API_Para_InvitationEmail = u"invitationEmail"_s;

// The appointment snapshot.
inline const QString vl_ApptInfo_Subject = u"subject"_s;
inline const QString vl_ApptInfo_Location = u"location"_s;
inline const QString vl_ApptInfo_Duration = u"duration"_s;
inline const QString vl_ApptInfo_Body = u"emailBody"_s;
inline const QString vl_ApptInfo_VlOIProperty = u"vlOIProperty"_s;
inline const QString vl_ApptInfo_StartTime = u"startTime"_s;
inline const QString vl_ApptInfo_EndTime = u"endTime"_s;
inline const QString vl_ApptInfo_Recurrence = u"recurrence"_s;
inline const QString vl_ApptInfo_Attendees = u"attendees"_s;
inline const QString vl_ApptInfo_OnbehalfEmailAddress = u"onbehalfEmailAddress"_s;
// Its date records.
inline const QString vl_ApptInfo_CalDate_UTCTime = u"UTCTime"_s;
inline const QString vl_ApptInfo_CalDate_LocalTime = u"localTime"_s;
inline const QString vl_ApptInfo_Timezone = u"timezone"_s;
// Its attendee records.
inline const QString vl_ApptInfo_AttendeeName = u"name"_s;
inline const QString vl_ApptInfo_AttendeeEmail = u"email"_s;
inline const QString vl_ApptInfo_AttendeeType = u"type"_s;

// The settings dictionary, the local profile file and the user's defaults share these.
inline const QString vl_Setting_EnableHostVideo = u"enableHostVideo"_s;
inline const QString vl_Setting_EnableParticipantsVideo = u"enableParticipantsVideo"_s;
inline const QString vl_Setting_AudioOption = u"audioOption"_s;
inline const QString vl_Setting_RequiredMPW = u"requiredMeetingPassword"_s;
inline const QString vl_Setting_MeetingPassword = u"meetingPassword"_s;
inline const QString vl_Setting_EnableJBH = u"enableJBH"_s;
inline const QString vl_Setting_IsPMI = u"usePMI"_s;
inline const QString vl_Setting_RoomMeetingId = u"roomMeetingId"_s;
inline const QString vl_Setting_EnableThirdPartyAudio = u"enableThirdPartyAudio"_s;
inline const QString vl_Setting_ThirdPartyAudio = u"thirdPartyAudio"_s;
inline const QString vl_Setting_NotShowMeAgain = u"notShowMeAgain"_s;
inline const QString vl_Setting_ScheduleFor = u"scheduleFor"_s;

// The stored plug-in record in the appointment's private field.
inline const QString vl_OLProperty_MeetingKey = u"meetingKey"_s;
inline const QString vl_OLProperty_EncodeMailBody = u"encodeMailBody"_s;

// The site configuration file.
inline const QString vl_LocalProfile_EnablePAC = u"enablePAC"_s;
inline const QString vl_LocalProfile_VelaClientVersion = u"velaClientVersion"_s;

// Options of a request, and the members of its result.
inline const QString vl_API_Call_Para_ShowCommunicationDlg = u"showCommunicationDlg"_s;
inline const QString vl_API_Call_Para_ForPMI = u"isForPMI"_s;
inline const QString keyVlAPIResponse = u"vlAPIResponse"_s;
inline const QString keyVLResult = u"keyVlResult"_s;
inline const QString keyVLSuccess = u"Success"_s;
inline const QString keyVLFail = u"Fail"_s;
inline const QString keyApptWindowID = u"keyApptWindowID"_s;
inline const QString keyEventOwnerWindow = u"keyEventOwnerWindow"_s;
inline const QString keyDragAndMoveOnCalendar = u"keyDragAndMoveOnCalendar"_s;
inline const QString keyApptViewActionID = u"keyApptViewActionID"_s;

// The settings sheet's commit.
inline const QString notify_SettingCommit = u"notifySettingCommit"_s;
inline const QString keyVLUserOperator = u"VlUserOperator"_s;
inline const QString keyVLSettingCommit = u"SettingCommit"_s;
inline const QString keyButtonClickIsOK = u"IsClickOkButton"_s;
