#include "plugin/ui/toolbar/vlToolbarItemMgr.h"

#include "platform/services/Services.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/util/localizedString.h"

#include <QAction>
#include <QPixmap>

namespace {

const QString startMenuResource = u"vlStartMeetingMenu"_s;
const QString schedulePACMenuResource = u"vlSchedulePACMeetingMenu"_s;
// Not localised, because the message is about the system and not about the plug-in.
const QString unsupportedSystem =
    u"Your version of OS is not supported. Please upgrade your OS version to 10.6 later."_s;
const QString withVideo = u"1"_s;
const QString withoutVideo = u"0"_s;
constexpr char tagProperty[] = "tag";

enum StartTag { TagWithVideo = 0, TagWithoutVideo = 1 };
enum AccountTag { TagAccount1 = 0, TagAccount2 = 1 };

int tagOf(const QAction *choice) {
    return choice->property(tagProperty).toInt();
}

QString toolTipFor(const QString &key) {
    return vlAppHelper::sharedInstance().isSupportedOSVersion() ? vlLocalizedString(key) : unsupportedSystem;
}

void later(std::function<void()> work) {
    platform::services().runLoop->callAfter(0, std::move(work));
}

void send(ToolbarCommand command, const QVariantMap &data = {}) {
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(command), data);
}

} // namespace

// Describes an item: its texts, the setup of its click or menu, and the member that holds it.
struct vlToolbarItemMgr::Kind {
    QString identifier;
    QString labelKey;
    QString toolTipKey;
    QString imageName;
    std::unique_ptr<VlToolbarItem> vlToolbarItemMgr::*item;
    void (vlToolbarItemMgr::*equip)(VlToolbarItem &item);
};

const QList<vlToolbarItemMgr::Kind> &vlToolbarItemMgr::kinds() {
    using M = vlToolbarItemMgr;
    static const QList<Kind> kinds = {
        {vlStartToolbarItemIdentifier, uiKeys::instantMeetingLabel, uiKeys::instantMeetingTooltip,
         u"Start_Meeting_normal_32"_s, &M::m_StartToolbarItem, &M::equipStart},
        {vlScheduleToolbarItemIdentifier, uiKeys::scheduleMeetingLabel, uiKeys::scheduleMeetingTooltip,
         u"Schedule_Meeting_normal_32"_s, &M::m_ScheduleToolbarItem, &M::equipSchedule},
        {vlSchedulePACToolbarItemIdentifier, uiKeys::schedulePACMeetingLabel,
         uiKeys::schedulePACMeetingTooltip, u"Schedule_PACMeeting_32"_s, &M::m_SchedulePACToolbarItem,
         &M::equipSchedulePAC},
        {vlOpenLogFolderIdentifier, uiKeys::openLogFolderLabel, uiKeys::openLogFolderTooltip,
         u"OpenLogFolder_normal_32"_s, &M::m_OpenLogFolderToolbarItem, &M::equipOpenLogFolder},
    };
    return kinds;
}

VlToolbarItem *vlToolbarItemMgr::itemFor(const QString &identifier) {
    for (const Kind &kind : kinds())
        if (kind.identifier == identifier)
            return itemOf(kind);
    return nullptr;
}

VlToolbarItem *vlToolbarItemMgr::itemOf(const Kind &kind) {
    std::unique_ptr<VlToolbarItem> &item = this->*kind.item;
    if (item)
        return item.get();
    item = std::make_unique<VlToolbarItem>(kind.identifier);
    item->setLabel(vlLocalizedString(kind.labelKey));
    item->setPaletteLabel(vlLocalizedString(uiKeys::palletLabel));
    item->setToolTip(toolTipFor(kind.toolTipKey));
    (this->*kind.equip)(*item);
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0, 3.0})
        icon.addPixmap(QPixmap::fromImage(platform::services().pluginBundle->image(kind.imageName, ratio)));
    item->setBundleImage(BundleImage(kind.imageName), icon);
    return item.get();
}

void vlToolbarItemMgr::equipStart(VlToolbarItem &item) {
    if (!supportStartWithoutVideo())
        return setClick(item, &vlToolbarItemMgr::onClickStartMeetingWithVideo);
    loadStartMenu();
    setMenuView(item, m_StartMenu, &vlToolbarItemMgr::popupStartContextMenu);
}

