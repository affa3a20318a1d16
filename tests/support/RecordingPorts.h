// Ports for strips, sheets, alerts and request windows that only record calls.
#pragma once

#include "plugin/workflow/MeetingContext.h"
#include "plugin/workflow/workflowPorts.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordingLink.h"

#include <QPointer>

class RecordingStrip : public EditorStrip {
public:
    explicit RecordingStrip(FakeEditor &editor)
        : window(editor.window())
        , m_editor(&editor)
        , m_windowController(editor.windowController()) {
        m_context->strip = this;
    }
    ~RecordingStrip() override { m_context->strip = nullptr; }

    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const override { return m_context; }
    [[nodiscard]] QString getAppointmentWindowID() const override { return rt::identifier(window.data()); }
    [[nodiscard]] rt::Object *editorWindowController() const override { return m_windowController.get(); }
    [[nodiscard]] rt::Object *editorViewController() const override { return m_editor.get(); }
    [[nodiscard]] bool blockDeleteVelaMeeting() const override { return blocked; }
    [[nodiscard]] bool currentIsVelaMeeting() const override { return !m_context->meetingKey.isEmpty(); }
    [[nodiscard]] bool isApptDirty() const override { return false; }
    void setOLUIAction(HostAction newAction) override { action = newAction; }
    [[nodiscard]] HostAction getOLUIAction() const override { return action; }
    [[nodiscard]] DataStatus getVlDataStatus() override { return status; }
    void setActionResultData(const QVariantMap &answer) override {
        succeeded = answer.value(keyVLResult) == keyVLSuccess;
    }
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
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const override {
        return first([=](const auto &strip) { return strip.editorViewController() == editor; });
    }
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByApptWindowID(const QString &id) const override {
        return first([&](const auto &strip) { return strip.getAppointmentWindowID() == id; });
    }
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindow(const QWidget *window) const override {
        return first([=](const auto &strip) { return strip.window == window; });
    }
    void createStrip(QWidget *headerView, const QRectF &frame) { created.append({headerView, frame}); }

    QList<RecordingStrip *> live;
    QList<std::pair<QWidget *, QRectF>> created;

private:
    template<typename Matches>
    EditorStrip *first(Matches matches) const {
        const auto found = std::find_if(live.begin(), live.end(), [&](const auto *s) { return matches(*s); });
        return found == live.end() ? nullptr : *found;
    }
};

class RecordingSheets : public SettingsSheets {
public:
    void addSchSettingWindowToArray(const QString &, const QVariantMap &, QWidget *) override {}
    void showSchSettingWindow(const QString &id) override { shown.append(id); }
    [[nodiscard]] bool hasSchSettingWindow(const QString &) const override { return false; }
    [[nodiscard]] QVariantMap getVlSettingsData(const QString &) const override { return {}; }
    void refreshSettingWindow(const QString &) override {}

    QStringList shown;
};

class RecordingAlerts : public RecordingFeedback, public WorkflowAlerts {
public:
    void showAlertMessage(QWidget *window, const QString &message) override {
        RecordingFeedback::showAlertMessage(window, message);
    }
    void showRemoveMeetingWarning(rt::Object *, QWidget *) override { ++removeWarnings; }

    int removeWarnings = 0;
};
