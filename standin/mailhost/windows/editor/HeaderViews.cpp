#include "standin/mailhost/windows/editor/HeaderViews.h"

#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>

namespace mailhost {

namespace {

constexpr int labelWidth = 84;
constexpr int rowHeight = 30;

} // namespace

HostView::HostView(rt::Class *isa, QWidget *parent)
    : QWidget(parent)
    , rt::Object(isa) {}

// Draws only a decoration, which a plug-in may replace.
bool HostView::drawRect(const QRectF &rect) {
    if (!m_painting)
        return false;
    QPainter painter(this);
    draw(painter, rect);
    return true;
}

void HostView::paintEvent(QPaintEvent *event) {
    m_painting = true;
    rt::send(this, "drawRect:", QRectF(event->rect()));
    m_painting = false;
}

HeaderView::HeaderView(rt::Class *isa, bool newerGeneration)
    : HostView(isa)
    , m_newerGeneration(newerGeneration)
    , m_layout(new QVBoxLayout(this)) {
    setObjectName(controls::editorHeader);
    m_layout->setContentsMargins(12, 10, 12, 10);
    m_layout->setSpacing(4);
}

HeaderView *HeaderView::make(bool newerGeneration, const QRectF &frame) {
    const QString name =
        newerGeneration ? u"OLAutoLayoutAttachmentsAcceptingView"_s : u"OLCalendarHeaderContainerView"_s;
    auto *header = new HeaderView(rt::classNamed(name), newerGeneration);
    rt::send(header, "initWithFrame:", frame);
    return header;
}

rt::Object *HeaderView::initWithFrame(const QRectF &frame) {
    setGeometry(frame.toAlignedRect());
    return this;
}

QWidget *HeaderView::addRow(QLabel *label, const QList<QWidget *> &fields, bool narrow) {
    QWidget *row = m_newerGeneration ? new AutoLayoutView(this) : new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    row->setFixedHeight(rowHeight);
    if (narrow)
        row->setFixedWidth(narrowWidth - m_layout->contentsMargins().left());
    label->setFixedWidth(labelWidth);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(label);
    for (QWidget *field : fields)
        layout->addWidget(field);
    m_layout->addWidget(row, 0, narrow ? Qt::AlignLeft : Qt::Alignment());
    return row;
}

void HeaderView::draw(QPainter &painter, const QRectF &rect) {
    painter.fillRect(rect, palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

QVariantList HeaderView::managedSubviewsData() const {
    QVariantList data;
    for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        data.append(QVariantMap{{u"subview"_s, rt::fromWidget(child)}});
    return data;
}

AutoLayoutView::AutoLayoutView(QWidget *parent)
    : HostView(rt::classNamed(u"OLAutoLayoutView"_s), parent) {}

void AutoLayoutView::draw(QPainter &painter, const QRectF &) {
    QColor line = palette().color(QPalette::Mid);
    line.setAlpha(60);
    painter.setPen(line);
    painter.drawLine(labelWidth + 8, height() - 1, width(), height() - 1);
}

void defineHeaderClasses() {
    rt::Class *view = rt::defineClass(u"NSView"_s);
    rt::Class *accepting = rt::defineClass(u"OLAttachmentsAcceptingView"_s, view);
    addMethods(accepting, {{"initWithFrame:", bind<&HeaderView::initWithFrame>, "@@:ffff"}});
    addMethods(rt::defineClass(u"OLCalendarHeaderContainerView"_s, accepting),
               {{"drawRect:", bind<&HostView::drawRect>, "B@:ffff"},
                {"managedSubviewsData", bind<&HeaderView::managedSubviewsData>, "@@:"}});
    addMethods(rt::defineClass(u"OLAutoLayoutAttachmentsAcceptingView"_s, view),
               {{"initWithFrame:", bind<&HeaderView::initWithFrame>, "@@:ffff"},
                {"drawRect:", bind<&HostView::drawRect>, "B@:ffff"}});
    addMethods(rt::defineClass(u"OLAutoLayoutView"_s, view),
               {{"drawRect:", bind<&HostView::drawRect>, "B@:ffff"}});
}

} // namespace mailhost
