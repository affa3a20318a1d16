// The plug-in's four items in the tool-bars of the main windows, with their menus.
#pragma once

#include "plugin/ui/controls/menuOpening.h"
#include "plugin/ui/toolbar/VlToolbarItem.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "plugin/util/sharedObject.h"
#include "plugin/util/vlPluginBuildMgr.h"

#include <memory>

inline const QString vlStartToolbarItemIdentifier = u"VLStartToolbarItem"_s;
inline const QString vlScheduleToolbarItemIdentifier = u"VLScheduleToolbarItem"_s;
inline const QString vlSchedulePACToolbarItemIdentifier = u"VLSchedulePACToolbarItem"_s;
inline const QString vlOpenLogFolderIdentifier = u"VLOpenLogFolder"_s;

class QAction;

class vlToolbarItemMgr : public SharedObject<vlToolbarItemMgr> {
public:
    // Each item is made on first use, serves all tool-bars and is owned by the manager.
    [[nodiscard]] VlToolbarItem *VLStartToolbarItem() { return itemFor(vlStartToolbarItemIdentifier); }
    [[nodiscard]] VlToolbarItem *VLScheduleToolbarItem() { return itemFor(vlScheduleToolbarItemIdentifier); }
    [[nodiscard]] VlToolbarItem *vlSchedulePACToolbarItem() {
        return itemFor(vlSchedulePACToolbarItemIdentifier);
    }
    [[nodiscard]] VlToolbarItem *VLOpenLogFolderToolbarItem() { return itemFor(vlOpenLogFolderIdentifier); }
    // The item with that identifier; nullptr for other identifiers.
    [[nodiscard]] VlToolbarItem *itemFor(const QString &identifier);
    [[nodiscard]] bool supportStartWithoutVideo() const {
        return vlPluginBuildMgr::supportStartWithoutVideo();
    }

    // `view` is the control used in the tool-bar; the menu opens at its lower left corner.
    void popupStartContextMenu(QWidget *view) { popUpBelow(m_StartMenu.get(), view); }
    void popupSchedulePACContextMenu(QWidget *view) { popUpBelow(m_SchedulePACMenu.get(), view); }
    // The actions of the menus' choices, selected by tag; other tags do nothing. The command runs on the next
    // turn of the run loop, after the menu has closed.
    void onContextMenuAction_Start(const QAction *choice);
    void onContextMenuAction_SchedulePAC(const QAction *choice);
    void onClickStartMeetingWithVideo();
    void onClickStartMeetingWithoutVideo();
    void onClickScheduleVelaMeeting();
    void onClickSchedulePersonalAudioMeeting(const QVariantMap &account);
    void onClickOpenLogFolder();

private:
    struct Kind;
    using Menu = std::shared_ptr<QMenu>;
    using Clicked = void (vlToolbarItemMgr::*)();
    using Opener = void (vlToolbarItemMgr::*)(QWidget *);
    using Chosen = void (vlToolbarItemMgr::*)(const QAction *);

    [[nodiscard]] static const QList<Kind> &kinds();
    [[nodiscard]] VlToolbarItem *itemOf(const Kind &kind);
    void equipStart(VlToolbarItem &item);
    void equipSchedule(VlToolbarItem &item);
    void equipSchedulePAC(VlToolbarItem &item);
    void equipOpenLogFolder(VlToolbarItem &item);
    void setClick(VlToolbarItem &item, Clicked clicked);
    void setMenuView(VlToolbarItem &item, const Menu &menu, Opener open);
    // Null if the resource does not exist.
    [[nodiscard]] Menu loadMenu(const QString &resource, Chosen chosen);
    void loadStartMenu();
    void refreshStartMenu();

    Menu m_StartMenu;
    Menu m_SchedulePACMenu;
    std::unique_ptr<VlToolbarItem> m_StartToolbarItem;
    std::unique_ptr<VlToolbarItem> m_ScheduleToolbarItem;
    std::unique_ptr<VlToolbarItem> m_SchedulePACToolbarItem;
    std::unique_ptr<VlToolbarItem> m_OpenLogFolderToolbarItem;
};
