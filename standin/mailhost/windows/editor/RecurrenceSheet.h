// The sheet for the recurrence of an appointment.
#pragma once

#include <QDateTime>
#include <QDialog>

class QComboBox;
class QDateEdit;
class QSpinBox;

namespace mailhost {

class RecurrenceSheet : public QDialog {
    Q_OBJECT
public:
    // `rule` is an RRULE value, or empty. Parts that the sheet does not show (BYDAY and others) are kept
    // unless the kind of recurrence changes.
    RecurrenceSheet(const QString &rule, const QDateTime &start, QWidget *parent);
    [[nodiscard]] QString rule() const;

private:
    enum End { Never, AfterSomeTimes, OnADay }; // the choices of m_end
    void enableFields();

    QString m_before;
    QComboBox *m_kind;
    QSpinBox *m_interval;
    QComboBox *m_end;
    QSpinBox *m_count;
    QDateEdit *m_until;
};

// A short description of the rule for the user: "Every 2 weeks, 10 times".
[[nodiscard]] QString recurrenceText(const QString &rule);

} // namespace mailhost
