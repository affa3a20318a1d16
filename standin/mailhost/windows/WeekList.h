// The appointments of one week, grouped by day.
#pragma once

#include "standin/mailhost/model/CalendarSession.h"

#include <QTreeWidget>
#include <optional>

namespace mailhost {

class WeekList : public QTreeWidget {
    Q_OBJECT
public:
    explicit WeekList(QWidget *parent = nullptr);

    // Shows the week (Monday to Sunday) that contains the day. The session is not owned.
    void show(const CalendarSession &session, const QDate &day, const QDate &today);
    [[nodiscard]] std::optional<Occurrence> selected() const;
    // Selects the first row of that appointment; false when the week has none.
    bool select(const QString &uid);
    // The day of the selected row; invalid when none is.
    [[nodiscard]] QDate selectedDay() const;

Q_SIGNALS:
    void opened();
    void selectionMoved();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QTreeWidgetItem *addDay(const QDate &day, const QDate &today, bool empty);
    void addRow(QTreeWidgetItem *day, const Occurrence &occurrence);
};

[[nodiscard]] QDate mondayOf(const QDate &day);

} // namespace mailhost
