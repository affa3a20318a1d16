// The report of a walk-through: TAP on standard output with the messages on the bus below each step, and
// pictures in a folder.
#pragma once

#include "platform/Literals.h"
#include "platform/services/bus/Notifications.h"

#include <QList>

class QWidget;

namespace walkthrough {

// The mark before a picture's file name in a report.
inline const QString pictureMark = u"# picture "_s;

// A kind of request from the plug-in to the client: its action, and how its content begins.
struct Request {
    quint32 action;
    QString prefix;
};
namespace requests {
inline const Request start{2, {}};
inline const Request meeting{3, {}};
inline const Request schedule{3, u"1;"_s};
inline const Request update{3, u"2;"_s};
inline const Request deletion{3, u"3;"_s};
inline const Request profile{6, {}};
inline const Request accounts{9, {}};
} // namespace requests
inline constexpr quint32 updateAnswer = 2;
inline constexpr quint32 readAnswer = 4;

// Thrown by the first failed step: the others build on it.
struct Stopped {};

class Report {
public:
    // Pictures go into `folder`, which exists before the first one. `kill` is a fault to inject: "client:7"
    // kills the client (or "host", "agent", "bus") as `kill -9` does at the 7th message.
    Report(QString folder, const QString &kill);
    ~Report();
    // Records the messages between plug-in and client from now on. Needs the services.
    void observe();

    // Writes one TAP line, with the messages since the last one below it.
    void step(bool ok, const QString &what);
    // Checks what the next step needs. Writes a failed step only if it is missing.
    void need(bool ok, const QString &what);
    static void comment(const QString &text);
    // Saves a picture of the widget and reports its file; a failure fails the report.
    void picture(QWidget *widget, const QString &name);
    [[nodiscard]] bool failed() const { return m_failed; }

    // Messages are counted from the last mark on.
    void mark() { m_marked = m_messages.size(); }
    [[nodiscard]] QStringList sentContents(const Request &request) const;
    [[nodiscard]] qsizetype sent(const Request &request) const { return sentContents(request).size(); }
    [[nodiscard]] qsizetype answered(quint32 action) const;

private:
    struct Message {
        bool sent; // by the plug-in
        quint32 action;
        QString content;
    };
    void record(bool sent, const platform::TextMap &userInfo);
    void write(bool ok, const QString &what);

    QString m_folder;
    QString m_toKill; // name on the bus
    int m_killAt = 0;
    QList<Message> m_messages;
    qsizetype m_marked = 0;
    qsizetype m_reported = 0;
    bool m_failed = false;
    int m_pictures = 0;
    QList<platform::ObserverId> m_observers;
};

} // namespace walkthrough
