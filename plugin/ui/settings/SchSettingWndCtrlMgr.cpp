#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"

#include "platform/toolkit/Windows.h"
#include "plugin/ui/settings/VlSettingViewController.h"

#include <QDialog>
#include <algorithm>

SchSettingWndCtrlMgr::SchSettingWndCtrlMgr() {
    platform::observeWindowWillClose(this, [this](QWidget *window) { dropSheetsOf(window); });
}

SchSettingWndCtrlMgr::~SchSettingWndCtrlMgr() = default;

// Also drops the sheets of deleted windows.
void SchSettingWndCtrlMgr::dropSheetsOf(const QWidget *window) {
    std::erase_if(m_entries, [window](const Entry &entry) {
        const bool isDropped = !entry->parentWindow() || entry->parentWindow() == window;
        if (isDropped && entry->settingWindow())
            entry->settingWindow()->hide(); // without ending the sheet, so that it reports no choice
        return isDropped;
    });
}

void SchSettingWndCtrlMgr::addSchSettingWindowToArray(const QString &apptWindowID, const QVariantMap &data,
                                                      QWidget *parent) {
    if (!parent || apptWindowID.isEmpty())
        return;
    VlSettingWindowController *existing = getSchSettingWindowInArray(apptWindowID);
    if (existing && existing->parentWindow() != parent) {
        dropSheetsOf(existing->parentWindow());
        existing = nullptr;
    }
    if (existing)
        existing->initFields(false);
    else
        m_entries.emplace_back(new VlSettingWindowController(apptWindowID, data, parent));
}

void SchSettingWndCtrlMgr::showSchSettingWindow(const QString &apptWindowID) {
    if (VlSettingWindowController *controller = getSchSettingWindowInArray(apptWindowID))
        controller->showWindowSheet();
}

VlSettingWindowController *
SchSettingWndCtrlMgr::getSchSettingWindowInArray(const QString &apptWindowID) const {
    if (apptWindowID.isEmpty())
        return nullptr;
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&apptWindowID](const Entry &entry) {
        return entry->parentWindow() && entry->apptWindowID() == apptWindowID;
    });
    return found == m_entries.end() ? nullptr : found->get();
}

bool SchSettingWndCtrlMgr::hasSchSettingWindow(const QString &apptWindowID) const {
    return getSchSettingWindowInArray(apptWindowID) != nullptr;
}

QVariantMap SchSettingWndCtrlMgr::getVlSettingsData(const QString &apptWindowID) const {
    const VlSettingWindowController *controller = getSchSettingWindowInArray(apptWindowID);
    return controller ? controller->getVlSettingsData() : QVariantMap();
}

void SchSettingWndCtrlMgr::refreshSettingWindow(const QString &apptWindowID) {
    VlSettingWindowController *controller = getSchSettingWindowInArray(apptWindowID);
    if (controller && controller->settingViewController())
        controller->settingViewController()->refreshUI();
}
