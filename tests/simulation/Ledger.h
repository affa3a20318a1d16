// The history of each appointment's meeting: its appointment, the unanswered requests, the alerts that the
// user has seen, and the host operation that still waits.
#pragma once

#include "tests/simulation/Desktop.h"

namespace simulation {

// The values of an appointment that calendar and meeting client share.
struct SharedValues {
    QString subject; // as far as the client keeps it
    qint64 start = 0;
    qint64 minutes = 0;
    bool recurring = false;
    bool operator==(const SharedValues &) const = default;
};
[[nodiscard]] SharedValues sharedValuesOf(const mailhost::Appointment &appointment);
[[nodiscard]] SharedValues sharedValuesOf(const QJsonObject &meeting);

class Ledger {
public:
    explicit Ledger(Desktop &desktop)
        : m_desktop(desktop) {}
    // Call it once after each step. Returns a sentence about the first fault, or null.
    [[nodiscard]] QString note();

    // The name of the appointment whose meeting that is or was. Null when nobody knows yet, and for the
    // personal meetings, which are for any appointment and follow none.
    [[nodiscard]] QString ownerOf(const QString &key) const { return m_owners.value(key); }
    [[nodiscard]] bool isPersonal(const QString &key) const;
    // Whether the user, or another person at the client, has removed the meeting.
    [[nodiscard]] bool wasRemoved(const QString &key) const { return m_removed.contains(key); }
    // Whether the user has ever requested a meeting or an audio conference for the appointment.
    [[nodiscard]] bool wasWanted(const QString &appointment) const { return m_wanted.contains(appointment); }
    // Whether the user knows, or is still to hear, that the client has other values than the calendar: since
    // either of them changed last, an alert was shown, or a request has not been answered.
    [[nodiscard]] bool isExplained(const QString &appointment) const;

private:
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
    void noteLine();
    void noteRequests();
    void noteAlerts();
    void noteChanges();
    void noteSubject(const QString &appointment, const QString &subject);
    QString noteOwners();
    QString noteOperations();
    [[nodiscard]] bool isExplainedSince(const QString &appointment, int step) const;

    Desktop &m_desktop;
    int m_step = 0;
    double m_now = 0;
    QMap<QString, QString> m_owners;         // by meeting key
    QSet<QString> m_removed;                 // keys
    QSet<QString> m_wanted;                  // names of appointments
    QMap<QString, QSet<QString>> m_subjects; // that an appointment has ever had, by name
    QList<OpenRequest> m_open;
    QMap<QString, int> m_told; // step, by name; with a null name: wherever the user was
    QMap<QString, std::pair<SharedValues, SharedValues>> m_values; // in the file and at the client, by name
    QMap<QString, int> m_changed;                                  // step, by name
    QMap<const mailhost::EditorWindow *, Press> m_waiting;
};

} // namespace simulation
