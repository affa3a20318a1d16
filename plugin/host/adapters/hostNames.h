// The names of the host's classes and their members. They are private to the host: a member that a host lacks
// reads as no value.
#pragma once

#include "platform/Literals.h"

#include <QString>

// Classes.
inline const QString key_vlECCalendarEvent = u"ECCalendarEvent"_s;
inline const QString key_vlECMutableCalendarEvent = u"ECMutableCalendarEvent"_s;
inline const QString key_vlOLCalendarDate = u"OLCalendarDate"_s;
inline const QString key_vlECCalendarEventAttendee = u"ECCalendarEventAttendee"_s;
inline const QString key_vlECEmailAccount = u"ECEmailAccount"_s;
inline const QString key_vlECEmailAddress = u"ECEmailAddress"_s;
inline const QString key_vlERCalendarEventEditorViewController = u"ERCalendarEventEditorViewController"_s;
inline const QString key_vlERCalendarEventEditorWindowController = u"ERCalendarEventEditorWindowController"_s;
inline const QString key_vlOLWordMailEditor = u"OLWordMailEditor"_s;
inline const QString key_vlOLWordMailEditorContent = u"OLWordMailEditorContent"_s;
inline const QString key_vlCCGridViewController = u"CCGridViewController"_s;
inline const QString key_vlOLCalendarGridViewWrapper = u"OLCalendarGridViewWrapper"_s;
inline const QString key_vlErageAppDelegate = u"ErageAppDelegate"_s;
inline const QString key_vlERageMainWindowController = u"ERageMainWindowController"_s;
inline const QString key_vlComposeView = u"ComposeView"_s; // the older body editor

// Members of appointments.
inline const QString olItem_summary = u"summary"_s;
inline const QString olItem_setSummary = u"setSummary:"_s;
inline const QString olItem_location = u"location"_s;
inline const QString olItem_setLocation = u"setLocation:"_s;
inline const QString olItem_body = u"body"_s;
inline const QString olItem_setBody = u"setBody:"_s;
inline const QString olItem_olmUCCapabilities = u"olmUCCapabilities"_s;
inline const QString olItem_setOlmUCCapabilities = u"setOlmUCCapabilities:"_s;
inline const QString olItem_startTime = u"startTime"_s;
inline const QString olItem_endTime = u"endTime"_s;
inline const QString olItem_recurrence = u"recurrence"_s;
inline const QString olItem_attendeeList = u"attendeeList"_s;
inline const QString olItem_isOccurrence = u"isOccurrence"_s;
inline const QString olItem_isModifiedException = u"isModifiedException"_s;
inline const QString olItem_isOwner = u"isOwner"_s;
inline const QString olItem_account = u"account"_s;
inline const QString olItem_UUID = u"UUID"_s;
inline const QString olItem_isRecurring = u"isRecurring"_s;
inline const QString olItem_duration = u"duration"_s;
inline const QString olItem_recurrenceType = u"recurrenceType"_s;
inline const QString olItem_timeZone = u"timeZone"_s;
inline const QString olItem_isOrganizer = u"isOrganizer"_s;
inline const QString olItem_isMeeting = u"isMeeting"_s;
inline const QString olItem_organizer = u"organizer"_s;
inline const QString olItem_seriesMasterRecord = u"seriesMasterRecord"_s;
inline const QString olItem_exchangeID = u"exchangeID"_s;
inline const QString olItem_exportAsICS = u"exportAsICS"_s;
inline const QString olItem_displayReadyBody = u"displayReadyBody"_s;
inline const QString olItem_olmOnlineMeetingInternalLink = u"olmOnlineMeetingInternalLink"_s;

// Members of dates.
inline const QString olItem_dateUTC = u"dateUTC"_s;
inline const QString olItem_minuteOfHour = u"minuteOfHour"_s;
inline const QString olItem_hourOfDay = u"hourOfDay"_s;
inline const QString olItem_weekday = u"weekday"_s;
inline const QString olItem_dayOfMonth = u"dayOfMonth"_s;
inline const QString olItem_monthOfYear = u"monthOfYear"_s;
inline const QString olItem_yearOfCommonEra = u"yearOfCommonEra"_s;
inline const QString olItem_dateByAddingTimeInterval = u"dateByAddingTimeInterval:"_s;
inline const QString olItem_addTimeInterval = u"addTimeInterval:"_s;
inline const QString olItem_timeIntervalSinceDate = u"timeIntervalSinceDate:"_s;
inline const QString olItem_dateInDifferentTimeZone = u"dateInDifferentTimeZone:"_s;
inline const QString olItem_descriptionWithCalendarFormat =
    u"descriptionWithCalendarFormat:timeZone:locale:"_s;

