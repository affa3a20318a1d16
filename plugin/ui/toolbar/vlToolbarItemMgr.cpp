#include "plugin/ui/toolbar/vlToolbarItemMgr.h"

#include "platform/services/Services.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlPluginBuildMgr.h"

#include <QAction>
#include <QPixmap>

namespace {

const QString startMenuResource = u"vlStartMeetingMenu"_s;
const QString schedulePACMenuResource = u"vlSchedulePACMeetingMenu"_s;
// Said in English to everyone: it is about the system and not about the plug-in.
const QString unsupportedSystem =
    u"Your version of OS is not supported. Please upgrade your OS version to 10.6 later."_s;
const QString withVideo = u"1"_s;
const QString withoutVideo = u"0"_s;
constexpr char tagProperty[] = "tag";

enum StartTag { TagWithVideo = 0, TagWithoutVideo = 1 };
enum AccountTag { TagAccount1 = 0, TagAccount2 = 1 };

// -1 for an entry without a tag.
int tagOf(const QAction *choice) {
    const QVariant tag = choice ? choice->property(tagProperty) : QVariant();
    return tag.isValid() ? tag.toInt() : -1;
}

QString toolTipFor(const QString &key) {
    return vlAppHelper::sharedInstance().isSupportedOSVersion() ? vlLocalizedString(key) : unsupportedSystem;
}

void later(std::function<void()> work) {
    platform::services().runLoop->callAfter(0, std::move(work));
}

} // namespace

vlToolbarItemMgr::vlToolbarItemMgr() = default;
vlToolbarItemMgr::~vlToolbarItemMgr() = default;

bool vlToolbarItemMgr::supportStartWithoutVideo() const {
    return vlPluginBuildMgr::supportStartWithoutVideo();
}

std::unique_ptr<VlToolbarItem> vlToolbarItemMgr::makeItem(const Description &description) const {
    auto item = std::make_unique<VlToolbarItem>(description.identifier);
    item->setLabel(vlLocalizedString(description.labelKey));
    item->setPaletteLabel(vlLocalizedString(uiKeys::palletLabel));
    item->setToolTip(toolTipFor(description.toolTipKey));
    return item;
}

void vlToolbarItemMgr::setImage(VlToolbarItem &item, const QString &imageName) const {
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0, 3.0})
        icon.addPixmap(QPixmap::fromImage(platform::services().pluginBundle->image(imageName, ratio)));
    item.setBundleImage(BundleImage(imageName), icon);
}

void vlToolbarItemMgr::setMenuView(VlToolbarItem &item, const Menu &menu, Opener open) {
    item.setAction([this, open](platform::ToolbarItem &, QWidget *view) { (this->*open)(view); });
    item.setMenu(menu.get());
    item.setView(
        [menu] {
            auto *view = new vlPopupToolbarView;
            view->setMenu(menu);
            return view;
        },
        [](QWidget *view, const platform::ToolbarItem &shown) {
            auto *popup = static_cast<vlPopupToolbarView *>(view);
            popup->setImage(static_cast<const VlToolbarItem &>(shown).bundleImage());
            popup->setAccessibleName(platform::withoutMnemonic(shown.label()));
            popup->setAccessibleDescription(shown.toolTip());
            popup->setToolTip(shown.toolTip());
        });
}

VlToolbarItem *vlToolbarItemMgr::VLStartToolbarItem() {
    if (m_StartToolbarItem)
        return m_StartToolbarItem.get();
    m_StartToolbarItem =
        makeItem({vlStartToolbarItemIdentifier, uiKeys::instantMeetingLabel, uiKeys::instantMeetingTooltip});
    if (supportStartWithoutVideo()) {
        loadStartMenu();
        setMenuView(*m_StartToolbarItem, m_StartMenu, &vlToolbarItemMgr::popupStartContextMenu);
    } else {
        m_StartToolbarItem->setAction(
            [this](platform::ToolbarItem &, QWidget *) { onClickStartMeetingWithVideo(); });
    }
    setImage(*m_StartToolbarItem, u"Start_Meeting_normal_32"_s);
    return m_StartToolbarItem.get();
}

VlToolbarItem *vlToolbarItemMgr::VLScheduleToolbarItem() {
    if (m_ScheduleToolbarItem)
        return m_ScheduleToolbarItem.get();
    m_ScheduleToolbarItem = makeItem(
        {vlScheduleToolbarItemIdentifier, uiKeys::scheduleMeetingLabel, uiKeys::scheduleMeetingTooltip});
    m_ScheduleToolbarItem->setAction(
        [this](platform::ToolbarItem &, QWidget *) { onClickScheduleVelaMeeting(); });
    setImage(*m_ScheduleToolbarItem, u"Schedule_Meeting_normal_32"_s);
    return m_ScheduleToolbarItem.get();
}

VlToolbarItem *vlToolbarItemMgr::vlSchedulePACToolbarItem() {
    if (m_SchedulePACToolbarItem)
        return m_SchedulePACToolbarItem.get();
    m_SchedulePACToolbarItem = makeItem({vlSchedulePACToolbarItemIdentifier, uiKeys::schedulePACMeetingLabel,
                                         uiKeys::schedulePACMeetingTooltip});
    loadSchedulePACMenu();
    setMenuView(*m_SchedulePACToolbarItem, m_SchedulePACMenu, &vlToolbarItemMgr::popupSchedulePACContextMenu);
    setImage(*m_SchedulePACToolbarItem, u"Schedule_PACMeeting_32"_s);
    return m_SchedulePACToolbarItem.get();
}

