// The fields of an appointment editor.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"
#include "standin/mailhost/windows/editor/HeaderViews.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QTimeEdit>

namespace mailhost {

// Adds its fields to a header view, which owns them and this object.
class EditorForm : public QObject {
    Q_OBJECT
public:
    EditorForm(HeaderView *header, const CalendarSession &session);

    // Shows the appointment. values() returns fields that the user does not touch unchanged.
    void show(const Appointment &appointment);
    // The shown appointment with the user's input. Only summary, location, times, people, recurrence and
    // organizer may differ.
    [[nodiscard]] Appointment values() const;
    void setRecurrenceRule(const QString &rule);
    [[nodiscard]] EmailAccount *currentAccount() const {
        return m_session.accounts().find(m_from->currentData().toString());
    }
    [[nodiscard]] QLineEdit *locationField() const { return m_location; }
    [[nodiscard]] QLineEdit *subjectField() const { return m_subject; }
    // `startToo`: whether the start is editable as well.
    void setEditable(bool editable, bool startToo);
    [[nodiscard]] QWidget *timeZoneRow() const { return m_zoneRow; }
    // Whether the shown times differ from the desktop's clock.
    [[nodiscard]] bool isInOtherZone() const;

Q_SIGNALS:
    void edited();
    void fromChosen(QWidget *chooser);

private:
    void buildPeople();
    void buildTimes();
    void showTimes();
    void enableTimes();
    void showZones();
    void startChanged();
    [[nodiscard]] QTimeZone chosenZone() const { return m_zone->currentData().value<QTimeZone>(); }
    [[nodiscard]] QDateTime enteredStart() const;
    [[nodiscard]] QDateTime enteredEnd() const;
    [[nodiscard]] CalendarTime timeFor(const QDateTime &entered, const CalendarTime &before) const;

    HeaderView *m_header;
    const CalendarSession &m_session;
    Appointment m_shown;
    QString m_rule;
    QDateTime m_lastStart;
    QComboBox *m_from = new QComboBox;
    QLineEdit *m_subject = new QLineEdit;
    QLineEdit *m_location = new QLineEdit;
    QLineEdit *m_attendees = new QLineEdit;
    QLineEdit *m_rooms = new QLineEdit;
    QDateEdit *m_startDate = new QDateEdit;
    QTimeEdit *m_startTime = new QTimeEdit;
    QDateEdit *m_endDate = new QDateEdit;
    QTimeEdit *m_endTime = new QTimeEdit;
    QCheckBox *m_allDay;
    QComboBox *m_zone = new QComboBox;
    QWidget *m_zoneRow = nullptr;
};

} // namespace mailhost
