// The common base of the walk-through's parts: the programs, the calendar, and what a user does again and
// again.
#pragma once

#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/support/Child.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Report.h"

#include <QJsonObject>
#include <QTemporaryDir>

namespace walkthrough {

inline const QString audioItem = u"VLSchedulePACToolbarItem"_s; // of the tool-bar

struct SessionOptions {
    QString hostVersion;
    // The folder for pictures, the calendar file and the outbox.
    QString out;
    QString calendar; // is copied first; empty: the sample calendar
    // The folder for the programs' user data; empty: a temporary folder.
    QString state;
    QString kill; // see Report; may be empty
};

// The appointments that the walk-through uses, by UID.
struct Picked {
    QString plain; // without attendees
    // Two meetings with attendees; empty if the calendar has none.
    QString meeting;
    QString otherMeeting;
};

class Session : public Report {
public:
    explicit Session(const SessionOptions &options);
    ~Session(); // ends the client

    // Copies the calendar, starts host, agent and plug-in, and picks the appointments to use.
    void start();

    [[nodiscard]] mailhost::HostApplication &host() { return m_host; }
    // Whether the programs run with new user data.
    [[nodiscard]] bool isFresh() const { return m_session.state.isEmpty(); }
    [[nodiscard]] const Picked &uid() const { return m_picked; }

    // The appointment in the file on disk; an empty one if there is none.
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid, const QString &recurrenceId = {}) const;
    [[nodiscard]] mailhost::Appointment plain() const { return inFile(m_picked.plain); }
    [[nodiscard]] QJsonObject record(const QString &uid) const;
    [[nodiscard]] QString meetingKey(const QString &uid) const;
    [[nodiscard]] qsizetype mailsInOutbox() const;

    // The meeting client, a process that the user launches.
    [[nodiscard]] static bool isClientRunning();
    // Gives it a rule for its answers, or an order.
    static void tell(const QString &rule);
    static void endClient();
    // Clicks the button of an alert that offers to launch the client; reports a step with that text.
    void launchClient(const QString &what);
    // The client's data of a meeting; empty if it has none.
    [[nodiscard]] QJsonObject clientMeeting(const QString &key) const;
    [[nodiscard]] QJsonObject meetingOf(const QString &uid) const { return clientMeeting(meetingKey(uid)); }

    [[nodiscard]] mailhost::MainWindow *mainWindow() const; // nullptr after it was closed
    // Shows the appointment's day in the grid and selects it; nullptr if it is not shown.
    mailhost::CalendarGrid *reveal(const QString &uid, const QString &instanceId = {}) const;
    // The same, and needs the appointment to be shown.
    mailhost::CalendarGrid *select(const QString &uid, const QString &instanceId = {});
    // Selects the appointment and presses the key.
    void pressOn(const QString &uid, QKeyCombination key, const QString &instanceId = {});
    [[nodiscard]] bool shows(const QString &uid) const; // whether the grid shows the file's values

    [[nodiscard]] static mailhost::EditorWindow *editor(); // the last one opened, or nullptr
    template<typename T>
    [[nodiscard]] static T *control(const QString &name) {
        return editor() ? editor()->findChild<T *>(name) : nullptr;
    }
    [[nodiscard]] static QAbstractButton *stripButton(const QString &key);
    [[nodiscard]] static bool waitForStrip(const QString &key);
    [[nodiscard]] static QWidget *strip();

    bool open(const QString &uid) const;
    // Opens a new appointment with that subject and, if given, an attendee.
    static bool openNew(const QString &subject, const QString &attendee = {});
    // Types into the field, over what it proposes.
    static bool typeInto(const QString &field, const QString &text);
    // Saves with the keyboard and returns whether the editor has no unsaved changes.
    [[nodiscard]] static bool save();
    // Each returns whether the editor closes.
    [[nodiscard]] static bool send();
    [[nodiscard]] static bool closeEditor();
    [[nodiscard]] static bool discardEditor(); // drops the input
    // Clicks the strip's button and waits for the settings sheet.
    void askForMeeting();
    // Confirms the sheet. Returns whether the strip then shows the meeting and the appointment contains it.
    [[nodiscard]] static bool confirmSheet();
    // Adds a meeting in the open editor, saves (with attendees: sends) and closes it.
    bool giveMeeting(const QString &uid) const;
    // Waits for an alert, takes its picture and dismisses it; returns whether there was one.
    bool isAlerted(const QString &pictureName);

private:
    [[nodiscard]] bool copyCalendar() const;
    void pickAppointments();

    SessionOptions m_session;
    QTemporaryDir m_folders;
    QString m_clientData;
    mailhost::HostApplication m_host;
    Picked m_picked;
    standin::Child m_agent; // a desktop starts it at log-in
};

// Whether both look the same in the grid.
[[nodiscard]] bool looksLike(const mailhost::Appointment &one, const mailhost::Appointment &other);

} // namespace walkthrough