VlToolbarItem *vlToolbarItemMgr::VLOpenLogFolderToolbarItem() {
    if (m_OpenLogFolderToolbarItem)
        return m_OpenLogFolderToolbarItem.get();
    m_OpenLogFolderToolbarItem =
        makeItem({vlOpenLogFolderIdentifier, uiKeys::openLogFolderLabel, uiKeys::openLogFolderTooltip});
    m_OpenLogFolderToolbarItem->setAction(
        [this](platform::ToolbarItem &, QWidget *) { onClickOpenLogFolder(); });
    setImage(*m_OpenLogFolderToolbarItem, u"OpenLogFolder_normal_32"_s);
    return m_OpenLogFolderToolbarItem.get();
}

VlToolbarItem *vlToolbarItemMgr::itemFor(const QString &identifier) {
    if (identifier == vlStartToolbarItemIdentifier)
        return VLStartToolbarItem();
    if (identifier == vlScheduleToolbarItemIdentifier)
        return VLScheduleToolbarItem();
    if (identifier == vlSchedulePACToolbarItemIdentifier)
        return vlSchedulePACToolbarItem();
    if (identifier == vlOpenLogFolderIdentifier)
        return VLOpenLogFolderToolbarItem();
    return nullptr;
}

vlToolbarItemMgr::Menu vlToolbarItemMgr::loadMenu(const QString &resource) {
    std::unique_ptr<QWidget> loaded = platform::services().pluginBundle->loadInterface(resource);
    auto *menu = qobject_cast<QMenu *>(loaded.get());
    if (!menu)
        return nullptr;
    loaded.release();
    return Menu(menu);
}

void vlToolbarItemMgr::connectChoice(QAction *choice, Chosen chosen) {
    QObject::connect(choice, &QAction::triggered, choice,
                     [this, choice, chosen] { (this->*chosen)(choice); });
}

void vlToolbarItemMgr::loadStartMenu() {
    m_StartMenu = loadMenu(startMenuResource);
    if (!m_StartMenu)
        return;
    for (QAction *choice : m_StartMenu->actions()) {
        if (choice->isSeparator())
            continue;
        choice->setText(vlLocalizedString(tagOf(choice) == TagWithoutVideo ? uiKeys::startWithoutVideo
                                                                           : uiKeys::startWithVideo));
        connectChoice(choice, &vlToolbarItemMgr::onContextMenuAction_Start);
    }
    refreshStartMenu();
    // The client may be updated while the host runs.
    QObject::connect(m_StartMenu.get(), &QMenu::aboutToShow, m_StartMenu.get(),
                     [this] { refreshStartMenu(); });
}

// A choice that does nothing is one that cannot be chosen.
void vlToolbarItemMgr::refreshStartMenu() {
    const bool canDoWithout = vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo();
    for (QAction *choice : m_StartMenu->actions())
        if (!choice->isSeparator() && tagOf(choice) == TagWithoutVideo)
            choice->setEnabled(canDoWithout);
}

void vlToolbarItemMgr::loadSchedulePACMenu() {
    m_SchedulePACMenu = loadMenu(schedulePACMenuResource);
    if (!m_SchedulePACMenu)
        return;
    for (QAction *choice : m_SchedulePACMenu->actions())
        if (!choice->isSeparator())
            connectChoice(choice, &vlToolbarItemMgr::onContextMenuAction_SchedulePAC);
}

void vlToolbarItemMgr::popUp(const Menu &menu, QWidget *view) {
    if (menu && view)
        menu->popup(view->mapToGlobal(QPoint(0, view->height())));
}

void vlToolbarItemMgr::popupStartContextMenu(QWidget *view) {
    popUp(m_StartMenu, view);
}

void vlToolbarItemMgr::popupSchedulePACContextMenu(QWidget *view) {
    popUp(m_SchedulePACMenu, view);
}

void vlToolbarItemMgr::onContextMenuAction_Start(const QAction *choice) {
    switch (tagOf(choice)) {
    case TagWithVideo:
        later([this] { onClickStartMeetingWithVideo(); });
        break;
    case TagWithoutVideo:
        later([this] { onClickStartMeetingWithoutVideo(); });
        break;
    default:
        break;
    }
}

void vlToolbarItemMgr::onContextMenuAction_SchedulePAC(const QAction *choice) {
    const int tag = tagOf(choice);
    if (tag != TagAccount1 && tag != TagAccount2)
        return;
    const QVariantMap account{{keyPACAccountNo, tag == TagAccount1 ? 1 : 2}};
    later([this, account] { onClickSchedulePersonalAudioMeeting(account); });
}

void vlToolbarItemMgr::onClickStartMeetingWithVideo() {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::StartInstantMeeting),
                                                              {{keyStartWithVideo, withVideo}});
}

void vlToolbarItemMgr::onClickStartMeetingWithoutVideo() {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::StartInstantMeeting),
                                                              {{keyStartWithVideo, withoutVideo}});
}

void vlToolbarItemMgr::onClickScheduleVelaMeeting() {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
}

void vlToolbarItemMgr::onClickSchedulePersonalAudioMeeting(const QVariantMap &account) {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewPACMeeting),
                                                              account);
}

void vlToolbarItemMgr::onClickOpenLogFolder() {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::OpenLogFolder));
}
