// What a walk-through reports: TAP on standard output with the messages on the bus beneath each step, and
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
    // Observes both channels of the client for as long as it lives. Pictures go into `folder`, which exists.
    explicit Report(QString folder);
    ~Report();

    // One TAP line, with the messages since the last one beneath it. A false one makes the walk-through fail.
    bool step(bool ok, const QString &what);
    void comment(const QString &text);
    // Saves a picture of the widget and reports its file; a failure fails the report.
    void picture(QWidget *widget, const QString &name);

    // Lets events happen until the condition holds; false when it does not within the time. No fixed waiting.
    static bool waitFor(const std::function<bool()> &condition, int milliseconds = usualTimeout);
    // Announces a fault. Time-outs are shorter then, because the awaited event may never come.
    void expect(const ProcessKill &kill);
    // Lets everything happen that falls due within the seconds (0: that is due already).
    static void settle(double seconds = 0);

    // The messages since the last mark, in order.
    void mark() { m_marked = m_messages.size(); }
    [[nodiscard]] QList<Message> sinceMark() const { return m_messages.mid(m_marked); }
    // How many requests of one kind the plug-in sent since the mark: the action id and how the content
    // begins.
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