void vlToolbarItemMgr::equipSchedule(VlToolbarItem &item) {
    setClick(item, &vlToolbarItemMgr::onClickScheduleVelaMeeting);
}

void vlToolbarItemMgr::equipSchedulePAC(VlToolbarItem &item) {
    m_SchedulePACMenu = loadMenu(schedulePACMenuResource, &vlToolbarItemMgr::onContextMenuAction_SchedulePAC);
    setMenuView(item, m_SchedulePACMenu, &vlToolbarItemMgr::popupSchedulePACContextMenu);
}

void vlToolbarItemMgr::equipOpenLogFolder(VlToolbarItem &item) {
    setClick(item, &vlToolbarItemMgr::onClickOpenLogFolder);
}

void vlToolbarItemMgr::setClick(VlToolbarItem &item, Clicked clicked) {
    item.setAction([this, clicked](platform::ToolbarItem &, QWidget *) { (this->*clicked)(); });
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

vlToolbarItemMgr::Menu vlToolbarItemMgr::loadMenu(const QString &resource, Chosen chosen) {
    std::unique_ptr<QWidget> loaded = platform::services().pluginBundle->loadInterface(resource);
    auto *menu = qobject_cast<QMenu *>(loaded.get());
    if (!menu)
        return nullptr;
    for (QAction *choice : menu->actions())
        if (!choice->isSeparator())
            QObject::connect(choice, &QAction::triggered, choice,
                             [this, choice, chosen] { (this->*chosen)(choice); });
    return Menu(static_cast<QMenu *>(loaded.release()));
}

void vlToolbarItemMgr::loadStartMenu() {
    m_StartMenu = loadMenu(startMenuResource, &vlToolbarItemMgr::onContextMenuAction_Start);
    if (!m_StartMenu)
        return;
    for (QAction *choice : m_StartMenu->actions())
        if (!choice->isSeparator())
            choice->setText(vlLocalizedString(tagOf(choice) == TagWithoutVideo ? uiKeys::startWithoutVideo
                                                                               : uiKeys::startWithVideo));
    refreshStartMenu();
    // Checked at each opening, because the client may be updated while the host runs.
    QObject::connect(m_StartMenu.get(), &QMenu::aboutToShow, m_StartMenu.get(),
                     [this] { refreshStartMenu(); });
}

// Disables the choices that would do nothing.
void vlToolbarItemMgr::refreshStartMenu() {
    const bool canDoWithout = vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo();
    for (QAction *choice : m_StartMenu->actions())
        if (tagOf(choice) == TagWithoutVideo)
            choice->setEnabled(canDoWithout);
}

void vlToolbarItemMgr::onContextMenuAction_Start(const QAction *choice) {
    const int tag = tagOf(choice);
    if (tag == TagWithVideo)
        later([this] { onClickStartMeetingWithVideo(); });
    else if (tag == TagWithoutVideo)
        later([this] { onClickStartMeetingWithoutVideo(); });
}

void vlToolbarItemMgr::onContextMenuAction_SchedulePAC(const QAction *choice) {
    const int tag = tagOf(choice);
    if (tag != TagAccount1 && tag != TagAccount2)
        return;
    const PACAccount account = tag == TagAccount1 ? PACAccount::First : PACAccount::Second;
    later([this, account] { onClickSchedulePersonalAudioMeeting({{keyPACAccountNo, qint64(account)}}); });
}

void vlToolbarItemMgr::onClickStartMeetingWithVideo() {
    send(ToolbarCommand::StartInstantMeeting, {{keyStartWithVideo, withVideo}});
}

void vlToolbarItemMgr::onClickStartMeetingWithoutVideo() {
    send(ToolbarCommand::StartInstantMeeting, {{keyStartWithVideo, withoutVideo}});
}

void vlToolbarItemMgr::onClickScheduleVelaMeeting() {
    send(ToolbarCommand::ScheduleNewMeeting);
}

void vlToolbarItemMgr::onClickSchedulePersonalAudioMeeting(const QVariantMap &account) {
    send(ToolbarCommand::ScheduleNewPACMeeting, account);
}

void vlToolbarItemMgr::onClickOpenLogFolder() {
    send(ToolbarCommand::OpenLogFolder);
}
