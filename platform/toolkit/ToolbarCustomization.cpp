#include "platform/toolkit/ToolbarCustomization.h"

#include "platform/toolkit/Windows.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

namespace {

constexpr int imageSide = 24; // points
constexpr int buttonGap = 6;  // points

QPixmap clearPixmap() {
    QPixmap pixmap(QSize(imageSide, imageSide) * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

// Icon of an item without an image: a thin line for a separator, a stretch for a space.
QIcon standardIcon(const QString &identifier, const QPalette &palette) {
    QPixmap pixmap = clearPixmap();
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::Disabled, QPalette::Text), 1.5));
    if (identifier == toolbarSeparatorIdentifier) {
        painter.drawLine(QPointF(12, 3), QPointF(12, 21));
    } else {
        painter.drawRoundedRect(QRectF(2, 5, 20, 14), 2, 2);
        if (identifier == toolbarFlexibleSpaceIdentifier) {
            painter.drawLine(QPointF(5, 12), QPointF(19, 12));
            painter.drawPolyline(QPolygonF({{8, 9}, {5, 12}, {8, 15}}));
            painter.drawPolyline(QPolygonF({{16, 9}, {19, 12}, {16, 15}}));
        }
    }
    return pixmap;
}

// The styles tint the image of a selected row with the selection's colour, which would hide a gray image. The
// selected image therefore uses the colour of the text.
QIcon selectable(QIcon icon, const QPalette &palette) {
    QPixmap pixmap = clearPixmap();
    QPainter painter(&pixmap);
    icon.paint(&painter, QRect(0, 0, imageSide, imageSide));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(0, 0, imageSide, imageSide), palette.color(QPalette::HighlightedText));
    painter.end();
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

// Two items of a plug-in may have the same palette label; the normal label distinguishes them.
QString titleOf(const ToolbarItem &item) {
    const QString label = withoutMnemonic(item.label());
    const QString palette = item.paletteLabel();
    return label.isEmpty() || palette == label ? palette : palette + u" – "_s + label;
}

void fillList(QListWidget *list, const QList<ToolbarItem *> &items) {
    const int row = list->currentRow();
    list->clear();
    for (const ToolbarItem *item : items) {
        const bool standard = isStandardToolbarIdentifier(item->itemIdentifier());
        const QIcon icon = standard ? standardIcon(item->itemIdentifier(), list->palette()) : item->image();
        auto *entry = new QListWidgetItem(selectable(icon, list->palette()), titleOf(*item), list);
        entry->setData(Qt::UserRole, item->itemIdentifier());
        entry->setToolTip(item->toolTip());
    }
    list->setCurrentRow(std::min(row, list->count() - 1));
}

QListWidget *makeList(const QString &name, const QString &accessibleName) {
    auto *list = new QListWidget;
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    list->setIconSize(QSize(imageSide, imageSide));
    list->setSpacing(1);
    list->setUniformItemSizes(true);
    return list;
}

} // namespace

void customizeToolbar(Toolbar *toolbar) {
    auto *sheet = new ToolbarCustomization(toolbar);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(toolbar, &QObject::destroyed, sheet, [sheet] { delete sheet; });
    beginSheet(sheet, toolbar->window(), nullptr);
}

ToolbarCustomization::ToolbarCustomization(Toolbar *toolbar)
    : QDialog(toolbar->window())
    , m_toolbar(toolbar)
    , m_palette(makeList(customization::palette, tr("Items that can be added")))
    , m_arrangement(makeList(customization::arrangement, tr("Items in the tool-bar, in order")))
    , m_displayMode(new QComboBox) {
    setObjectName(customization::sheet);
    setWindowTitle(tr("Customize tool-bar"));
    m_displayMode->setObjectName(customization::displayMode);
    m_displayMode->addItems({tr("Icon and text"), tr("Icon only"), tr("Text only")});
    m_add = button(customization::addButton, tr("&Add"), [this] { add(); });
    m_remove = button(customization::removeButton, tr("&Remove"), [this] { remove(); });
    m_earlier = button(customization::earlierButton, tr("Move &earlier"), [this] { move(-1); });
    m_later = button(customization::laterButton, tr("Move &later"), [this] { move(+1); });
    build();
    connectControls();
    refresh();
    m_palette->setCurrentRow(0);
    m_palette->setFocus();
}

