// The strip of buttons in the header of one appointment editor.
#pragma once

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/link/clientCodes.h"
#include "plugin/ui/strip/StripModel.h"
#include "plugin/workflow/MeetingContext.h"
#include "plugin/workflow/vlActionResultMgr.h"
#include "plugin/workflow/workflowPorts.h"

#include <QPointer>
#include <QWidget>
#include <memory>

class QMenu;
class vlPopupButton;
class vlSettingsButton;

// Frames: x, y, width, height in points, origin at the bottom left of the parent view.
inline constexpr double g_vlActionAddtionView_NormalWidth = 400.0;
inline constexpr double g_vlActionAdditionView_RightMargin = 10.0;
inline constexpr double g_vlActionAdditionView_MinX = 460.0;
inline constexpr QRectF gAddButtonFrame{16, 12, 168, 60};
inline constexpr QRectF gAddPACButtonFrame{140, 12, 200, 60};
inline constexpr QRectF gCancelButtonFrame{120, 12, 188, 60};
inline constexpr QRectF gChangeSettingButtonFrame{16, 12, 110, 60};

// Keys of onChangeUINotification(): the host's event and its editor's window controller.
inline const QString keyECCalendarEvent = u"keyECCalendarEvent"_s;
inline const QString keyERCalendarEventEditorWindowController = u"keyERCalendarEventEditorWindowController"_s;

// Created together with the host's header view, which owns it. It gets its editor later and is empty until
// then. vlActionAdditionViewMonitor lists it until the editor's window closes; it is deleted soon afterwards.
// Host objects are never kept alive. Main thread only.
class vlActionAdditionView : public QWidget, public EditorStrip {
    Q_OBJECT
public:
    explicit vlActionAdditionView(const QRectF &frame, QWidget *headerView = nullptr);
    ~vlActionAdditionView() override;
    // Makes a strip in a host's header view, which owns it. Does nothing without a view.
    static void create(QWidget *headerView, const QRectF &frame);

    // Notifies the strip of that window controller that its editor is open. Ignored without such a strip, and
    // on repetition.
    static void onChangeUINotification(const QVariantMap &notice);

    void initMembers(rt::Object *windowController, rt::Object *event);
    // Makes the adapter of the editor, unless it exists or the controller does not belong to an editor.
    void attachOutlookERCalendarEventEditorWindowController(rt::Object *windowController);
    // Copies the meeting stored in the event into the strip's context.
    void initMeetingData(rt::Object *event);
    void loadOIProperty(rt::Object *event);
    void onUIInitialize(rt::Object *) {
        onUIChanged(currentIsVelaMeeting() ? StripState::MeetingAttached : StripState::NoMeeting);
    }
    // Carries out the command that the tool-bar left for the next editor to open.
    void autoAddToVlMeeting();

    [[nodiscard]] rt::Object *editorWindowController() const override;
    [[nodiscard]] rt::Object *editorViewController() const override;
    [[nodiscard]] QString getAppointmentWindowID() const override;

    void onUIChanged(StripState state) override;
    void refreshUI() override { onUIChanged(m_model.state()); }
    void hideAll() { setShown({}); }
    [[nodiscard]] bool needHideVlView() const;
    void enableChangeSettingButton(bool enabled) override;
    [[nodiscard]] StripState uiStatus() const { return m_model.state(); }

    [[nodiscard]] DataStatus getVlDataStatus() override;
    [[nodiscard]] bool currentIsVelaMeeting() const override { return !m_context->meetingKey.isEmpty(); }
    [[nodiscard]] bool isApptDirty() const override;
    [[nodiscard]] bool blockDeleteVelaMeeting() const override;
    void setIsSupportVela(bool supported) { m_model.setIsSupportVela(supported); }
    [[nodiscard]] bool isSupportVela() const { return m_model.isSupportVela(); }

    [[nodiscard]] bool getActionResult() const override { return m_vlActionResult.getActionResult(); }
    void setActionResultData(const QVariantMap &answer) override {
        m_vlActionResult.setActionResultData(answer);
    }
    void setActionToSuccess() override;
    void setOLUIAction(HostAction action) override { m_OLCalEventViewAction = action; }
    [[nodiscard]] HostAction getOLUIAction() const override { return m_OLCalEventViewAction; }

    // The buttons' actions. Ignores a click that does not fit the state.
    void onClickAddVelaMeeting();
    void onClickAddPACAccount1() { addPACMeeting(PACAccount::First); }
    void onClickAddPACAccount2() { addPACMeeting(PACAccount::Second); }
    void onClickCancelVelaMeeting();
    void onClickChangeSettings();
    void autoRemoveVelaMeeting() override { onClickCancelVelaMeeting(); }
    void popupNotSupportPACWarningMsg();

    void onWindowWillClose(QWidget *window);

    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const override { return m_context; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void createVLButton();
    void createAddPACButton();
    void setShown(const ShownButtons &shown);
    void addPACMeeting(PACAccount account);

    std::shared_ptr<MeetingContext> m_context;
    vlActionResultMgr m_vlActionResult;
    rt::Weak<> m_idERCalendarEventEditorWindowCtrl;
    rt::Weak<> m_idECCalendarEvent;
    std::unique_ptr<vlERCalendarEventEditorViewController> m_pERCalendarEventEditorViewCtrl;
    StripModel m_model;
    HostAction m_OLCalEventViewAction = HostAction::None;
    vlSettingsButton *m_addButton = nullptr; // child widgets, like the next ones
    vlPopupButton *m_addPACButton = nullptr;
    vlSettingsButton *m_cancelButton = nullptr;
    vlSettingsButton *m_changeButton = nullptr;
    std::unique_ptr<QMenu> m_addPACButtonPopupMenu;
    QPointer<QWidget> m_ownWindow; // set when the strip gets its editor
};
