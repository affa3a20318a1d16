// Strips, sheets, alerts and request windows that only take notes.
#pragma once

#include "plugin/link/linkPorts.h"
#include "plugin/workflow/MeetingContext.h"
#include "plugin/workflow/workflowPorts.h"
#include "tests/support/FakeHost.h"

#include <QMap>
#include <QPointer>

class RecordingStrip : public EditorStrip {
public:
    explicit RecordingStrip(FakeEditor &editor);
    ~RecordingStrip() override { m_context->strip = nullptr; }

    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const override { return m_context; }
    [[nodiscard]] QString getAppointmentWindowID() const override;
    [[nodiscard]] rt::Object *editorWindowController() const override { return m_windowController.get(); }
    [[nodiscard]] rt::Object *editorViewController() const override { return m_editor.get(); }
    [[nodiscard]] bool blockDeleteVelaMeeting() const override { return blocked; }
    [[nodiscard]] bool currentIsVelaMeeting() const override;
    [[nodiscard]] bool isApptDirty() const override { return false; }
    void setOLUIAction(HostAction newAction) override { action = newAction; }
    [[nodiscard]] HostAction getOLUIAction() const override { return action; }
    [[nodiscard]] DataStatus getVlDataStatus() override { return status; }
    void setActionResultData(const QVariantMap &answer) override;
    void setActionToSuccess() override { succeeded = true; }
    [[nodiscard]] bool getActionResult() const override { return succeeded; }
    void onUIChanged(StripState state) override { shown.append(state); }
    void refreshUI() override {}
    void enableChangeSettingButton(bool) override {}
    void autoRemoveVelaMeeting() override {}

    bool blocked = false;
    bool succeeded = false;
    HostAction action = HostAction::None;
    DataStatus status = DataStatus::NothingToDo;
    QList<StripState> shown;
    QPointer<QWidget> window;

private:
    std::shared_ptr<MeetingContext> m_context = MeetingContext::make();
    rt::Weak<> m_editor;
    rt::Weak<> m_windowController;
};

class RecordingStrips : public EditorStrips {
public:
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const override;
    [[nodiscard]] EditorStrip *
    getVlActionAdditionViewByApptWindowID(const QString &identifier) const override;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindow(const QWidget *window) const override;
    void createStrip(QWidget *headerView, const QRectF &frame) { created.append({headerView, frame}); }

    QList<RecordingStrip *> live;
    QList<std::pair<QWidget *, QRectF>> created;
};

class RecordingSheets : public SettingsSheets {
public:
    void addSchSettingWindowToArray(const QString &id, const QVariantMap &data, QWidget *parent) override;
    void showSchSettingWindow(const QString &id) override { shown.append(id); }
    [[nodiscard]] bool hasSchSettingWindow(const QString &id) const override { return settings.contains(id); }
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &id) const override {
        return settings.value(id);
    }
    void refreshSettingWindow(const QString &id) override { refreshed.append(id); }

    QMap<QString, QVariantMap> settings; // of the sheets that there are
    QStringList shown;
    QStringList refreshed;
    QWidget *parent = nullptr;
    QVariantMap data;
};

class RecordingAlerts : public WorkflowAlerts, public RequestFeedback {
public:
    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress(ClientAnswer) override;
    void showAlertMessage(QWidget *window, const QString &message) override;
    void showClientError(QWidget *window, const QString &message) override;
    void showRemoveMeetingWarning(rt::Object *editor, QWidget *window) override;

    QList<std::pair<QWidget *, QString>> messages;
    QList<QWidget *> progressOn; // every window that was shown a progress
    QList<std::pair<rt::Object *, QWidget *>> removeWarnings;
};
