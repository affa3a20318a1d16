// The host's classes and their members, by name. None of them is published: whatever is missing in a host
// reads as no value.
#pragma once

#include <QString>

// Classes.
inline const QString key_vlECCalendarEvent = QStringLiteral("ECCalendarEvent");
inline const QString key_vlECMutableCalendarEvent = QStringLiteral("ECMutableCalendarEvent");
inline const QString key_vlOLCalendarDate = QStringLiteral("OLCalendarDate");
inline const QString key_vlECCalendarEventAttendee = QStringLiteral("ECCalendarEventAttendee");
inline const QString key_vlECEmailAccount = QStringLiteral("ECEmailAccount");
inline const QString key_vlECEmailAddress = QStringLiteral("ECEmailAddress");
inline const QString key_vlERCalendarEventEditorViewController =
    QStringLiteral("ERCalendarEventEditorViewController");
inline const QString key_vlERCalendarEventEditorWindowController =
    QStringLiteral("ERCalendarEventEditorWindowController");
inline const QString key_vlOLWordMailEditor = QStringLiteral("OLWordMailEditor");
inline const QString key_vlOLWordMailEditorContent = QStringLiteral("OLWordMailEditorContent");
inline const QString key_vlCCGridViewController = QStringLiteral("CCGridViewController");
inline const QString key_vlOLCalendarGridViewWrapper = QStringLiteral("OLCalendarGridViewWrapper");
inline const QString key_vlErageAppDelegate = QStringLiteral("ErageAppDelegate");
inline const QString key_vlERageMainWindowController = QStringLiteral("ERageMainWindowController");
inline const QString key_vlComposeView = QStringLiteral("ComposeView"); // the older body editor

// Members of appointments.
inline const QString olItem_summary = QStringLiteral("summary");
inline const QString olItem_setSummary = QStringLiteral("setSummary:");
inline const QString olItem_location = QStringLiteral("location");
inline const QString olItem_setLocation = QStringLiteral("setLocation:");
inline const QString olItem_body = QStringLiteral("body");
inline const QString olItem_setBody = QStringLiteral("setBody:");
inline const QString olItem_olmUCCapabilities = QStringLiteral("olmUCCapabilities");
inline const QString olItem_setOlmUCCapabilities = QStringLiteral("setOlmUCCapabilities:");
inline const QString olItem_startTime = QStringLiteral("startTime");
inline const QString olItem_endTime = QStringLiteral("endTime");
inline const QString olItem_recurrence = QStringLiteral("recurrence");
inline const QString olItem_attendeeList = QStringLiteral("attendeeList");
inline const QString olItem_isOccurrence = QStringLiteral("isOccurrence");
inline const QString olItem_isModifiedException = QStringLiteral("isModifiedException");
inline const QString olItem_isOwner = QStringLiteral("isOwner");
inline const QString olItem_account = QStringLiteral("account");
inline const QString olItem_UUID = QStringLiteral("UUID");
inline const QString olItem_isRecurring = QStringLiteral("isRecurring");
inline const QString olItem_duration = QStringLiteral("duration");
inline const QString olItem_recurrenceType = QStringLiteral("recurrenceType");
inline const QString olItem_timeZone = QStringLiteral("timeZone");
inline const QString olItem_isOrganizer = QStringLiteral("isOrganizer");
inline const QString olItem_isMeeting = QStringLiteral("isMeeting");
inline const QString olItem_organizer = QStringLiteral("organizer");
inline const QString olItem_seriesMasterRecord = QStringLiteral("seriesMasterRecord");
inline const QString olItem_exchangeID = QStringLiteral("exchangeID");
inline const QString olItem_exportAsICS = QStringLiteral("exportAsICS");
inline const QString olItem_displayReadyBody = QStringLiteral("displayReadyBody");
inline const QString olItem_olmOnlineMeetingInternalLink = QStringLiteral("olmOnlineMeetingInternalLink");

// Members of dates.
inline const QString olItem_dateUTC = QStringLiteral("dateUTC");
inline const QString olItem_minuteOfHour = QStringLiteral("minuteOfHour");
inline const QString olItem_hourOfDay = QStringLiteral("hourOfDay");
inline const QString olItem_weekday = QStringLiteral("weekday");
inline const QString olItem_dayOfMonth = QStringLiteral("dayOfMonth");
inline const QString olItem_monthOfYear = QStringLiteral("monthOfYear");
inline const QString olItem_yearOfCommonEra = QStringLiteral("yearOfCommonEra");
inline const QString olItem_dateByAddingTimeInterval = QStringLiteral("dateByAddingTimeInterval:");
inline const QString olItem_addTimeInterval = QStringLiteral("addTimeInterval:");
inline const QString olItem_timeIntervalSinceDate = QStringLiteral("timeIntervalSinceDate:");
inline const QString olItem_dateInDifferentTimeZone = QStringLiteral("dateInDifferentTimeZone:");
inline const QString olItem_descriptionWithCalendarFormat =
    QStringLiteral("descriptionWithCalendarFormat:timeZone:locale:");

