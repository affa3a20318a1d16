// A whole desktop: a user at the host's windows, a meeting client that can be made to fail, and a disk that
// may be full. Each step is one line of words; Script.h lists them.
#pragma once

#include "tests/scenarios/Scenario.h"
#include "tests/simulation/HostWatch.h"
#include "tests/simulation/Messages.h"

#include <QPointer>
#include <QSet>
#include <QStringList>

namespace simulation {

// An open editor, and the words that the user has written into it and not taken out again.
struct Editor {
    QPointer<mailhost::EditorWindow> window;
    QString appointment; // its name in the script
    QStringList body;
    QStringList location;
    bool hasRemovedMeeting = false; // which empties the location
};
// The texts in its fields.
[[nodiscard]] QString bodyOf(const Editor &editor);
[[nodiscard]] QString locationOf(const Editor &editor);

// The result of one step.
struct Step {
    QString line;
    std::optional<HostOperation> pressed; // the host operation that the user asked for
    const mailhost::EditorWindow *pressedIn = nullptr;
    QList<HostRun> runs; // the host operations that ran
    QList<Message> messages;
    QSet<const mailhost::EditorWindow *> openBefore;
    // Of those: what nobody has changed, so that the host saves it without writing anything.
    QSet<const mailhost::EditorWindow *> nothingToStore;
    bool userCloses = false; // the user has closed or deleted something
    bool diskFull = false;   // nothing could be stored
    [[nodiscard]] bool hasStored(const mailhost::EditorWindow *editor) const;
    [[nodiscard]] int timesSent(Request request) const;
    [[nodiscard]] bool hasAnswers() const;
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
    void afterStep();
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

// The action of a word; `words` are its arguments. Returns false and does nothing if it is not possible now.
struct Command {
    const char *word;
    int arguments; // at least
    bool (*run)(Desktop &desktop, const QStringList &words);
};
[[nodiscard]] QList<Command> usersCommands();
[[nodiscard]] QList<Command> clientsCommands();

// The key of the stored meeting; an empty text without one.
[[nodiscard]] QString keyInRecord(const mailhost::Appointment &appointment);
// Whether the user can use the widget: it is visible and no dialog blocks it.
[[nodiscard]] bool isReachable(const QWidget *widget);
// The window of a dialog or sheet, or nullptr.
[[nodiscard]] QWidget *windowBelow(const QWidget *window);

} // namespace simulation
