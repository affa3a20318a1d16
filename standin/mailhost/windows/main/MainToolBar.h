// The host's own items for the tool-bar of its main window.
#pragma once

#include "platform/toolkit/Toolbar.h"

#include <QVariantList>
#include <map>
#include <memory>

namespace mailhost {

// The items of one window and the results of the tool-bar's delegate. It must outlive the tool-bar. Each item
// triggers a command (QAction) of the window's menus and is enabled together with it.
class MainToolBarItems {
public:
    // The window must outlive this object.
    explicit MainToolBarItems(QWidget *window)
        : m_window(window) {}

    // The item of that identifier, made once; nullptr if it is not the host's.
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
