// The host's own items for the tool-bar of its main window.
#pragma once

#include "platform/toolkit/Toolbar.h"

#include <QVariantList>
#include <map>
#include <memory>

namespace mailhost {

// The items of one window and the answers that the tool-bar's delegate gives. Keep it as long as the
// tool-bar. Each item triggers a command (QAction) of the window's menus, and is enabled with it.
class MainToolBarItems {
public:
    // The window outlives this.
    explicit MainToolBarItems(QWidget *window)
        : m_window(window) {}

    // The item of that identifier, made once; nullptr for one that is not the host's.
    [[nodiscard]] platform::ToolbarItem *item(const QString &identifier);
    [[nodiscard]] static QVariantList defaultIdentifiers();
    [[nodiscard]] static QVariantList allowedIdentifiers();

private:
    QWidget *m_window;
    std::map<QString, std::unique_ptr<platform::ToolbarItem>> m_items;
};

// "MainWindow" tool-bar, named controls::mainToolBar, without a delegate yet.
[[nodiscard]] platform::Toolbar *makeMainToolBar(QWidget *window);

} // namespace mailhost
