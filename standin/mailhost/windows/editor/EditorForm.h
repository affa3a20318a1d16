// The fields of an appointment editor.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"
#include "standin/mailhost/windows/editor/HeaderViews.h"

#include <QObject>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QPushButton;
class QTimeEdit;

namespace mailhost {

// Puts its fields into a header view, which owns them; dies with it.
class EditorForm : public QObject {
    Q_OBJECT
public:
    EditorForm(HeaderView *header, const CalendarSession &session);

    // Shows the appointment. What is not touched afterwards comes back from values() as it was.
    void show(const Appointment &appointment);
    // The shown appointment with what the person has entered. Nothing but summary, location, times, people,
    // recurrence and organizer differs.
    [[nodiscard]] Appointment values() const;
    void setRecurrenceRule(const QString &rule);
    void setSummary(const QString &summary);
    void setLocation(const QString &location);
    [[nodiscard]] EmailAccount *currentAccount() const;
    [[nodiscard]] QLineEdit *locationField() const { return m_location; }
    [[nodiscard]] QLineEdit *subjectField() const { return m_subject; }
    // The start can be kept from being edited by itself.
    void setEditable(bool editable, bool startToo);
    void setTimeZoneShown(bool shown);
    [[nodiscard]] bool isTimeZoneShown() const;

Q_SIGNALS:
    void edited();
    void fromChosen(QWidget *chooser);

private:
    void buildPeople();
    void buildTimes();
    void showTimes();
    void showZones();
    void startChanged();
    [[nodiscard]] QTimeZone chosenZone() const;
    [[nodiscard]] QDateTime enteredStart() const;
    [[nodiscard]] QDateTime enteredEnd() const;
    [[nodiscard]] CalendarTime timeFor(const QDateTime &entered, const CalendarTime &before) const;

    HeaderView *m_header;
    const CalendarSession &m_session;
    Appointment m_shown;
    QString m_rule;
    QDateTime m_lastStart;
    bool m_showing = false;
    QComboBox *m_from;
    QLineEdit *m_subject;
    QLineEdit *m_location;
    QLineEdit *m_attendees;
    QLineEdit *m_rooms;
    QDateEdit *m_startDate;
    QTimeEdit *m_startTime;
    QDateEdit *m_endDate;
    QTimeEdit *m_endTime;
    QCheckBox *m_allDay;
    QComboBox *m_zone;
    QWidget *m_zoneRow = nullptr;
};

} // namespace mailhost
