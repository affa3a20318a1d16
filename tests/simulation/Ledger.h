// What has become of each appointment's meeting so far: whose it is, what the client has not truly answered
// yet, what the user was told, and which host operation still waits.
#pragma once

#include "tests/simulation/Requests.h"

namespace simulation {

// What a calendar and a meeting client both have of an appointment.
struct SharedValues {
    QString subject; // as far as the client keeps it
    qint64 start = 0;
    qint64 minutes = 0;
    bool recurring = false;
    bool operator==(const SharedValues &) const = default;
};
[[nodiscard]] SharedValues sharedValuesOf(const mailhost::Appointment &appointment);
[[nodiscard]] SharedValues sharedValuesOf(const QJsonObject &meeting);
// Of the stored record; an empty text without one.
[[nodiscard]] QString keyInRecord(const mailhost::Appointment &appointment);

class Ledger {
public:
    explicit Ledger(Desktop &desktop)
        : m_desktop(desktop) {}
    // After each step, once. The first thing that cannot be right, as a sentence; else a null text.
    [[nodiscard]] QString note();

    // The name of the appointment whose meeting that is or was. Null when nobody knows yet, and for the
    // personal meetings, which are for any appointment and follow none.
    [[nodiscard]] QString ownerOf(const QString &key) const { return m_owners.value(key); }
    [[nodiscard]] bool isPersonal(const QString &key) const;
    // The user, or somebody at the client, has wanted it to go.
    [[nodiscard]] bool wasRemoved(const QString &key) const { return m_removed.contains(key); }
    // Whether the user knows, or is still to hear, that the client has something else than the calendar:
    // since either of them changed last, an alert was shown, or a request has not been answered as it should.
    [[nodiscard]] bool isExplained(const QString &appointment) const;

private:
    struct OpenRequest {
        Request request;
        QString meeting;
        int step;
        double sentAt;
    };
    struct Press {
        HostOperation operation;
        QString appointment;
        int step;
    };
    struct Sides {
        SharedValues file;
        SharedValues client;
        bool operator==(const Sides &) const = default;
    };
    void noteRequests();
    void noteAlerts();
    void noteRemovals();
    void noteSubjects();
    void noteChanges();
    QString noteOwners();
    QString noteOperations();
    [[nodiscard]] bool isExplainedSince(const QString &appointment, int step) const;
    [[nodiscard]] QString keyInFile(const QString &appointment) const;

    Desktop &m_desktop;
    int m_step = 0;
    double m_now = 0;
    QMap<QString, QString> m_owners;         // by meeting key
    QSet<QString> m_removed;                 // keys
    QMap<QString, QSet<QString>> m_subjects; // that an appointment has ever had, by name
    QList<OpenRequest> m_open;
    QMap<QString, int> m_told;    // step, by name; with a null name: wherever the user was
    QMap<QString, Sides> m_sides; // by name
    QMap<QString, int> m_changed; // step, by name
    QMap<const mailhost::EditorWindow *, Press> m_waiting;
};

} // namespace simulation
