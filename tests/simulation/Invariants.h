// The invariants that must hold after every step, and what they need to know of a run so far.
#pragma once

#include "tests/simulation/Desktop.h"

namespace simulation {

// The faults that may have happened so far. In all conditions several editors are open beside the calendar.
enum class Conditions {
    Prompt, // a client that answers everything at once
    Slow,   // one that answers late and in another order
    Faulty  // anything
};

class Invariants {
public:
    Invariants(Desktop &desktop, Conditions conditions)
        : m_desktop(desktop)
        , m_conditions(conditions) {}
    // Call it once after each step. Returns a sentence about the first violated invariant; null if all hold.
    [[nodiscard]] QString whatIsWrong();

private:
    // The values of an appointment that calendar and meeting client share: the subject (which is always short
    // enough for the client), the start, the minutes, and whether it recurs.
    using SharedValues = QStringList;
    // The history of one appointment, by its name in the script.
    struct History {
        bool isWanted = false;  // the user has requested a meeting or an audio conference for it
        QSet<QString> subjects; // all that it has ever had
        int told = 0;           // the last step with an alert in its editor
        SharedValues inFile, atClient;
        int changed = 0; // the last step that changed those
    };
    struct OpenRequest {
        Message message;
        int step;
        double sentAt;
    };
    struct Press {
        HostOperation operation;
        QString appointment;
        int step;
    };
    static SharedValues valuesOf(const mailhost::Appointment &appointment);
    static SharedValues valuesOf(const QJsonObject &meeting);

    void noteRequests();
    void noteAlerts();
    void noteLine();
    void noteChanges();
    void noteSubject(const QString &appointment, const QString &subject);
    [[nodiscard]] QString ownersStay();
    [[nodiscard]] QString operationsRunOnce();
    [[nodiscard]] QString editorsStayOpen() const;
    [[nodiscard]] QString dialogsHaveTheirWindow() const;
    [[nodiscard]] QString editorsKeepTheirOwn() const;
    [[nodiscard]] QString nothingIsSentTwice() const;
    [[nodiscard]] QString fileIsWhole() const;
    [[nodiscard]] QString appointmentsAreRight() const;
    [[nodiscard]] QString keepsItsOwn(const QString &name, const mailhost::Appointment &appointment) const;
    [[nodiscard]] QString meetingFollows(const QString &name, const mailhost::Appointment &appointment) const;
    // The sentence about a meeting of another appointment in this text; null without one.
    [[nodiscard]] QString otherMeetingIn(const QString &text, const QString &where,
                                         const QString &appointment) const;
    // The personal meetings are for any appointment and follow none.
    [[nodiscard]] bool isPersonal(const QString &key) const;
    // Whether the user knows, or is still to hear, that the client has other values than the calendar: since
    // that step an alert was shown, or a request has not been answered.
    [[nodiscard]] bool isExplainedSince(const QString &appointment, int step) const;

    Desktop &m_desktop;
    Conditions m_conditions;
    const QByteArray m_calendarAtFirst = m_desktop.scenario().fileBytes();
    int m_step = 0;
    double m_now = 0;
    QMap<QString, History> m_histories;
    int m_toldSomewhere = 0;         // the last step with an alert that is in no editor
    QMap<QString, QString> m_owners; // names of appointments, by meeting key; personal meetings have none
    QSet<QString> m_removed;         // keys: by the user, or by another person at the client
    QList<OpenRequest> m_open;
    QMap<const mailhost::EditorWindow *, Press> m_waiting;
};

} // namespace simulation
