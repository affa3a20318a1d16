// What the parts of the walk-through share: the programs, the calendar, and how a user gets at the controls.
#pragma once

#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/walkthrough/Programs.h"
#include "standin/walkthrough/Report.h"

#include <QTemporaryDir>
#include <memory>

namespace walkthrough {

// What the plug-in sends and what the client answers with.
inline constexpr quint32 startAction = 2;
inline constexpr quint32 meetingAction = 3;
inline constexpr quint32 updateAnswer = 2;
inline constexpr quint32 readAnswer = 4;
inline const QString schedulePrefix = u"1;"_s;
inline const QString updatePrefix = u"2;"_s;
inline const QString deletePrefix = u"3;"_s;
inline const QString audioItem = u"VLSchedulePACToolbarItem"_s; // of the tool-bar

// A text of the plug-in in the language of this run, without the mark of its mnemonic.
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
    // Pictures, the calendar file and the outbox go below it.
    QString out;
    QString calendar; // is copied first; empty: the sample calendar
    // Where the programs keep what they keep for their user; empty: in a folder that is thrown away.
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
    // Nobody has used these programs before.
    [[nodiscard]] bool isFresh() const { return m_session.state.isEmpty(); }
    [[nodiscard]] const QString &plainUid() const { return m_uid; } // nobody is invited
    // Two meetings with attendees; empty where the calendar has none.
    [[nodiscard]] const QString &meetingUid() const { return m_meetingUid; }
    [[nodiscard]] const QString &otherMeetingUid() const { return m_otherMeetingUid; }

    // From the file on disk.
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid, const QString &recurrenceId = {}) const;
    [[nodiscard]] bool isInFile(const QString &uid) const { return !inFile(uid).uid.isEmpty(); }
    [[nodiscard]] QJsonObject record(const QString &uid) const;
    [[nodiscard]] QString meetingKey(const QString &uid) const;
    [[nodiscard]] QStringList sentMessages() const; // files in the outbox
    // As the client has it; empty when it has none.
    [[nodiscard]] QJsonObject meetingOf(const QString &uid) const;

    [[nodiscard]] QWidget *mainWindow() const;
    // The grid with that day in it and the appointment selected; nullptr when it is not shown.
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
    // A new appointment with that subject, and with somebody invited when an address is given.
    bool openNew(const QString &subject, const QString &attendee = {}) const;
    // The strip alone, as it shows now.
    [[nodiscard]] QWidget *strip() const;
    // By keys, and answers whether the editor has nothing unsaved then.
    [[nodiscard]] bool save() const;
    [[nodiscard]] bool isSaved() const;
    // Sends the meeting, and answers whether the editor closes.
    [[nodiscard]] bool send() const;
    [[nodiscard]] bool closeEditor() const;
    [[nodiscard]] bool discardEditor() const; // with what was typed
    // Clicks the button of an alert that offers to launch the client; a step of that text.
    bool launchFromAlert(const QString &what);
    // From the click on the strip's button to the settings sheet.
    bool askForMeeting();
    // Answers whether the meeting is then shown by the strip and written into the appointment.
    [[nodiscard]] bool confirmSheet() const;
    // The whole way: opened, added, saved (or sent, when people are invited), closed.
    bool giveMeeting(const QString &uid);
    // The same in the editor that is open.
    bool giveMeetingToOpen(const QString &uid);
    // Presses the keys in the main window.
    bool pressInMain(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    [[nodiscard]] bool shows(const QString &uid) const; // the grid, what the file has of it

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
