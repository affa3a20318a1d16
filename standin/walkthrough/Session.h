// What every part of the walk shares: the programs, the calendar, and how a person gets at the controls.
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
inline const QString ownWords = u"Bring the figures."_s;
inline const QString password = u"Tulip7"_s; // of the first meeting

// A text of the plug-in in the language of the walk, without the mark of its mnemonic.
[[nodiscard]] QString words(const QString &key);
[[nodiscard]] inline QString addButton() {
    return words(u"AddVelaButton"_s);
}
[[nodiscard]] inline QString audioButton() {
    return words(u"AddPACButton"_s);
}
[[nodiscard]] inline QString removeButton() {
    return words(u"CancelVelaButton"_s);
}
[[nodiscard]] inline QString launchButton() {
    return words(u"Button_LaunchClient"_s);
}
[[nodiscard]] inline QString settingsButton() {
    return words(u"ChangeSettingButton"_s);
}
[[nodiscard]] inline QString continueButton() {
    return words(u"Button_Continue"_s);
}
[[nodiscard]] inline QString removeInAlertButton() {
    return words(u"Button_OKGot"_s);
}

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

    // Copies the calendar, starts host, agent and plug-in, and picks the appointments to walk with.
    bool start();

    [[nodiscard]] Report &report() const { return *m_report; }
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

    bool open(const QString &uid);
    // A new appointment with that subject, and with somebody invited when an address is given.
    bool openNew(const QString &subject, const QString &attendee = {}) const;
    // The strip alone, as it shows now.
    [[nodiscard]] QWidget *strip() const;
    [[nodiscard]] bool closeEditor() const;
    [[nodiscard]] bool discardEditor() const; // with what was typed
    [[nodiscard]] bool saved() const;
    // From the click on the strip's button to the settings sheet.
    bool askForMeeting();
    // Shown by the strip and written into the appointment.
    [[nodiscard]] bool isAttached() const;
    // The whole way: opened, added, saved (or sent, when people are invited), closed.
    bool giveMeeting(const QString &uid);
    // The same in the editor that is open.
    bool giveMeetingToOpen(const QString &uid);
    // Presses the keys in the main window.
    bool pressInMain(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    [[nodiscard]] bool shows(const QString &uid) const; // the grid, what the file has of it

private:
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
