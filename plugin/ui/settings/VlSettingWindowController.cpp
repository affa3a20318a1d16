#include "plugin/ui/settings/VlSettingWindowController.h"

#include "platform/services/Services.h"
#include "platform/toolkit/Windows.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlCommon.h"
#include "plugin/ui/settings/ButtonGroupViewController.h"
#include "plugin/ui/settings/VlSettingViewController.h"
#include "plugin/ui/settings/vlOnbehalfViewController.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlOnbehalfData.h"

#include <QDebug>
#include <QDialog>

namespace {
const QString interfaceName = u"VlSettingWindowController"_s;
} // namespace

VlSettingWindowController::VlSettingWindowController(const QString &apptWindowID, const QVariantMap &,
                                                     QWidget *parentWindow)
    : m_model(apptWindowID)
    , m_parentWindow(parentWindow) {}

VlSettingWindowController::~VlSettingWindowController() = default;

void VlSettingWindowController::loadWindow() {
    std::unique_ptr<QWidget> loaded = platform::services().pluginBundle->loadInterface(interfaceName);
    auto *dialog = qobject_cast<QDialog *>(loaded.get());
    if (!dialog)
        return;
    auto settings = std::make_unique<VlSettingViewController>(this, m_model, dialog);
    auto buttons = std::make_unique<ButtonGroupViewController>(this, dialog);
    auto banner = std::make_unique<vlOnbehalfViewController>(m_model, dialog);
    if (!settings->isConnected() || !buttons->isConnected() || !banner->isConnected()) {
        qWarning("The interface description of the meeting settings lacks some of their controls");
        return;
    }
    m_window.reset(static_cast<QDialog *>(loaded.release()));
    m_window->setAttribute(Qt::WA_QuitOnClose, false);
    m_settings = std::move(settings);
    m_buttons = std::move(buttons);
    m_banner = std::move(banner);
    awakeFromNib();
}

void VlSettingWindowController::awakeFromNib() {
    initFields(true);
}

void VlSettingWindowController::initFields(bool first) {
    if (!m_window)
        return;
    const vlSettingData::OneWrite write;
    if (first)
        m_settings->initFields();
    else
        m_settings->updateUIItems();
    m_buttons->initWithLocalString();
    m_banner->initFields();
    m_model.setScheduleFor();
}

void VlSettingWindowController::showWindowSheet() {
    if (!m_parentWindow)
        return;
    if (!m_window)
        loadWindow();
    if (!m_window || m_window->isVisible())
        return;
    platform::beginSheet(m_window.get(), m_parentWindow, [this](int result) { endSheet(result); });
    // Otherwise the toolkit moves the focus to the first control when the window becomes active.
    m_window->setFocus(Qt::OtherFocusReason);
}

// Escape and the window's close button have the effect of Cancel.
void VlSettingWindowController::endSheet(int result) {
    m_buttons->postCommitCommand(result == QDialog::Accepted);
}

void VlSettingWindowController::makeFirstResponderWithObject(QWidget *control) {
    const QPointer<QWidget> alive(control);
    platform::services().runLoop->callAfter(0, [alive] {
        if (alive)
            alive->setFocus(Qt::OtherFocusReason);
    });
}

void VlSettingWindowController::postSettingCommitCommand(const QVariantMap &command) {
    if (m_settings)
        m_settings->onSettingsCommit();
    QVariantMap commit = command;
    commit.insert(keyApptWindowID, apptWindowID());
    platform::services().notifications->post(notify_SettingCommit, commit);
    if (rt::boolValue(command.value(keyButtonClickIsOK)))
        saveSettingsToUserProfile();
}

QVariantMap VlSettingWindowController::getVlSettingsData() const {
    return m_settings ? m_settings->getSettingsData() : QVariantMap();
}

void VlSettingWindowController::saveSettingsToUserProfile() const {
    vlCommon::createDocumentOutlookPluginRootPath();
    vlOLUtils::saveStrToFile(vlOLUtils::toJSONString(getVlSettingsData()),
                             vlCommon::getVlUserProfilePath(vlCommon::getUID()));
}

bool VlSettingWindowController::isOnbehalf() const {
    return vlOnbehalfData::sharedInstance().isOnbehalf(apptWindowID());
}

QString VlSettingWindowController::onbehalfEmail() const {
    return vlOnbehalfData::sharedInstance().onbehalfEmail(apptWindowID());
}
