// The sheet in which a user rearranges a tool-bar. Each change shows at once in every tool-bar of its kind.
#pragma once

#include "platform/toolkit/CustomizableToolbar.h"

#include <QDialog>
#include <QPointer>

class QComboBox;
class QListWidget;
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

class ToolbarCustomization : public QDialog {
    Q_OBJECT
public:
    // Both are the same tool-bar. After the widget is deleted the sheet does nothing.
    ToolbarCustomization(QWidget *widget, CustomizableToolbar *toolbar);
    void refresh();

private:
    void build();
    void connectControls();
    QPushButton *button(const QString &name, const QString &text, const std::function<void()> &operation);
    void add();
    void remove();
    void move(int by);
    void updateButtons();

    QPointer<QWidget> m_widget;
    CustomizableToolbar *m_toolbar; // valid while m_widget exists
    QListWidget *m_palette;
    QListWidget *m_arrangement;
    QComboBox *m_displayMode;
    QPushButton *m_add;
    QPushButton *m_remove;
    QPushButton *m_earlier;
    QPushButton *m_later;
};

} // namespace platform
