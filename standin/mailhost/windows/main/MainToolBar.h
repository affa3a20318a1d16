// The host's own items for the tool-bar of its main window.
#pragma once

#include "platform/toolkit/Toolbar.h"

#include <QVariantList>
#include <functional>
#include <map>
#include <memory>

namespace mailhost {

// What the items do, filled by the main window's controller. An empty one leaves its item disabled.
struct MainToolBarActions {
    std::function<void()> newAppointment;
    std::function<void()> newMeeting;
    std::function<void()> previous;
    std::function<void()> today;
    std::function<void()> next;
    std::function<void()> showDay;
    std::function<void()> showWeek;
    std::function<void()> deleteSelected;
    // Asked when the items are validated; without it the item is always enabled.
    std::function<bool()> canDelete;
};

// The items of one window and the answers that the tool-bar's delegate gives. Keep it as long as the
// tool-bar.
class MainToolBarItems {
public:
    explicit MainToolBarItems(MainToolBarActions actions);
    ~MainToolBarItems();

    // The item of that identifier, made once; nullptr for one that is not the host's.
    [[nodiscard]] platform::ToolbarItem *item(const QString &identifier);
    [[nodiscard]] static QVariantList defaultIdentifiers();
    [[nodiscard]] static QVariantList allowedIdentifiers();

private:
    MainToolBarActions m_actions;
    std::map<QString, std::unique_ptr<platform::ToolbarItem>> m_items;
};

// "MainWindow" tool-bar, named controls::mainToolBar, without a delegate yet.
[[nodiscard]] platform::Toolbar *makeMainToolBar(QWidget *window);

} // namespace mailhost
