// A whole desktop: a user at the host's windows, a meeting client with its faults, and a disk that may be
// full. Each step is one line of words (Script.h lists them).
#pragma once

#include "tests/scenarios/Scenario.h"
#include "tests/simulation/HostWatch.h"

#include <QPointer>
#include <QSet>
#include <QStringList>

class QAbstractButton;

namespace simulation {

// An open editor, and what the user has written into it and not taken out again.
struct Editor {
    QPointer<mailhost::EditorWindow> window;
    QString appointment; // name, see Desktop::uidOf()
    QString windowID;
    QStringList body;  // words
    QStringList place; // words
    // Its meeting was deleted: the next storing empties the place, also of what was written there since.
    bool emptiedByDelete = false;
};

// What one step led to.
struct Happened {
    QString line;
    std::optional<HostOperation> pressed; // the host operation that the user asked for
    mailhost::EditorWindow *pressedIn = nullptr;
    QList<HostRun> runs;                                     // the host operations that ran
    QList<platform::MemoryNotificationBus::Posted> posted;   // all of them, in order
    QList<platform::MemoryNotificationBus::Posted> requests; // of those
    QList<platform::MemoryNotificationBus::Posted> answers;  // of those, also what nobody asked for
    QSet<const mailhost::EditorWindow *> openBefore;
    // Of those: unchanged days of a series, which the host saves without storing anything.
    QSet<const mailhost::EditorWindow *> nothingToStore;
    bool userCloses = false; // the step may close editors by itself
    bool diskFull = false;   // nothing could be stored
    bool keysLost = false;   // what was typed did not reach its field
    [[nodiscard]] bool hasStored(const mailhost::EditorWindow *editor) const;
};

class Desktop {
public:
    explicit Desktop(const QString &hostVersion);
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    // Does what the line says. False when it cannot be done now (or says nothing known); nothing has happened
    // then.
    bool perform(const QString &line);

    [[nodiscard]] const Happened &last() const { return m_last; }
    [[nodiscard]] scenarios::Scenario &scenario() { return m_scenario; }
    [[nodiscard]] const QList<Editor> &editors() const { return m_editors; }
    // The words that are in the file, because they were there when it was saved last.
    [[nodiscard]] const QMap<QString, QStringList> &savedBodies() const { return m_savedBodies; }
    // The appointments that the user has ever wanted a meeting or an audio conference for.
    [[nodiscard]] const QSet<QString> &wanted() const { return m_wanted; }
    [[nodiscard]] const QSet<QString> &closedWindowIDs() const { return m_closedWindowIDs; }
    [[nodiscard]] double secondsSinceLastRequest() const;
    [[nodiscard]] QString uidOf(const QString &appointment) const;
    [[nodiscard]] QStringList appointments() const;
    [[nodiscard]] const QStringList &warnings() const;
    // The calendar as it is on disk now, by name; no value when it cannot be read.
    [[nodiscard]] const std::optional<QMap<QString, mailhost::Appointment>> &onDisk() const {
        return m_onDisk;
    }
    [[nodiscard]] const QByteArray &bytesOnDisk() const { return m_bytesOnDisk; }
    [[nodiscard]] const QByteArray &calendarAtFirst() const { return m_calendarAtFirst; }

    inline static const QString untouched = u"untouched@scenario"_s; // nobody ever changes it

private:
    using Words = QStringList;
    struct Verb {
        const char *word;
        int arguments;
        bool (Desktop::*run)(const Words &words);
    };
    static QList<Verb> usersVerbs();
    static QList<Verb> clientsVerbs();

    // The user.
    bool open(const Words &words);
    bool openNew(const Words &words);
    bool front(const Words &words);
    bool clickStrip(const Words &words);
    bool audio(const Words &words);
    bool sheet(const Words &words);
    bool subject(const Words &words);
    bool place(const Words &words);
    bool writeBody(const Words &words);
    bool later(const Words &words);
    bool from(const Words &words);
    bool save(const Words &words);
    bool saveAndClose(const Words &words);
    bool send(const Words &words);
    bool close(const Words &words);
    bool remove(const Words &words);
    bool answerQuestion(const Words &words);
    bool alert(const Words &words);
    bool move(const Words &words);
    bool resize(const Words &words);
    bool rename(const Words &words);
    bool menu(const Words &words);
    bool start(const Words &words);
    bool wait(const Words &words);

    // The client.
    bool rule(const Words &words);
    bool disk(const Words &words);
    bool clientRuns(const Words &words);
    bool clientSignsIn(const Words &words);
    bool clientForgets(const Words &words);
    bool clientObeys(const Words &words);
    bool forge(const Words &words);
    bool forgeMeeting(const Words &words);
    void post(const QString &actionId, const QString &content);

    [[nodiscard]] mailhost::EditorWindow *editorOf(const QString &appointment) const;
    [[nodiscard]] Editor *entryOf(const QString &appointment);
    [[nodiscard]] mailhost::MainWindow *mainWindow() const;
    void type(QWidget *field, const QString &keys);
    bool pressIn(const QString &appointment, const QString &name);
    bool clickIn(mailhost::EditorWindow *editor, const QString &button);
    bool selectOnGrid(const QString &appointment);
    void press(HostOperation operation, mailhost::EditorWindow *editor);

    void beforeStep(const QString &line);
    void afterStep();
    void noteEditors();
    void noteSaved();
    void noteEmptiedPlaces();
    void noteTakenBack();
    void readDisk();

    scenarios::Scenario m_scenario;
    Happened m_last;
    QList<Editor> m_editors;
    QMap<QString, QString> m_uids; // by name
    QMap<QString, QStringList> m_savedBodies;
    QSet<QString> m_wanted; // names
    QSet<QString> m_closedWindowIDs;
    QByteArray m_calendarAtFirst;
    QByteArray m_bytesOnDisk;
    qsizetype m_namesRead = 0;
    std::optional<QMap<QString, mailhost::Appointment>> m_onDisk;
    double m_lastRequest = 0;
    bool m_diskFull = false;
    int m_newOnes = 0;
};

// Whether the user can get at it: it is shown and no dialog stands before it.
[[nodiscard]] bool isReachable(const QWidget *widget);
// The window that a dialog or sheet belongs to; nullptr when there is none.
[[nodiscard]] QWidget *windowBelow(const QWidget *window);
[[nodiscard]] QString stripTitle(const QString &key);

} // namespace simulation
