// The sheet in which a user rearranges a tool-bar. Each change shows at once in every tool-bar of its kind.
#pragma once

#include "platform/toolkit/Toolbar.h"

#include <QDialog>

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

// Opens the sheet on the window of the tool-bar. Closes it when the tool-bar is deleted.
void customizeToolbar(Toolbar *toolbar);

class ToolbarCustomization : public QDialog {
    Q_OBJECT
public:
    explicit ToolbarCustomization(Toolbar *toolbar);

private:
    void refresh();
    void build();
    void connectControls();
    QPushButton *button(const QString &name, const QString &text, const std::function<void()> &operation);
    void add();
    void remove();
    void move(int by);
    void updateButtons();

    Toolbar *m_toolbar; // lives longer
    QListWidget *m_palette;
    QListWidget *m_arrangement;
    QComboBox *m_displayMode;
    QPushButton *m_add;
    QPushButton *m_remove;
    QPushButton *m_earlier;
    QPushButton *m_later;
};

} // namespace platform
