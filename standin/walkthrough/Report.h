// The report of a walk-through: TAP on standard output with the messages on the bus below each step, and
// pictures in a folder.
#pragma once

#include "platform/services/bus/Notifications.h"
#include "standin/walkthrough/ProcessKill.h"

#include <QList>
#include <QString>
#include <functional>

class QWidget;

namespace walkthrough {

// One message between plug-in and client.
struct Message {
    bool sent = false; // by the plug-in
    quint32 actionId = 0;
    QString content;
};

class Report {
public:
    // Observes both channels of the client during its lifetime. Pictures go into `folder`, which exists.
    explicit Report(QString folder);
    ~Report();

    // Writes one TAP line, with the messages since the last one below it. If `ok` is false, the walk-through
    // fails.
    bool step(bool ok, const QString &what);
    void comment(const QString &text);
    // Saves a picture of the widget and reports its file; a failure fails the report.
    void picture(QWidget *widget, const QString &name);

    // Runs the event loop until the condition holds; returns false if it does not within the time.
    static bool waitFor(const std::function<bool()> &condition, int milliseconds = usualTimeout);
    // Announces a fault. Time-outs are shorter then, because the awaited event may never come.
    void expect(const ProcessKill &kill);
    // Runs all timers that are due within the seconds (0: those already due).
    static void settle(double seconds = 0);

    // The messages since the last mark, in order.
    void mark() { m_marked = m_messages.size(); }
    [[nodiscard]] QList<Message> sinceMark() const { return m_messages.mid(m_marked); }
    // The number of requests that the plug-in sent since the mark with this action id and this beginning of
    // the content.
    [[nodiscard]] int sentSinceMark(quint32 actionId, const QString &prefix = QString()) const;
    [[nodiscard]] int answeredSinceMark(quint32 actionId) const;

    [[nodiscard]] const QString &folder() const { return m_folder; }
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    static constexpr int usualTimeout = 10000;
    static int s_longestTimeout;
    std::optional<ProcessKill> m_kill;
    void record(bool sent, const platform::TextMap &userInfo);
    QString m_folder;
    QList<Message> m_messages;
    qsizetype m_marked = 0;
    qsizetype m_reported = 0;
    bool m_failed = false;
    int m_pictures = 0;
    QList<platform::ObserverId> m_observers;
};

} // namespace walkthrough
