// The interfaces that the meeting workflow needs from the user interface above it.
#pragma once

#include "platform/runtime/Object.h"

#include <QRectF>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>

struct MeetingContext;
class QWidget;

// The state that a strip shows. The strip's table of states relies on the numbers.
enum class StripState : qint32 { Hidden = 1, NoMeeting = 2, MeetingAttached = 3 };
// What has to be done before the appointment is saved. The strip computes it at save time.
enum class DataStatus : qint32 {
    None = 0,
    NothingToDo = 1,
    NothingToSend = 2,
    UpdateMeeting = 3,
    DeleteMeeting = 4
};
// The host operation that waits for the meeting work to end.
enum class HostAction : quint32 {
    None = 0,
    ActionSave = 1,
    ActionSaveAndClose = 2,
    ActionSend = 3,
    ActionSaveAndCloseWithError = 4,
    ActionCalendarDrag = 5
};

// The frame of a new strip until its header is drawn for the first time, in points from the bottom left of
// the header: for older hosts and for hosts from 15.9 on.
inline constexpr QRectF g_vlAdditionViewFrame{870, 60, 400, 70};
inline constexpr QRectF g_vlAdditionViewFrame_OL2016{870, 13, 400, 70};

// The strip of buttons of one appointment editor, as the workflow sees it.
class EditorStrip {
public:
    virtual ~EditorStrip() = default;
    // The context of the editor's appointment; never nullptr.
    [[nodiscard]] virtual const std::shared_ptr<MeetingContext> &context() const = 0;
    // The identifier of the window that contains the strip; null without a window.
    [[nodiscard]] virtual QString getAppointmentWindowID() const = 0;
    // Host objects, not owned; nullptr if unknown.
    [[nodiscard]] virtual rt::Object *editorWindowController() const = 0;
    [[nodiscard]] virtual rt::Object *editorViewController() const = 0;
    [[nodiscard]] virtual bool blockDeleteVelaMeeting() const = 0;
    [[nodiscard]] virtual bool currentIsVelaMeeting() const = 0;
    [[nodiscard]] virtual bool isApptDirty() const = 0;
    virtual void setOLUIAction(HostAction action) = 0;
    [[nodiscard]] virtual HostAction getOLUIAction() const = 0;
    [[nodiscard]] virtual DataStatus getVlDataStatus() = 0;
    virtual void setActionResultData(const QVariantMap &answer) = 0;
    virtual void setActionToSuccess() = 0;
    [[nodiscard]] virtual bool getActionResult() const = 0;
    virtual void onUIChanged(StripState state) = 0;
    virtual void refreshUI() = 0;
    virtual void enableChangeSettingButton(bool enabled) = 0;
    // Does the same as the remove button.
    virtual void autoRemoveVelaMeeting() = 0;
};

// The existing strips. A lookup searches in order of registration and returns nullptr if it finds no strip.
class EditorStrips {
public:
    virtual ~EditorStrips() = default;
    [[nodiscard]] virtual EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const = 0;
    [[nodiscard]] virtual EditorStrip *
    getVlActionAdditionViewByApptWindowID(const QString &identifier) const = 0;
    [[nodiscard]] virtual EditorStrip *getVlActionAdditionViewByWindow(const QWidget *window) const = 0;
};

// The settings sheets, by appointment window identifier.
class SettingsSheets {
public:
    virtual ~SettingsSheets() = default;
    virtual void addSchSettingWindowToArray(const QString &apptWindowID, const QVariantMap &data,
                                            QWidget *parent) = 0;
    virtual void showSchSettingWindow(const QString &apptWindowID) = 0;
    [[nodiscard]] virtual bool hasSchSettingWindow(const QString &apptWindowID) const = 0;
    // The sheet's current settings; empty without a sheet.
    [[nodiscard]] virtual QVariantMap getVlSettingsData(const QString &apptWindowID) const = 0;
    virtual void refreshSettingWindow(const QString &apptWindowID) = 0;
};

// Alerts that the workflow itself shows.
class WorkflowAlerts {
public:
    virtual ~WorkflowAlerts() = default;
    virtual void showAlertMessage(QWidget *window, const QString &message) = 0;
    // Says that the meeting cannot be sent for another organiser and offers to remove it.
    virtual void showRemoveMeetingWarning(rt::Object *editor, QWidget *window) = 0;
};

// The composition root or a test fills the ports; they are not owned. An empty port shows nothing and finds
// nothing.
struct WorkflowPorts {
    EditorStrips *strips = nullptr;
    SettingsSheets *sheets = nullptr;
    WorkflowAlerts *alerts = nullptr;
    // Makes a strip with that frame (origin at the bottom left) in a host's header view, which owns it.
    std::function<void(QWidget *headerView, const QRectF &frame)> createStrip;
    static WorkflowPorts &instance();
};
