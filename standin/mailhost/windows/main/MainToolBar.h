// The host's own items for the tool-bar of its main window.
#pragma once

#include "platform/toolkit/ToolbarItem.h"

#include <QVariantList>
#include <memory>

namespace mailhost {

// A new item of that identifier, nullptr if it is not the host's. It triggers a command (QAction) of the
// window's menus and is enabled together with it.
[[nodiscard]] std::unique_ptr<platform::ToolbarItem> makeToolBarItem(const QString &identifier,
                                                                     const QWidget *window);
[[nodiscard]] QVariantList defaultToolBarIdentifiers();
[[nodiscard]] QVariantList allowedToolBarIdentifiers();

} // namespace mailhost
