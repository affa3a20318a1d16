// The tool-bar's interface for the sheet in which the user rearranges it.
#pragma once

#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QList>
#include <QString>

namespace platform {

class CustomizableToolbar {
public:
    virtual ~CustomizableToolbar() = default;

    // In order, including spaces, separators and items that do not fit into the window at present.
    [[nodiscard]] virtual QList<ToolbarItem *> visibleItems() = 0;
    // The items that the user can add: allowed items, offered items and spaces. Items already in the tool-bar
    // are excluded unless they may occur more than once.
    [[nodiscard]] virtual QList<ToolbarItem *> paletteItems() = 0;
    // Indexes are those of visibleItems() and are clamped. Returns false and changes nothing if the item is
    // already in the tool-bar or no part of the program supplies it.
    virtual bool insertItem(const QString &identifier, int index) = 0;
    virtual void removeItem(int index) = 0;
    virtual void moveItem(int from, int to) = 0;
    [[nodiscard]] virtual ToolbarDisplayMode displayMode() const = 0;
    virtual void setDisplayMode(ToolbarDisplayMode mode) = 0;
    // Also adds the items that other parts of the program insert into a new tool-bar.
    virtual void restoreDefault() = 0;
};

} // namespace platform
