// The fixed height of one view of an interface description.
#pragma once

#include <QWidget>

// Finds its view in the sheet: the view whose property "heightConstraint" has the name. The view must outlive
// it.
class HeightConstraint {
public:
    HeightConstraint() = default; // has no view
    HeightConstraint(const QWidget *sheet, const char *name) {
        for (QWidget *view : sheet->findChildren<QWidget *>())
            if (view->property("heightConstraint").toString() == QLatin1String(name))
                m_view = view;
    }

    [[nodiscard]] bool isConnected() const { return m_view != nullptr; }
    [[nodiscard]] int constant() const { return m_view->minimumHeight(); } // points
    void setConstant(int points) { m_view->setFixedHeight(points); }

private:
    QWidget *m_view = nullptr;
};
