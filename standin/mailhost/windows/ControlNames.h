// The object names of what can be clicked or typed into, so that a walk-through finds it with findChild().
#pragma once

#include <QString>

namespace mailhost::controls {

// Main window.
inline const QString mainWindow = QStringLiteral("mainWindow");
inline const QString mainToolBar = QStringLiteral("mainToolBar");
inline const QString newAppointmentButton = QStringLiteral("newAppointmentButton");
inline const QString newMeetingButton = QStringLiteral("newMeetingButton");
inline const QString todayButton = QStringLiteral("todayButton");
inline const QString previousWeekButton = QStringLiteral("previousWeekButton");
inline const QString nextWeekButton = QStringLiteral("nextWeekButton");
inline const QString dayViewButton = QStringLiteral("dayViewButton");
inline const QString weekViewButton = QStringLiteral("weekViewButton");
inline const QString deleteToolBarButton = QStringLiteral("deleteToolBarButton");
inline const QString weekTitle = QStringLiteral("weekTitle");       // label
inline const QString calendarGrid = QStringLiteral("calendarGrid"); // CalendarGrid

// Menu actions of the main window (QAction).
inline const QString openAction = QStringLiteral("openAction");
inline const QString deleteAction = QStringLiteral("deleteAction");
inline const QString cancelMeetingAction = QStringLiteral("cancelMeetingAction");
inline const QString renameAction = QStringLiteral("renameAction");
inline const QString earlierAction = QStringLiteral("earlierAction");
inline const QString laterAction = QStringLiteral("laterAction");
inline const QString longerAction = QStringLiteral("longerAction");
inline const QString shorterAction = QStringLiteral("shorterAction");
inline const QString startEarlierAction = QStringLiteral("startEarlierAction");
inline const QString startLaterAction = QStringLiteral("startLaterAction");
inline const QString dayEarlierAction = QStringLiteral("dayEarlierAction");
inline const QString dayLaterAction = QStringLiteral("dayLaterAction");
inline const QString openSeriesAction = QStringLiteral("openSeriesAction");
inline const QString undoAction = QStringLiteral("undoAction");
inline const QString redoAction = QStringLiteral("redoAction");
inline const QString newWindowAction = QStringLiteral("newWindowAction");
inline const QString closeWindowAction = QStringLiteral("closeWindowAction");
inline const QString newAppointmentAction = QStringLiteral("newAppointmentAction");
inline const QString newMeetingAction = QStringLiteral("newMeetingAction");
inline const QString todayAction = QStringLiteral("todayAction");
inline const QString previousAction = QStringLiteral("previousAction");
inline const QString nextAction = QStringLiteral("nextAction");
inline const QString dayViewAction = QStringLiteral("dayViewAction");
inline const QString weekViewAction = QStringLiteral("weekViewAction");
inline const QString customizeToolBarAction = QStringLiteral("customizeToolBarAction");
inline const QString quitAction = QStringLiteral("quitAction");

// Editor.
inline const QString editorWindow = QStringLiteral("editorWindow");
inline const QString editorHeader = QStringLiteral("editorHeader");
inline const QString fromChooser = QStringLiteral("fromChooser");
inline const QString subjectField = QStringLiteral("subjectField");
inline const QString locationField = QStringLiteral("locationField");
inline const QString attendeesField = QStringLiteral("attendeesField");
inline const QString roomsField = QStringLiteral("roomsField");
inline const QString startDateField = QStringLiteral("startDateField");
inline const QString startTimeField = QStringLiteral("startTimeField");
inline const QString endDateField = QStringLiteral("endDateField");
inline const QString endTimeField = QStringLiteral("endTimeField");
inline const QString allDayBox = QStringLiteral("allDayBox");
inline const QString timeZoneRow = QStringLiteral("timeZoneRow");
inline const QString timeZoneChooser = QStringLiteral("timeZoneChooser");
inline const QString bodyEditor = QStringLiteral("bodyEditor"); // QTextEdit
inline const QString boldButton = QStringLiteral("boldButton");
inline const QString italicButton = QStringLiteral("italicButton");
inline const QString underlineButton = QStringLiteral("underlineButton");
inline const QString listButton = QStringLiteral("listButton");
inline const QString sendButton = QStringLiteral("sendButton");                 // shown with attendees
inline const QString saveAndCloseButton = QStringLiteral("saveAndCloseButton"); // shown without
inline const QString deleteButton = QStringLiteral("deleteButton");
inline const QString repeatButton = QStringLiteral("repeatButton");
inline const QString timeZoneButton = QStringLiteral("timeZoneButton"); // shows and hides the time-zone row
inline const QString openSeriesButton = QStringLiteral("openSeriesButton"); // shown for one day of a series
inline const QString noticeBar = QStringLiteral("noticeBar");               // why nothing can be changed

// Menu actions of the editor (QAction).
inline const QString saveAction = QStringLiteral("saveAction");   // Ctrl+S
inline const QString closeAction = QStringLiteral("closeAction"); // Ctrl+W

// Recurrence sheet.
inline const QString recurrenceSheet = QStringLiteral("recurrenceSheet");
inline const QString recurrenceKind = QStringLiteral("recurrenceKind");
inline const QString recurrenceInterval = QStringLiteral("recurrenceInterval");
inline const QString recurrenceForever = QStringLiteral("recurrenceForever");
inline const QString recurrenceByCount = QStringLiteral("recurrenceByCount");
inline const QString recurrenceCount = QStringLiteral("recurrenceCount");
inline const QString recurrenceByDate = QStringLiteral("recurrenceByDate");
inline const QString recurrenceUntil = QStringLiteral("recurrenceUntil");
inline const QString recurrenceOk = QStringLiteral("recurrenceOk");
inline const QString recurrenceCancel = QStringLiteral("recurrenceCancel");

// Questions and messages (QMessageBox).
inline const QString closeQuestion = QStringLiteral("closeQuestion");
inline const QString saveChangesButton = QStringLiteral("saveChangesButton");
inline const QString discardChangesButton = QStringLiteral("discardChangesButton");
inline const QString keepEditingButton = QStringLiteral("keepEditingButton");
inline const QString sendQuestion = QStringLiteral("sendQuestion");
inline const QString sendAnywayButton = QStringLiteral("sendAnywayButton");
inline const QString calendarMenu = QStringLiteral("calendarMenu"); // context menu
inline const QString deleteQuestion = QStringLiteral("deleteQuestion");
inline const QString deleteConfirmButton = QStringLiteral("deleteConfirmButton");
inline const QString deleteSeriesButton = QStringLiteral("deleteSeriesButton");
inline const QString cancelWithMessageButton = QStringLiteral("cancelWithMessageButton");
inline const QString errorMessage = QStringLiteral("errorMessage");

} // namespace mailhost::controls
