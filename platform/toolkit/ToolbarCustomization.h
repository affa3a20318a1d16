// The sheet in which a user rearranges a tool-bar. Each change shows at once in every tool-bar of its kind.
#pragma once

#include "platform/toolkit/CustomizableToolbar.h"

#include <QDialog>
#include <QListWidget>
#include <QPointer>

class QComboBox;
class QPushButton;

namespace platform {

// The object names of its controls.
namespace customization {
inline const QString sheet = u"toolbarCustomizationSheet"_s;
inline const QString palette = u"toolbarPalette"_s;
inline const QString arrangement = u"toolbarArrangement"_s;
inline const QString addButton = u"toolbarAddButton"_s;
inline const QString removeButton = u"toolbarRemoveButton"_s;
inline const QString earlierButton = u"toolbarEarlierButton"_s;
inline const QString laterButton = u"toolbarLaterButton"_s;
inline const QString displayMode = u"toolbarDisplayMode"_s;
inline const QString restoreButton = u"toolbarRestoreButton"_s;
inline const QString doneButton = u"toolbarDoneButton"_s;
} // namespace customization

inline const QString toolbarItemMimeType = u"application/x-parlo-toolbar-item"_s;

// A list whose rows can be dragged to the other list or, in the arrangement, to another place.
class ToolbarItemList : public QListWidget {
    Q_OBJECT
public:
    explicit ToolbarItemList(QWidget *parent = nullptr);
    void fill(const QList<ToolbarItem *> &items);

Q_SIGNALS:
    // `from` is the row in `source`; `to` the row before which it was dropped here.
    void rowDropped(platform::ToolbarItemList *source, int from, int to);

protected:
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QList<QListWidgetItem *> &items) const override;
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    [[nodiscard]] int rowBefore(const QPoint &position) const;
};

class ToolbarCustomization : public QDialog {
    Q_OBJECT
public:
    // Both are the tool-bar; the sheet does nothing any more when the widget has died.
    ToolbarCustomization(QWidget *widget, CustomizableToolbar *toolbar);
    void refresh();

private:
    void build();
    void connectControls();
    QPushButton *button(const QString &name, const QString &text, void (ToolbarCustomization::*operation)());
    void add();
    void remove();
    void moveEarlier();
    void moveLater();
    void restore();
    void dropped(ToolbarItemList *target, ToolbarItemList *source, int from, int to);
    void insert(int paletteRow, int index);
    void move(int from, int to);
    void updateButtons();

    QPointer<QWidget> m_widget;
    CustomizableToolbar *m_toolbar; // as long as m_widget lives
    ToolbarItemList *m_palette;
    ToolbarItemList *m_arrangement;
    QComboBox *m_displayMode;
    QPushButton *m_add;
    QPushButton *m_remove;
    QPushButton *m_earlier;
    QPushButton *m_later;
};

} // namespace platform
