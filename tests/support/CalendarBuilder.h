// Builds the text of a calendar file.
#pragma once

#include <QByteArray>
#include <QString>

class CalendarBuilder {
public:
    // Adds lines of the calendar itself. Here lines end with "\n"; in the file they end with "\r\n".
    CalendarBuilder &lines(const QByteArray &lines) {
        m_lines += lines;
        return *this;
    }
    // Adds an appointment; the lines are its times and other properties.
    CalendarBuilder &event(const QString &uid, const QByteArray &subject, const QByteArray &lines) {
        m_lines += "BEGIN:VEVENT\nUID:" + uid.toUtf8() + "\nDTSTAMP:20261101T080000Z\nSUMMARY:" + subject +
                   '\n' + lines + "END:VEVENT\n";
        return *this;
    }
    [[nodiscard]] QByteArray text() const {
        QByteArray text = "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Somebody//Else//EN\n";
        text += m_lines + "END:VCALENDAR\n";
        return text.replace("\n", "\r\n");
    }

private:
    QByteArray m_lines;
};
