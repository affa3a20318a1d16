// The upper part of the editor, in the two forms that the host's generations have.
#pragma once

#include "platform/runtime/Object.h"

#include <QRectF>
#include <QVBoxLayout>
#include <QWidget>

class QLabel;

namespace mailhost {

// Holds the rows of fields. Each drawing goes through the runtime's "drawRect:". Views that others add are
// not part of its layout: they find room at the bottom right, where the rows added with addNarrowRow() do not
// reach.
class HeaderView : public QWidget, public rt::Object {
    Q_OBJECT
public:
    static constexpr int narrowWidth = 446; // points; what is added from outside begins at 460

    // Of the class that the generation has, initialised with "initWithFrame:".
    static HeaderView *make(bool newerGeneration, const QRectF &frame);

    // A row over the whole width, with its label on the left.
    QWidget *addWideRow(QLabel *label, QWidget *field);
    // A row that leaves the right side free. The label is the row's own child.
    QWidget *addNarrowRow(QLabel *label, const QList<QWidget *> &fields);

    [[nodiscard]] rt::Object *initWithFrame(const QRectF &frame);
    bool drawRect(const QRectF &rect);
    // Dictionaries with each direct subview under "subview".
    [[nodiscard]] QVariantList managedSubviewsData() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    HeaderView(rt::Class *isa, bool newerGeneration);
    QWidget *newRow();
    bool m_newerGeneration;
    bool m_painting = false;
    QVBoxLayout *m_layout;
};

// One row of the newer header.
class AutoLayoutView : public QWidget, public rt::Object {
    Q_OBJECT
public:
    explicit AutoLayoutView(QWidget *parent);
    bool drawRect(const QRectF &rect);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_painting = false;
};

void defineHeaderClasses();

} // namespace mailhost
