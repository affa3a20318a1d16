// A whole desktop and the people around it: a person at the host's windows, and a meeting client with its
// moods. Each step is one line of words (Script.h lists them).
#pragma once

#include "tests/faults/HostWatch.h"
#include "tests/roads/Desk.h"

#include <QPointer>
#include <QSet>
#include <QStringList>

class QAbstractButton;

namespace faults {

// What the person has written into an open editor and not taken out again.
struct Writing {
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
    struct Press {
        HostOperation operation;
        mailhost::EditorWindow *editor; // only to be compared
    };
    QString line;
    QList<Press> presses; // the host operations that the person asked for
    QList<HostRun> runs;  // the host operations that ran
    QList<platform::MemoryNotificationBus::Posted> requests;
    QList<platform::MemoryNotificationBus::Posted> answers; // also those that nobody asked for
    QSet<const mailhost::EditorWindow *> openBefore;
    bool personCloses = false; // the step may close editors by itself
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
    [[nodiscard]] roads::Desk &desk() { return m_desk; }
    [[nodiscard]] const QList<Writing> &writings() const { return m_writings; }
    // The words that are in the file, because they were there when it was saved last.
    [[nodiscard]] const QMap<QString, QStringList> &savedBodies() const { return m_savedBodies; }
    // Appointments that were taken out of the calendar at some time; an editor that is open may put them
    // back.
    [[nodiscard]] const QSet<QString> &deletedOnce() const { return m_deletedOnce; }
    // The appointments that the person has ever wanted a meeting or an audio conference for.
    [[nodiscard]] const QSet<QString> &wanted() const { return m_wanted; }
    // Those whose meeting the person has removed; whether that was saved is another question.
    [[nodiscard]] const QSet<QString> &removed() const { return m_removed; }
    // The appointments that were in an editor while something else was in one or was changed on the calendar:
    // the workflow has one memory for all of them, so each may have taken another's meeting for its own.
    [[nodiscard]] const QSet<QString> &mixed() const { return m_mixed; }
    // Of every meeting that the client has ever had, or said that it has.
    [[nodiscard]] const QSet<QString> &keysEver() const { return m_keysEver; }
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
    // How often the person has asked for the operation on that editor, and how often it ran.
    [[nodiscard]] int timesPressed(HostOperation operation, const mailhost::EditorWindow *editor) const;
    [[nodiscard]] int timesRun(HostOperation operation, const mailhost::EditorWindow *editor) const;
    [[nodiscard]] const QByteArray &calendarAtFirst() const { return m_calendarAtFirst; }

    inline static const QString untouched = QStringLiteral("untouched@desk"); // nobody ever changes it

private:
    using Words = QStringList;
    struct Verb {
        const char *word;
        int arguments;
        bool (Desktop::*run)(const Words &words);
    };
    static QList<Verb> personsVerbs();
    static QList<Verb> clientsVerbs();

    // The person.
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
    bool clientRuns(const Words &words);
    bool clientSignsIn(const Words &words);
    bool clientForgets(const Words &words);
    bool clientObeys(const Words &words);
    bool forge(const Words &words);
    bool forgeMeeting(const Words &words);
    void post(const QString &actionId, const QString &content);

    [[nodiscard]] mailhost::EditorWindow *editorOf(const QString &appointment) const;
    [[nodiscard]] Writing *writingOf(const QString &appointment);
    [[nodiscard]] mailhost::MainWindow *mainWindow() const;
    bool clickIn(mailhost::EditorWindow *editor, const QString &button);
    bool selectOnGrid(const QString &appointment);
    void press(HostOperation operation, mailhost::EditorWindow *editor);

    void beforeStep(const QString &line);
    void afterStep();
    void noteWritings();
    void noteSaved();
    void noteEmptiedPlaces();
    void noteTakenBack();
    void noteMixed();
    void readDisk();
    void noteKeys();

    roads::Desk m_desk;
    Happened m_last;
    QList<Writing> m_writings;
    QMap<QString, QString> m_uids; // by name
    QMap<QString, QStringList> m_savedBodies;
    QSet<QString> m_deletedOnce; // names
    QSet<QString> m_wanted;      // names
    QSet<QString> m_removed;     // names
    QSet<QString> m_mixed;       // names
    QSet<QString> m_keysEver;
    QSet<QString> m_closedWindowIDs;
    QList<Happened::Press> m_pressedEver;
    QList<HostRun> m_ranEver;
    QByteArray m_calendarAtFirst;
    QByteArray m_bytesOnDisk;
    qsizetype m_namesRead = 0;
    std::optional<QMap<QString, mailhost::Appointment>> m_onDisk;
    double m_lastRequest = 0;
    int m_newOnes = 0;
};

// Whether the person can get at it: it is shown and no dialog stands before it.
[[nodiscard]] bool isReachable(const QWidget *widget);
// The window that a dialog or sheet belongs to; nullptr when there is none.
[[nodiscard]] QWidget *windowBelow(const QWidget *window);
[[nodiscard]] QString stripTitle(const QString &key);

} // namespace faults
