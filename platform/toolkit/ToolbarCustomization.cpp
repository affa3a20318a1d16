#include "platform/toolkit/ToolbarCustomization.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

ToolbarCustomization::ToolbarCustomization(QWidget *widget, CustomizableToolbar *toolbar)
    : QDialog(widget->window())
    , m_widget(widget)
    , m_toolbar(toolbar)
    , m_palette(new ToolbarItemList)
    , m_arrangement(new ToolbarItemList)
    , m_displayMode(new QComboBox) {
    setObjectName(customization::sheet);
    setWindowTitle(tr("Customize tool-bar"));
    m_palette->setObjectName(customization::palette);
    m_palette->setAccessibleName(tr("Items that can be added"));
    m_arrangement->setObjectName(customization::arrangement);
    m_arrangement->setAccessibleName(tr("Items in the tool-bar, in order"));
    m_displayMode->setObjectName(customization::displayMode);
    m_displayMode->addItems({tr("Icon and text"), tr("Icon only"), tr("Text only")});
    m_add = button(customization::addButton, tr("&Add"), &ToolbarCustomization::add);
    m_remove = button(customization::removeButton, tr("&Remove"), &ToolbarCustomization::remove);
    m_earlier = button(customization::earlierButton, tr("Move &earlier"), &ToolbarCustomization::moveEarlier);
    m_later = button(customization::laterButton, tr("Move &later"), &ToolbarCustomization::moveLater);
    build();
    connectControls();
    refresh();
    m_palette->setCurrentRow(0);
    m_palette->setFocus();
}

QPushButton *ToolbarCustomization::button(const QString &name, const QString &text,
                                          void (ToolbarCustomization::*operation)()) {
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
    auto *hint = new QLabel(tr("Drag items between the lists, or select one and use the buttons. "
                               "Changes show at once."));
    hint->setWordWrap(true);
    auto *buttons = new QVBoxLayout;
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
        button(customization::restoreButton, tr("Restore &default"), &ToolbarCustomization::restore);
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
    for (ToolbarItemList *list : {m_palette, m_arrangement}) {
        connect(list, &QListWidget::currentRowChanged, this, &ToolbarCustomization::updateButtons);
        connect(
            list, &ToolbarItemList::rowDropped, this,
            [this, list](ToolbarItemList *source, int from, int to) { dropped(list, source, from, to); },
            Qt::QueuedConnection); // the lists are filled afresh: not while a drag is running in one
    }
    connect(m_palette, &QListWidget::itemActivated, this, &ToolbarCustomization::add);
    connect(m_arrangement, &QListWidget::itemActivated, this, &ToolbarCustomization::remove);
    connect(m_displayMode, &QComboBox::activated, this, [this](int index) {
        if (m_widget)
            m_toolbar->setDisplayMode(ToolbarDisplayMode(index));
    });
}

// Both lists keep their row, so that a key can be pressed again and again.
void ToolbarCustomization::refresh() {
    if (!m_widget)
        return;
    const int paletteRow = m_palette->currentRow();
    const int row = m_arrangement->currentRow();
    m_palette->fill(m_toolbar->paletteItems());
    m_arrangement->fill(m_toolbar->visibleItems());
    m_palette->setCurrentRow(std::min(paletteRow, m_palette->count() - 1));
    m_arrangement->setCurrentRow(std::min(row, m_arrangement->count() - 1));
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

void ToolbarCustomization::insert(int paletteRow, int index) {
    const QListWidgetItem *item = m_palette->item(paletteRow);
    if (!item || !m_widget)
        return;
    const QString identifier = item->data(Qt::UserRole).toString();
    if (m_toolbar->insertItem(identifier, index))
        m_arrangement->setCurrentRow(index);
}

void ToolbarCustomization::move(int from, int to) {
    if (!m_widget)
        return;
    m_toolbar->moveItem(from, to);
    m_arrangement->setCurrentRow(to);
}

// Behind the selected one, at the end when none is.
void ToolbarCustomization::add() {
    const int row = m_arrangement->currentRow();
    insert(m_palette->currentRow(), row < 0 ? m_arrangement->count() : row + 1);
}

void ToolbarCustomization::remove() {
    if (m_widget)
        m_toolbar->removeItem(m_arrangement->currentRow());
}

void ToolbarCustomization::moveEarlier() {
    move(m_arrangement->currentRow(), m_arrangement->currentRow() - 1);
}

void ToolbarCustomization::moveLater() {
    move(m_arrangement->currentRow(), m_arrangement->currentRow() + 1);
}

void ToolbarCustomization::restore() {
    if (m_widget)
        m_toolbar->restoreDefault();
}

void ToolbarCustomization::dropped(ToolbarItemList *target, ToolbarItemList *source, int from, int to) {
    if (!m_widget || from < 0 || from >= source->count())
        return;
    if (target == m_palette) {
        if (source == m_arrangement)
            m_toolbar->removeItem(from);
        return;
    }
    if (source == m_palette)
        insert(from, to);
    else
        move(from, to > from ? to - 1 : to); // the row has left its old place by then
}

} // namespace platform
