// A whole desktop: a user at the host's windows, a meeting client that can be made to fail, and a disk that
// may be full. Each step is one line of words; Script.h lists them.
#pragma once

#include "standin/meetingclient/MeetingService.h"
#include "tests/scenarios/Scenario.h"

namespace simulation {

using meetingclient::Operation;

// An open editor, and the words that the user has written into it and not taken out again.
struct Editor {
    QPointer<mailhost::EditorWindow> window;
    QString appointment; // its name in the script
    QStringList body = {};
    QStringList location = {};
    bool hasRemovedMeeting = false; // which empties the location
};
// The texts in its fields.
[[nodiscard]] QString bodyOf(const Editor &editor);
[[nodiscard]] QString locationOf(const Editor &editor);

// A message between plug-in and meeting client, as far as a run has to interpret it.
struct Message {
    bool isAnswer = false;
    // What is requested, answered or refused; no value if the message is damaged or the user is told nothing
    // of such an answer.
    std::optional<Operation> operation;
    QString meeting; // its key; a null text when none is named
};

// One of the host's own editor operations, whoever asked for it: the user, or the plug-in that had held it.
enum class HostOperation { Save, SaveAndClose, Send };
struct HostRun {
    HostOperation operation;
    const mailhost::EditorWindow *editor = nullptr; // may have gone since, only to be compared
    bool operator==(const HostRun &) const = default;
};

// The result of one step.
struct Step {
    QString line;
    std::optional<HostRun> pressed; // the host operation that the user asked for
    QList<HostRun> runs;            // the host operations that ran, in order
    QList<Message> messages;
    // The editors that were open before, and whether they had anything to store: without, the host saves
    // them without writing.
    QMap<const mailhost::EditorWindow *, bool> wasDirty;
    bool userCloses = false; // the user has closed or deleted something
    bool diskFull = false;   // nothing could be stored
    [[nodiscard]] int timesSent(Operation operation) const;
};

// The appointments of a calendar, by name.
using Appointments = QMap<QString, mailhost::Appointment>;

class Desktop {
public:
    explicit Desktop(const QString &hostVersion);

    // Carries out the line. Returns false and does nothing if the line is not possible now or is unknown.
    bool perform(const QString &line);

    [[nodiscard]] Step &step() { return m_step; }
    [[nodiscard]] const Step &step() const { return m_step; }
    [[nodiscard]] scenarios::Scenario &scenario() { return m_scenario; }
    [[nodiscard]] const QList<Editor> &editors() const { return m_editors; }
    // The editor of that appointment; nullptr if it is not open.
    [[nodiscard]] Editor *editorOf(const QString &appointment);
    // Null for a name that no appointment has had.
    [[nodiscard]] QString uidOf(const QString &appointment) const { return m_uids.value(appointment); }
    [[nodiscard]] QStringList appointments() const { return m_uids.keys(); }
    // The words in the file: those in the body when it was stored last.
    [[nodiscard]] const QMap<QString, QStringList> &savedBodies() const { return m_savedBodies; }
    // The calendar as it is on disk now; no value when it cannot be read.
    [[nodiscard]] const std::optional<Appointments> &onDisk() const { return m_onDisk; }
    [[nodiscard]] QString keyInFile(const QString &appointment) const;
    void setDiskFull(bool full) { m_diskFull = full; }

    inline static const QString untouched = u"untouched@scenario"_s; // nobody ever changes it

private:
    void noteStored();
    void noteEditors();
    void readDisk();

    scenarios::Scenario m_scenario;
    Step m_step;
    QList<Editor> m_editors;
    QMap<QString, QString> m_uids; // by name
    QMap<QString, QStringList> m_savedBodies;
    std::optional<Appointments> m_onDisk;
    bool m_diskFull = false;
    int m_newOnes = 0;
};

// What the line's first word stands for. Returns false and does nothing if it is not possible now.
bool carryOut(Desktop &desktop, const QString &line);
// Whether the user can use the widget: it is visible and no dialog blocks it.
[[nodiscard]] bool isReachable(const QWidget *widget);
// Whether it is an alert of the plug-in. The host's messages have names, or a default button that has one.
[[nodiscard]] bool isAlert(const QMessageBox *box);

} // namespace simulation
