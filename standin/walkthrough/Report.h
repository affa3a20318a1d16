// The report of a walk-through: TAP on standard output with the messages on the bus below each step, and
// pictures in a folder.
#pragma once

#include "standin/support/MessageLog.h"

class QWidget;

namespace walkthrough {

namespace requests = standin::requests;
using standin::readAnswer;
using standin::updateAnswer;

// The mark before a picture's file name in a report.
inline const QString pictureMark = u"# picture "_s;

// Thrown by the first failed step: the others build on it.
struct Stopped {};

class Report : public standin::MessageLog {
public:
    // Pictures go into `folder`, which exists before the first one. `kill` is a fault to inject: "client:7"
    // kills the client (or "host", "agent", "bus") as `kill -9` does at the 7th message.
    Report(QString folder, const QString &kill);

    // Writes one TAP line, with the messages since the last one below it.
    void step(bool ok, const QString &what);
    // Checks what the next step needs. Writes a failed step only if it is missing.
    void need(bool ok, const QString &what);
    static void comment(const QString &text);
    // Saves a picture of the widget and reports its file; a failure fails the report.
    void picture(QWidget *widget, const QString &name);
    // Call it after each message.
    void killWhenDue();
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    void write(bool ok, const QString &what);

    QString m_folder;
    QString m_toKill; // name on the bus
    int m_killAt = 0;
    qsizetype m_reported = 0;
    bool m_failed = false;
    int m_pictures = 0;
};

} // namespace walkthrough
