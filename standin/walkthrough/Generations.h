// Runs the walk-through with one generation of the host after the other, each in a process of its own, and
// shows their results side by side.
#pragma once

#include <QList>
#include <QMap>
#include <QStringList>

namespace walkthrough {

class Generations {
public:
    // Starts this program with those arguments for that host, and passes its report on, numbered.
    void run(const QString &hostVersion, const QStringList &arguments);
    // Writes "index.html" into the folder of the walk: each step with its pictures and messages. Returns
    // false on failure.
    [[nodiscard]] bool writePage(const QString &folder) const;

    [[nodiscard]] int count() const { return m_count; } // of all steps
    [[nodiscard]] int failed() const { return m_failed; }
    [[nodiscard]] bool crashed() const { return m_crashed; }

private:
    struct Result {
        bool ok = false;
        QStringList pictures; // file names; those taken since the step before
        QStringList messages; // as reported: "sent 3: ...", "answered 3: ..."
    };
    struct Step {
        QString text;
        QMap<QString, Result> results; // by host version; without those that have no such step
    };
    void take(const QString &line);
    void add(bool ok, const QString &text);

    QStringList m_hosts; // by version; the files of each are in the folder "host-<version>"
    QList<Step> m_steps;
    qsizetype m_place = 0;  // where in m_steps the next step is looked for
    QStringList m_pictures; // of the next step
    int m_count = 0;
    int m_failed = 0;
    bool m_crashed = false;
};

} // namespace walkthrough
