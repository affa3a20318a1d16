// The upper part of the editor, for both generations of the host.
#pragma once

#include "platform/runtime/Object.h"

#include <QRectF>
#include <QVBoxLayout>
#include <QWidget>

namespace mailhost {

// A view that the runtime's "drawRect:" paints: a line at its bottom.
class HostView : public QWidget, public rt::Object {
    Q_OBJECT
public:
    // The line begins at `lineLeft`.
    HostView(rt::Class *isa, int lineLeft, QWidget *parent = nullptr);
    // Returns false outside of painting.
    bool drawRect(const QRectF &rect);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_lineLeft;
    bool m_painting = false;
};

// Holds the rows of fields. Views that plug-ins add are not part of its layout; their space is at the bottom
// right, beside the narrow rows.
class HeaderView : public HostView {
    Q_OBJECT
public:
    static constexpr int narrowWidth = 446; // points; views of plug-ins begin at 460

    // Makes a view of the generation's class, initialised with "initWithFrame:".
    static HeaderView *make(bool newerGeneration, const QRectF &frame);

    // A row over the whole width, or a narrow one that leaves the right side free. The label, on the left,
    // belongs to the first field and is the row's own child.
    QWidget *addRow(const QString &label, const QList<QWidget *> &fields, bool narrow);

    [[nodiscard]] rt::Object *initWithFrame(const QRectF &frame);
    // Dictionaries with each direct subview under "subview".
    [[nodiscard]] QVariantList managedSubviewsData() const;

private:
    HeaderView(rt::Class *isa, bool newerGeneration);
    bool m_newerGeneration;
    QVBoxLayout *m_layout;
};

void defineHeaderClasses();

} // namespace mailhost
