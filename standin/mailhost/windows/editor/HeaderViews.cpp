#include "standin/mailhost/windows/editor/HeaderViews.h"

#include "standin/mailhost/model/Bind.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>

namespace mailhost {

namespace {

constexpr int labelWidth = 84;
constexpr int spacing = 8; // within a row
constexpr int rowHeight = 30;

} // namespace

HostView::HostView(rt::Class *isa, int lineLeft, QWidget *parent)
    : QWidget(parent)
    , rt::Object(isa)
    , m_lineLeft(lineLeft) {}

// Draws only a decoration, which a plug-in may replace.
bool HostView::drawRect(const QRectF &) {
    if (!m_painting)
        return false;
    QColor line = palette().color(QPalette::Mid);
    line.setAlphaF(m_lineLeft > 0 ? 0.25F : 1);
    QPainter(this).fillRect(m_lineLeft, height() - 1, width(), 1, line);
    return true;
}

void HostView::paintEvent(QPaintEvent *event) {
    m_painting = true;
    rt::send(this, "drawRect:", QRectF(event->rect()));
    m_painting = false;
}

HeaderView::HeaderView(rt::Class *isa, bool newerGeneration)
    : HostView(isa, 0)
    , m_newerGeneration(newerGeneration)
    , m_layout(new QVBoxLayout(this)) {
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

QWidget *HeaderView::addRow(const QString &text, const QList<QWidget *> &fields, bool narrow) {
    QWidget *row = m_newerGeneration
                       ? new HostView(rt::classNamed(u"OLAutoLayoutView"_s), labelWidth + spacing, this)
                       : new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    row->setFixedHeight(rowHeight);
    if (narrow)
        row->setFixedWidth(narrowWidth - m_layout->contentsMargins().left());
    auto *label = new QLabel(text);
    label->setBuddy(fields.first());
    label->setFixedWidth(labelWidth);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(label);
    for (QWidget *field : fields)
        layout->addWidget(field);
    m_layout->addWidget(row, 0, narrow ? Qt::AlignLeft : Qt::Alignment());
    return row;
}

QVariantList HeaderView::managedSubviewsData() const {
    QVariantList data;
    for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        data.append(QVariantMap{{u"subview"_s, rt::fromWidget(child)}});
    return data;
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