QPushButton *ToolbarCustomization::button(const QString &name, const QString &text,
                                          const std::function<void()> &operation) {
    auto *made = new QPushButton(text);
    made->setObjectName(name);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, operation);
    return made;
}

void ToolbarCustomization::build() {
    const auto labelFor = [](const QString &text, QWidget *buddy) {
        auto *label = new QLabel(text);
        label->setBuddy(buddy);
        return label;
    };
    auto *hint = new QLabel(tr("Select an item and use the buttons. Changes show at once."));
    hint->setWordWrap(true);
    auto *buttons = new QVBoxLayout;
    buttons->setSpacing(buttonGap);
    buttons->addStretch();
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addSpacing(12);
    buttons->addWidget(m_earlier);
    buttons->addWidget(m_later);
    buttons->addStretch();
    auto *lists = new QGridLayout;
    lists->setHorizontalSpacing(12);
    lists->addWidget(labelFor(tr("A&vailable items:"), m_palette), 0, 0);
    lists->addWidget(labelFor(tr("&In the tool-bar:"), m_arrangement), 0, 2);
    lists->addWidget(m_palette, 1, 0);
    lists->addLayout(buttons, 1, 1);
    lists->addWidget(m_arrangement, 1, 2);
    lists->setColumnStretch(0, 1);
    lists->setColumnStretch(2, 1);
    QPushButton *restoreDefault =
        button(customization::restoreButton, tr("Restore &default"), [this] { m_toolbar->restoreDefault(); });
    auto *done = new QPushButton(tr("D&one"));
    done->setObjectName(customization::doneButton);
    done->setDefault(true);
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(labelFor(tr("&Show:"), m_displayMode));
    bottom->addWidget(m_displayMode);
    bottom->addStretch();
    bottom->addWidget(restoreDefault);
    bottom->addWidget(done);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20, 18, 20, 18);
    column->setSpacing(14);
    column->addWidget(hint);
    column->addLayout(lists, 1);
    column->addLayout(bottom);
    resize(680, 440);
}

void ToolbarCustomization::connectControls() {
    for (QListWidget *list : {m_palette, m_arrangement})
        connect(list, &QListWidget::currentRowChanged, this, &ToolbarCustomization::updateButtons);
    connect(m_palette, &QListWidget::itemActivated, this, &ToolbarCustomization::add);
    connect(m_arrangement, &QListWidget::itemActivated, this, &ToolbarCustomization::remove);
    connect(m_displayMode, &QComboBox::activated, this,
            [this](int index) { m_toolbar->setDisplayMode(ToolbarDisplayMode(index)); });
    connect(m_toolbar, &Toolbar::rearranged, this, &ToolbarCustomization::refresh);
}

// Both lists keep their current row, so that the user can repeat a key.
void ToolbarCustomization::refresh() {
    fillList(m_palette, m_toolbar->paletteItems());
    fillList(m_arrangement, m_toolbar->visibleItems());
    m_displayMode->setCurrentIndex(int(m_toolbar->displayMode()));
    updateButtons();
}

void ToolbarCustomization::updateButtons() {
    const int row = m_arrangement->currentRow();
    m_add->setEnabled(m_palette->currentRow() >= 0);
    m_remove->setEnabled(row >= 0);
    m_earlier->setEnabled(row > 0);
    m_later->setEnabled(row >= 0 && row < m_arrangement->count() - 1);
}

// Inserts after the selected item, or at the end without a selection.
void ToolbarCustomization::add() {
    const QListWidgetItem *item = m_palette->currentItem();
    const int row = m_arrangement->currentRow();
    const int index = row < 0 ? m_arrangement->count() : row + 1;
    if (item && m_toolbar->insertItem(item->data(Qt::UserRole).toString(), index))
        m_arrangement->setCurrentRow(index);
}

void ToolbarCustomization::remove() {
    m_toolbar->removeItem(m_arrangement->currentRow());
}

void ToolbarCustomization::move(int by) {
    const int to = m_arrangement->currentRow() + by;
    m_toolbar->moveItem(m_arrangement->currentRow(), to);
    m_arrangement->setCurrentRow(to);
}

} // namespace platform
