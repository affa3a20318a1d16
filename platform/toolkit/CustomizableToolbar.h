// A tool-bar as the sheet sees it in which a user rearranges it.
#pragma once

#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QList>
#include <QString>

namespace platform {

class CustomizableToolbar {
public:
    virtual ~CustomizableToolbar() = default;

    // In order, with spaces and separators, and with those for which the window is too narrow at present.
    [[nodiscard]] virtual QList<ToolbarItem *> visibleItems() = 0;
    // The items that can be added: allowed ones, offered ones and spaces, without those in the tool-bar
    // unless they may come more than once.
    [[nodiscard]] virtual QList<ToolbarItem *> paletteItems() = 0;
    // Indexes are those of visibleItems(); one beyond either end counts as that end. False, and nothing
    // changed, for an item that stands in the tool-bar already or that nobody supplies.
    virtual bool insertItem(const QString &identifier, int index) = 0;
    virtual void removeItem(int index) = 0;
    virtual void moveItem(int from, int to) = 0;
    [[nodiscard]] virtual ToolbarDisplayMode displayMode() const = 0;
    virtual void setDisplayMode(ToolbarDisplayMode mode) = 0;
    // With what the offering parts of the program put into a fresh tool-bar.
    virtual void restoreDefault() = 0;
};

} // namespace platform
