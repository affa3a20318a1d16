// The upper part of the editor, for both generations of the host.
#pragma once

#include "platform/runtime/Object.h"

#include <QRectF>
#include <QVBoxLayout>
#include <QWidget>

class QLabel;
class QPainter;

namespace mailhost {

// A view that the runtime's "drawRect:" paints.
class HostView : public QWidget, public rt::Object {
    Q_OBJECT
public:
    // Returns false outside of painting.
    bool drawRect(const QRectF &rect);

protected:
    explicit HostView(rt::Class *isa, QWidget *parent = nullptr);
    virtual void draw(QPainter &painter, const QRectF &rect) = 0;
    void paintEvent(QPaintEvent *event) override;

private:
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

    // A row over the whole width, or a narrow one that leaves the right side free. The label, on the left, is
    // the row's own child.
    QWidget *addRow(QLabel *label, const QList<QWidget *> &fields, bool narrow);

    [[nodiscard]] rt::Object *initWithFrame(const QRectF &frame);
    // Dictionaries with each direct subview under "subview".
    [[nodiscard]] QVariantList managedSubviewsData() const;

protected:
    void draw(QPainter &painter, const QRectF &rect) override;

private:
    HeaderView(rt::Class *isa, bool newerGeneration);
    bool m_newerGeneration;
    QVBoxLayout *m_layout;
};

// One row of the newer header.
class AutoLayoutView : public HostView {
    Q_OBJECT
public:
    explicit AutoLayoutView(QWidget *parent);

protected:
    void draw(QPainter &painter, const QRectF &rect) override;
};

void defineHeaderClasses();

} // namespace mailhost
