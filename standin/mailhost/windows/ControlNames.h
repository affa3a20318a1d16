// The object names of controls, by which tests and the walk-through find them with findChild().
#pragma once

#include "platform/Literals.h"

#include <QString>

namespace mailhost::controls {

// Main window.
inline const QString mainWindow = u"mainWindow"_s;
inline const QString newAppointmentButton = u"NewAppointment"_s; // of the tool-bar

// Menu actions of the main window (QAction).
inline const QString openAction = u"openAction"_s;
inline const QString deleteAction = u"deleteAction"_s;
inline const QString cancelMeetingAction = u"cancelMeetingAction"_s;
inline const QString renameAction = u"renameAction"_s;
inline const QString earlierAction = u"earlierAction"_s;
inline const QString laterAction = u"laterAction"_s;
inline const QString longerAction = u"longerAction"_s;
inline const QString shorterAction = u"shorterAction"_s;
inline const QString startEarlierAction = u"startEarlierAction"_s;
inline const QString startLaterAction = u"startLaterAction"_s;
inline const QString dayEarlierAction = u"dayEarlierAction"_s;
inline const QString dayLaterAction = u"dayLaterAction"_s;
inline const QString joinAction = u"joinAction"_s; // Ctrl+J; in the editor too
inline const QString openSeriesAction = u"openSeriesAction"_s;
inline const QString undoAction = u"undoAction"_s;
inline const QString redoAction = u"redoAction"_s;
inline const QString newWindowAction = u"newWindowAction"_s;
inline const QString newAppointmentAction = u"newAppointmentAction"_s;
inline const QString newMeetingAction = u"newMeetingAction"_s;
inline const QString todayAction = u"todayAction"_s;
inline const QString previousAction = u"previousAction"_s;
inline const QString nextAction = u"nextAction"_s;
inline const QString dayViewAction = u"dayViewAction"_s;
inline const QString weekViewAction = u"weekViewAction"_s;
inline const QString customizeToolBarAction = u"customizeToolBarAction"_s;

// Editor.
inline const QString fromChooser = u"fromChooser"_s;
inline const QString subjectField = u"subjectField"_s;
inline const QString locationField = u"locationField"_s;
inline const QString attendeesField = u"attendeesField"_s;
inline const QString roomsField = u"roomsField"_s;
inline const QString startDateField = u"startDateField"_s;
inline const QString startTimeField = u"startTimeField"_s;
inline const QString endDateField = u"endDateField"_s;
inline const QString allDayBox = u"allDayBox"_s;
inline const QString timeZoneRow = u"timeZoneRow"_s;
inline const QString timeZoneChooser = u"timeZoneChooser"_s;
inline const QString bodyEditor = u"bodyEditor"_s;                 // QTextEdit
inline const QString sendButton = u"sendButton"_s;                 // shown with attendees
inline const QString saveAndCloseButton = u"saveAndCloseButton"_s; // shown without
inline const QString deleteButton = u"deleteButton"_s;
inline const QString repeatButton = u"repeatButton"_s;
inline const QString timeZoneButton = u"timeZoneButton"_s;     // shows and hides the time-zone row
inline const QString openSeriesButton = u"openSeriesButton"_s; // shown for one day of a series
inline const QString noticeBar = u"noticeBar"_s;               // the reason why the appointment is read-only

// Menu action of the editor (QAction).
inline const QString saveAction = u"saveAction"_s; // Ctrl+S

// Recurrence sheet.
inline const QString recurrenceKind = u"recurrenceKind"_s;
inline const QString recurrenceOk = u"recurrenceOk"_s;

// Questions and messages (QMessageBox).
inline const QString saveChangesButton = u"saveChangesButton"_s;
inline const QString discardChangesButton = u"discardChangesButton"_s;
inline const QString keepEditingButton = u"keepEditingButton"_s;
inline const QString sendAnywayButton = u"sendAnywayButton"_s;
inline const QString deleteConfirmButton = u"deleteConfirmButton"_s;
inline const QString deleteSeriesButton = u"deleteSeriesButton"_s;
inline const QString cancelWithMessageButton = u"cancelWithMessageButton"_s;
inline const QString question = u"question"_s; // every question; alerts of a plug-in have no name
inline const QString errorMessage = u"errorMessage"_s;

} // namespace mailhost::controls
