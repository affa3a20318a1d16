// The settings sheets of all open appointment editors.
#pragma once

#include "plugin/ui/settings/VlSettingWindowController.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/workflowPorts.h"

#include <QObject>
#include <vector>

// Owns one controller for each appointment window identifier. Drops it when its parent window is closed or
// deleted, because another window may then get the same identifier.
class SchSettingWndCtrlMgr : public QObject,
                             public SettingsSheets,
                             public SharedObject<SchSettingWndCtrlMgr> {
    Q_OBJECT
public:
    SchSettingWndCtrlMgr();
    ~SchSettingWndCtrlMgr() override;

    // Does nothing without a parent or an identifier. The sheet reads its values from the settings model, not
    // from `data`.
    void addSchSettingWindowToArray(const QString &apptWindowID, const QVariantMap &data,
                                    QWidget *parent) override;
    void showSchSettingWindow(const QString &apptWindowID) override;
    [[nodiscard]] VlSettingWindowController *getSchSettingWindowInArray(const QString &apptWindowID) const;
    [[nodiscard]] bool hasSchSettingWindow(const QString &apptWindowID) const override;
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &apptWindowID) const override;
    void refreshSettingWindow(const QString &apptWindowID) override;

private:
    // A window may close during a call to its own sheet's controller.
    struct DeleteLater {
        void operator()(QObject *object) const { object->deleteLater(); }
    };
    using Entry = std::unique_ptr<VlSettingWindowController, DeleteLater>;

    void dropSheetsOf(const QWidget *window);
    std::vector<Entry> m_entries;
};
