// The keys of the records that travel between the client, the workflow and the appointment, each beside its
// record.
#pragma once

#include <QString>

// The envelope of a message to or from the client and the agent.
inline const QString VL_IPC_ACTION_ID = QStringLiteral("actionId");
inline const QString VL_IPC_CONTENT = QStringLiteral("content");

// The meeting-info record: appointment, settings, key and invitation of one meeting.
inline const QString vl_Outlook_ApptInfo = QStringLiteral("apptInfo");
inline const QString vl_Setting = QStringLiteral("setting");
inline const QString vl_MeetingKey = QStringLiteral("meetingKey");
inline const QString vl_Meeting_OriginalNumber = QStringLiteral("originalMeetingNumber"); // of a personal one
inline const QString vl_Meeting_JoinUrl = QStringLiteral("joinUrl");
inline const QString vl_API_Para_InviteHtmlEmail = QStringLiteral("invitehtmlemail");
inline const QString vl_API_Para_InvitationEmail = QStringLiteral("invitationEmail");

// The appointment snapshot.
inline const QString vl_ApptInfo_Subject = QStringLiteral("subject");
inline const QString vl_ApptInfo_Location = QStringLiteral("location");
inline const QString vl_ApptInfo_Duration = QStringLiteral("duration");
inline const QString vl_ApptInfo_Body = QStringLiteral("emailBody");
inline const QString vl_ApptInfo_VlOIProperty = QStringLiteral("vlOIProperty");
inline const QString vl_ApptInfo_StartTime = QStringLiteral("startTime");
inline const QString vl_ApptInfo_EndTime = QStringLiteral("endTime");
inline const QString vl_ApptInfo_Recurrence = QStringLiteral("recurrence");
inline const QString vl_ApptInfo_Attendees = QStringLiteral("attendees");
inline const QString vl_ApptInfo_OnbehalfEmailAddress = QStringLiteral("onbehalfEmailAddress");
// Its date records.
inline const QString vl_ApptInfo_CalDate_UTCTime = QStringLiteral("UTCTime");
inline const QString vl_ApptInfo_CalDate_LocalTime = QStringLiteral("localTime");
inline const QString vl_ApptInfo_Timezone = QStringLiteral("timezone");
// Its attendee records.
inline const QString vl_ApptInfo_AttendeeName = QStringLiteral("name");
inline const QString vl_ApptInfo_AttendeeEmail = QStringLiteral("email");
inline const QString vl_ApptInfo_AttendeeType = QStringLiteral("type");

// The settings dictionary, the local profile file and the user's defaults share these.
inline const QString vl_Setting_EnableHostVideo = QStringLiteral("enableHostVideo");
inline const QString vl_Setting_EnableParticipantsVideo = QStringLiteral("enableParticipantsVideo");
inline const QString vl_Setting_AudioOption = QStringLiteral("audioOption");
inline const QString vl_Setting_RequiredMPW = QStringLiteral("requiredMeetingPassword");
inline const QString vl_Setting_MeetingPassword = QStringLiteral("meetingPassword");
inline const QString vl_Setting_EnableJBH = QStringLiteral("enableJBH");
inline const QString vl_Setting_IsPMI = QStringLiteral("usePMI");
inline const QString vl_Setting_RoomMeetingId = QStringLiteral("roomMeetingId");
inline const QString vl_Setting_EnableThirdPartyAudio = QStringLiteral("enableThirdPartyAudio");
inline const QString vl_Setting_ThirdPartyAudio = QStringLiteral("thirdPartyAudio");
inline const QString vl_Setting_NotShowMeAgain = QStringLiteral("notShowMeAgain");
inline const QString vl_Setting_ScheduleFor = QStringLiteral("scheduleFor");

// The stored plug-in record in the appointment's private field.
inline const QString vl_OLProperty_MeetingKey = QStringLiteral("meetingKey");
inline const QString vl_OLProperty_EncodeMailBody = QStringLiteral("encodeMailBody");

// The site configuration file.
inline const QString vl_LocalProfile_EnablePAC = QStringLiteral("enablePAC");
inline const QString vl_LocalProfile_VelaClientVersion = QStringLiteral("velaClientVersion");

// Options of a request, and what comes back from it.
inline const QString vl_API_Call_Para_ShowCommunicationDlg = QStringLiteral("showCommunicationDlg");
inline const QString vl_API_Call_Para_ForPMI = QStringLiteral("isForPMI");
inline const QString keyVlAPIResponse = QStringLiteral("vlAPIResponse");
inline const QString keyVLResult = QStringLiteral("keyVlResult");
inline const QString keyVLSuccess = QStringLiteral("Success");
inline const QString keyVLFail = QStringLiteral("Fail");
inline const QString keyApptWindowID = QStringLiteral("keyApptWindowID");
inline const QString keyEventOwnerWindow = QStringLiteral("keyEventOwnerWindow");
inline const QString keyDragAndMoveOnCalendar = QStringLiteral("keyDragAndMoveOnCalendar");
inline const QString keyApptViewActionID = QStringLiteral("keyApptViewActionID");

// The settings sheet's commit.
inline const QString notify_SettingCommit = QStringLiteral("notifySettingCommit");
inline const QString keyVLUserOperator = QStringLiteral("VlUserOperator");
inline const QString keyVLSettingCommit = QStringLiteral("SettingCommit");
inline const QString keyButtonClickIsOK = QStringLiteral("IsClickOkButton");

// The localisation table of every text that a user sees.
inline const QString vl_LocalizableTable = QStringLiteral("Localizable_prl");