// Members of attendees, accounts and addresses.
inline const QString olItem_name = QStringLiteral("name");
inline const QString olItem_emailAddress = QStringLiteral("emailAddress");
inline const QString olItem_attendeeType = QStringLiteral("attendeeType");
inline const QString olItem_fromAddress = QStringLiteral("fromAddress");
inline const QString olItem_connectionState = QStringLiteral("connectionState");
inline const QString olItem_isAccountConnected = QStringLiteral("isAccountConnected");
inline const QString olItem_accountType = QStringLiteral("accountType");
inline const QString olItem_isDefault = QStringLiteral("isDefault");
inline const QString olItem_realName = QStringLiteral("realName");
inline const QString olItem_type = QStringLiteral("type");

// Members of the appointment editor.
inline const QString olItem_content = QStringLiteral("content");
inline const QString olItem_uncommittedChanges = QStringLiteral("uncommittedChanges");
inline const QString olItem_currentEmailAccount = QStringLiteral("currentEmailAccount");
inline const QString olItem_meetingOrganizer = QStringLiteral("meetingOrganizer");
inline const QString olItem_hasMultipleAccounts = QStringLiteral("hasMultipleAccounts");
inline const QString olItem_isDelegating = QStringLiteral("isDelegating");
inline const QString olItem_isCancelMode = QStringLiteral("isCancelMode");
inline const QString olItem_isOccurrenceOrException = QStringLiteral("isOccurrenceOrException");
inline const QString olItem_isDirty = QStringLiteral("isDirty");
inline const QString olItem_setIsDirty = QStringLiteral("setIsDirty:");
inline const QString olItem_locationTextField = QStringLiteral("locationTextField");
inline const QString olItem_reloadComposeView = QStringLiteral("reloadComposeView");
inline const QString olItem_contentDidChange = QStringLiteral("contentDidChange");
inline const QString olItem_focusOnBody = QStringLiteral("focusOnBody");
inline const QString olItem_view = QStringLiteral("view");

// The editor's own operations. The hooks leave them under these selectors.
inline constexpr char olItem_hostSaveAndCloseWindow[] =
    "vl_ERCalendarEventEditorViewController_saveAndCloseWindow:";
inline constexpr char olItem_hostSave[] = "vl_ERCalendarEventEditorViewController_save";
inline constexpr char olItem_hostSaveFromSender[] = "vl_ERCalendarEventEditorViewController_saveArg:";
inline constexpr char olItem_hostSendMeeting[] =
    "vl_ERCalendarEventEditorViewController_sendMeetingPostValidate";
inline constexpr char olItem_hostSaveAndCloseWindowAndReturnError[] =
    "vl_ERCalendarEventEditorViewController_saveAndCloseWindowAndReturnError:andReturnError:";

// Members of the newer body editor.
inline const QString olItem_editor = QStringLiteral("editor");
inline const QString olItem_editorHost = QStringLiteral("editorHost");
inline const QString olItem_editorContent = QStringLiteral("editorContent");
inline const QString olItem_bodyContent = QStringLiteral("bodyContent");
inline const QString olItem_displayHTMLContent = QStringLiteral("displayHTMLContent:readOnly:");
inline const QString olItem_displayHTMLContentSignature =
    QStringLiteral("displayHTMLContent:readOnly:signatureEditor:");
inline const QString olItem_displayHTMLContentSignatureActivate =
    QStringLiteral("displayHTMLContent:readOnly:signatureEditor:activateEditor:");

// Members of the older body editor and of its web document.
inline const QString olItem_mainFrame = QStringLiteral("mainFrame");
inline const QString olItem_DOMDocument = QStringLiteral("DOMDocument");
inline const QString olItem_documentElement = QStringLiteral("documentElement");
inline const QString olItem_outerHTML = QStringLiteral("outerHTML");
inline const QString olItem_getElementsByTagName = QStringLiteral("getElementsByTagName:");
inline const QString olItem_setInnerHTML = QStringLiteral("setInnerHTML:");

// Members of the calendar grid and of the application.
inline const QString olItem_selectedEvent = QStringLiteral("selectedEvent");
inline const QString olItem_gridViewController = QStringLiteral("gridViewController");
inline const QString olItem_gridViewControllers = QStringLiteral("gridViewControllers");
inline const QString olItem_newCalendarMeeting = QStringLiteral("newCalendarMeeting:");

// The editor's pending changes are kept under this and the member's name.
inline const QString key_vlPendingPrefix = QStringLiteral("content.");
