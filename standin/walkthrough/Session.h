// The common base of the walk-through's parts: the programs, the calendar, and access to the controls.
#pragma once

#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/walkthrough/Programs.h"
#include "standin/walkthrough/Report.h"

#include <QTemporaryDir>
#include <memory>

namespace walkthrough {

// The codes of requests and answers.
inline constexpr quint32 startAction = 2;
inline constexpr quint32 meetingAction = 3;
inline constexpr quint32 updateAnswer = 2;
inline constexpr quint32 readAnswer = 4;
inline const QString schedulePrefix = u"1;"_s;
inline const QString updatePrefix = u"2;"_s;
inline const QString deletePrefix = u"3;"_s;
inline const QString audioItem = u"VLSchedulePACToolbarItem"_s; // of the tool-bar

// A text of the plug-in in the language of this run, without its mnemonic mark.
[[nodiscard]] QString pluginText(const QString &key);
struct ButtonText {
    static QString add() { return pluginText(u"AddVelaButton"_s); }
    static QString audio() { return pluginText(u"AddPACButton"_s); }
    static QString remove() { return pluginText(u"CancelVelaButton"_s); }
    static QString launch() { return pluginText(u"Button_LaunchClient"_s); }
    static QString settings() { return pluginText(u"ChangeSettingButton"_s); }
    static QString confirm() { return pluginText(u"Button_Continue"_s); }
    static QString removeInAlert() { return pluginText(u"Button_OKGot"_s); }
};

struct SessionOptions {
    QString hostVersion;
    // The folder for pictures, the calendar file and the outbox.
    QString out;
    QString calendar; // is copied first; empty: the sample calendar
    // The folder for the programs' user data; empty: a temporary folder.
    QString state;
    std::optional<ProcessKill> kill;
};

class Session {
public:
    explicit Session(const SessionOptions &options);

    // Copies the calendar, starts host, agent and plug-in, and picks the appointments to use.
    bool start();

    [[nodiscard]] Report &report() const { return *m_report; }
    bool step(bool ok, const QString &what) { return m_report->step(ok, what); }
    void picture(QWidget *widget, const QString &name) const { m_report->picture(widget, name); }
    // See Report::sentSinceMark() and answeredSinceMark().
    [[nodiscard]] int sent(quint32 actionId, const QString &prefix = {}) const {
        return m_report->sentSinceMark(actionId, prefix);
    }
    [[nodiscard]] int answered(quint32 actionId) const { return m_report->answeredSinceMark(actionId); }
    [[nodiscard]] mailhost::HostApplication &host() const { return *m_host; }
    [[nodiscard]] RunningClient &client() const { return *m_client; }
    // Whether the programs run with new user data.
    [[nodiscard]] bool isFresh() const { return m_session.state.isEmpty(); }
    [[nodiscard]] const QString &plainUid() const { return m_uid; } // without attendees
    // Two meetings with attendees; empty if the calendar has none.
    [[nodiscard]] const QString &meetingUid() const { return m_meetingUid; }
    [[nodiscard]] const QString &otherMeetingUid() const { return m_otherMeetingUid; }

    // The appointment in the file on disk.
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid, const QString &recurrenceId = {}) const;
    [[nodiscard]] bool isInFile(const QString &uid) const { return !inFile(uid).uid.isEmpty(); }
    [[nodiscard]] QJsonObject record(const QString &uid) const;
    [[nodiscard]] QString meetingKey(const QString &uid) const;
    [[nodiscard]] QStringList sentMessages() const; // files in the outbox
    // The client's data of the meeting; empty if it has none.
    [[nodiscard]] QJsonObject meetingOf(const QString &uid) const;

    [[nodiscard]] QWidget *mainWindow() const;
    // Shows that day in the grid and selects the appointment; nullptr if it is not shown.
    mailhost::CalendarGrid *reveal(const QString &uid, const QString &instanceId = {}) const;
    [[nodiscard]] QWidget *editor() const; // the last one opened
    [[nodiscard]] mailhost::EditorViewController *editorController() const;
    template<typename T>
    [[nodiscard]] T *control(const QString &name) const {
        return editor() ? editor()->findChild<T *>(name) : nullptr;
    }
    [[nodiscard]] QWidget *stripButton(const QString &text) const;
    [[nodiscard]] bool waitForStrip(const QString &text) const;

    bool open(const QString &uid);
    // Opens a new appointment with that subject and, if given, an attendee.
    bool openNew(const QString &subject, const QString &attendee = {}) const;
    // The strip of the open editor.
    [[nodiscard]] QWidget *strip() const;
    // Saves with the keyboard and returns whether the editor has no unsaved changes.
    [[nodiscard]] bool save() const;
    [[nodiscard]] bool isSaved() const;
    // Sends the meeting and returns whether the editor closes.
    [[nodiscard]] bool send() const;
    [[nodiscard]] bool closeEditor() const;
    [[nodiscard]] bool discardEditor() const; // drops the input
    // Clicks the button of an alert that offers to launch the client; reports a step with that text.
    bool launchFromAlert(const QString &what);
    // Clicks the strip's button and waits for the settings sheet.
    bool askForMeeting();
    // Confirms the sheet. Returns whether the strip then shows the meeting and the appointment contains it.
    [[nodiscard]] bool confirmSheet() const;
    // Opens the appointment, adds a meeting, saves (with attendees: sends) and closes it.
    bool giveMeeting(const QString &uid);
    // Does the same in the open editor.
    bool giveMeetingToOpen(const QString &uid);
    // Presses the keys in the main window.
    bool pressInMain(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    [[nodiscard]] bool shows(const QString &uid) const; // whether the grid shows the file's values

private:
    [[nodiscard]] bool waitUntilClosed() const;
    [[nodiscard]] bool copyCalendar() const;
    [[nodiscard]] QDate dayOf(const QString &uid, const QString &instanceId) const;
    bool pickAppointments();
    QString makeAppointment();

    [[nodiscard]] QString stateFolder(const QString &name) const;

    SessionOptions m_session;
    QTemporaryDir m_folders;
    QString m_out;
    QString m_calendarPath;
    QString m_source;
    mailhost::HostOptions m_options;
    std::unique_ptr<mailhost::HostApplication> m_host;
    std::unique_ptr<Report> m_report;
    std::unique_ptr<RunningClient> m_client;
    AgentProcess m_agent;
    QString m_uid;
    QString m_meetingUid;
    QString m_otherMeetingUid;
};

} // namespace walkthrough