// Members of attendees, accounts and addresses.
inline const QString olItem_name = u"name"_s;
inline const QString olItem_emailAddress = u"emailAddress"_s;
inline const QString olItem_attendeeType = u"attendeeType"_s;
inline const QString olItem_fromAddress = u"fromAddress"_s;
inline const QString olItem_connectionState = u"connectionState"_s;
inline const QString olItem_isAccountConnected = u"isAccountConnected"_s;
inline const QString olItem_accountType = u"accountType"_s;
inline const QString olItem_isDefault = u"isDefault"_s;
inline const QString olItem_realName = u"realName"_s;
inline const QString olItem_type = u"type"_s;

// Members of the appointment editor.
inline const QString olItem_content = u"content"_s;
inline const QString olItem_uncommittedChanges = u"uncommittedChanges"_s;
inline const QString olItem_currentEmailAccount = u"currentEmailAccount"_s;
inline const QString olItem_meetingOrganizer = u"meetingOrganizer"_s;
inline const QString olItem_hasMultipleAccounts = u"hasMultipleAccounts"_s;
inline const QString olItem_isDelegating = u"isDelegating"_s;
inline const QString olItem_isCancelMode = u"isCancelMode"_s;
inline const QString olItem_isOccurrenceOrException = u"isOccurrenceOrException"_s;
inline const QString olItem_isDirty = u"isDirty"_s;
inline const QString olItem_setIsDirty = u"setIsDirty:"_s;
inline const QString olItem_locationTextField = u"locationTextField"_s;
inline const QString olItem_reloadComposeView = u"reloadComposeView"_s;
inline const QString olItem_contentDidChange = u"contentDidChange"_s;
inline const QString olItem_focusOnBody = u"focusOnBody"_s;
inline const QString olItem_view = u"view"_s;

// The editor's original operations, under the selectors that they have after the hooks were installed.
inline constexpr char olItem_hostSaveAndCloseWindow[] =
    "vl_ERCalendarEventEditorViewController_saveAndCloseWindow:";
inline constexpr char olItem_hostSave[] = "vl_ERCalendarEventEditorViewController_save";
inline constexpr char olItem_hostSaveFromSender[] = "vl_ERCalendarEventEditorViewController_saveArg:";
inline constexpr char olItem_hostSendMeeting[] =
    "vl_ERCalendarEventEditorViewController_sendMeetingPostValidate";
inline constexpr char olItem_hostSaveAndCloseWindowAndReturnError[] =
    "vl_ERCalendarEventEditorViewController_saveAndCloseWindowAndReturnError:andReturnError:";

// Members of the newer body editor.
inline const QString olItem_editor = u"editor"_s;
inline const QString olItem_editorHost = u"editorHost"_s;
inline const QString olItem_editorContent = u"editorContent"_s;
inline const QString olItem_bodyContent = u"bodyContent"_s;
inline const QString olItem_displayHTMLContent = u"displayHTMLContent:readOnly:"_s;
inline const QString olItem_displayHTMLContentSignature = u"displayHTMLContent:readOnly:signatureEditor:"_s;
inline const QString olItem_displayHTMLContentSignatureActivate =
    u"displayHTMLContent:readOnly:signatureEditor:activateEditor:"_s;

// Members of the older body editor and of its web document.
inline const QString olItem_mainFrame = u"mainFrame"_s;
inline const QString olItem_DOMDocument = u"DOMDocument"_s;
inline const QString olItem_documentElement = u"documentElement"_s;
inline const QString olItem_outerHTML = u"outerHTML"_s;
inline const QString olItem_getElementsByTagName = u"getElementsByTagName:"_s;
inline const QString olItem_setInnerHTML = u"setInnerHTML:"_s;

// Members of the calendar grid and of the application.
inline const QString olItem_selectedEvent = u"selectedEvent"_s;
inline const QString olItem_gridViewController = u"gridViewController"_s;
inline const QString olItem_gridViewControllers = u"gridViewControllers"_s;
inline const QString olItem_newCalendarMeeting = u"newCalendarMeeting:"_s;

// Prefix of the member's name in the editor's pending changes.
inline const QString key_vlPendingPrefix = u"content."_s;
