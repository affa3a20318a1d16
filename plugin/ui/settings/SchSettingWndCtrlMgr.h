// The settings sheets of all open appointment editors.
#pragma once

#include "plugin/ui/settings/VlSettingWindowController.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/workflowPorts.h"

#include <QObject>
#include <vector>

// One controller for each appointment window identifier, owned here. It is dropped when its parent window
// closes or dies: the identifier may then come again for another window.
class SchSettingWndCtrlMgr : public QObject,
                             public SettingsSheets,
                             public SharedObject<SchSettingWndCtrlMgr> {
    Q_OBJECT
public:
    SchSettingWndCtrlMgr();
    ~SchSettingWndCtrlMgr() override;

    // Nothing without a parent or an identifier. The sheet takes its values from the settings model, not from
    // `data`.
    void addSchSettingWindowToArray(const QString &apptWindowID, const QVariantMap &data,
                                    QWidget *parent) override;
    void showSchSettingWindow(const QString &apptWindowID) override;
    [[nodiscard]] VlSettingWindowController *getSchSettingWindowInArray(const QString &apptWindowID) const;
    [[nodiscard]] bool hasSchSettingWindow(const QString &apptWindowID) const override;
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &apptWindowID) const override;
    void refreshSettingWindow(const QString &apptWindowID) override;

private:
    // A window may close from inside a call of its own sheet's controller.
    struct DeleteLater {
        void operator()(QObject *object) const { object->deleteLater(); }
    };
    using Entry = std::unique_ptr<VlSettingWindowController, DeleteLater>;

    void dropSheetsOf(const QWidget *window);
    std::vector<Entry> m_entries;
};
