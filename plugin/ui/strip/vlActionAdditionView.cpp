#include "plugin/ui/strip/vlActionAdditionView.h"

#include "platform/runtime/Runtime.h"
#include "platform/services/Services.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"

#include <QMenu>
#include <QPainter>

namespace {

constexpr double closeReportDelay = 0.01; // seconds: the host has taken its window down by then

const rt::Selector selectorWindow("window");
const rt::Selector selectorEditorViewController("editorViewController");
// The host's own save, under the name that the hook has given it.
const rt::Selector selectorHostSave(olItem_hostSave);

constexpr double edgeWidth = 0.5;
constexpr double dashOn = 1.1; // points
constexpr double dashOff = 2.1;

} // namespace

vlActionAdditionView::vlActionAdditionView(const QRectF &frame, QWidget *headerView)
    : QWidget(headerView)
    , m_context(MeetingContext::make()) {
    m_context->strip = this;
    platform::setBottomLeftFrame(this, frame);
    createVLButton();
    platform::observeWindowWillClose(this, [this](QWidget *window) { onWindowWillClose(window); });
    vlActionAdditionViewMonitor::sharedInstance().addVlActionAdditionViewInstance(this);
}

vlActionAdditionView::~vlActionAdditionView() {
    m_context->strip = nullptr;
    vlActionAdditionViewMonitor::sharedInstance().removeVlActionAdditionViewInstance(this);
}

void vlActionAdditionView::create(QWidget *headerView, const QRectF &frame) {
    if (headerView)
        (new vlActionAdditionView(frame, headerView))->show();
}

void vlActionAdditionView::onChangeUINotification(const QVariantMap &notice) {
    rt::Object *controller = rt::objectValue(notice.value(keyERCalendarEventEditorWindowController));
    const rt::Weak<> event(rt::objectValue(notice.value(keyECCalendarEvent)));
    const QPointer<vlActionAdditionView> strip = dynamic_cast<vlActionAdditionView *>(
        vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByEditorWinCtrl(controller));
    if (!strip || strip->m_ownWindow) // none, or shown again, as by a second double click
        return;
    const RequestOwner::Scope scope(strip->m_context);
    strip->initMembers(controller, event.get());
    strip->initMeetingData(event.get());
    if (strip->currentIsVelaMeeting() && strip->isSupportVela()) {
        strip->attachOutlookERCalendarEventEditorWindowController(controller);
        rt::send(strip->editorViewController(), selectorHostSave);
    }
    if (strip) // a save runs host code, which may close the window
        strip->onUIInitialize(event.get());
    if (strip)
        strip->autoAddToVlMeeting();
}

void vlActionAdditionView::initMembers(rt::Object *windowController, rt::Object *event) {
    if (vlOLUtils::kindofClass(windowController, key_vlERCalendarEventEditorWindowController)) {
        m_idERCalendarEventEditorWindowCtrl = rt::Weak<>(windowController);
        m_ownWindow = rt::widgetValue(rt::send(windowController, selectorWindow));
    }
    m_idECCalendarEvent = rt::Weak<>(event);
    if (!vlECCalendarEvent(event).isSupportVela())
        m_model.setIsSupportVela(false);
}

void vlActionAdditionView::attachOutlookERCalendarEventEditorWindowController(rt::Object *windowController) {
    if (m_pERCalendarEventEditorViewCtrl ||
        !vlOLUtils::kindofClass(windowController, key_vlERCalendarEventEditorWindowController) ||
        !rt::respondsTo(windowController, selectorEditorViewController))
        return;
    m_pERCalendarEventEditorViewCtrl = std::make_unique<vlERCalendarEventEditorViewController>(
        rt::objectValue(rt::send(windowController, selectorEditorViewController)));
    m_pERCalendarEventEditorViewCtrl->setInitBodyContent();
}

void vlActionAdditionView::initMeetingData(rt::Object *event) {
    loadOIProperty(event);
    if (currentIsVelaMeeting())
        vlMeetingDataMgr::sharedInstance().setSavedApptInfo(vlECCalendarEvent(event).getVlMeetingData());
}

void vlActionAdditionView::loadOIProperty(rt::Object *event) {
    const QString stored = vlECCalendarEvent(event).olmUCCapabilities();
    const QVariantMap record = rt::mapValue(vlOLUtils::toArrayOrNSDictionary(stored));
    const QString key = rt::textValue(record.value(vl_OLProperty_MeetingKey));
    if (key.isNull())
        return;
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    store.setMeetingKey(key);
    store.setEncodeMailBody(rt::textValue(record.value(vl_OLProperty_EncodeMailBody)));
}

void vlActionAdditionView::onUIInitialize(rt::Object *) {
    onUIChanged(currentIsVelaMeeting() ? StripState::MeetingAttached : StripState::NoMeeting);
}

rt::Object *vlActionAdditionView::editorWindowController() const {
    return parentWidget() ? platform::windowController(window()) : nullptr;
}

rt::Object *vlActionAdditionView::editorViewController() const {
    return rt::objectValue(rt::send(editorWindowController(), selectorEditorViewController));
}

QString vlActionAdditionView::getAppointmentWindowID() const {
    return rt::identifier(rt::widgetValue(rt::send(editorWindowController(), selectorWindow)));
}

bool vlActionAdditionView::needHideVlView() const {
    return m_model.needHideVlView(m_pERCalendarEventEditorViewCtrl.get(), bool(m_idECCalendarEvent));
}

DataStatus vlActionAdditionView::getVlDataStatus() {
    return m_model.getVlDataStatus(m_pERCalendarEventEditorViewCtrl.get(), currentIsVelaMeeting());
}

bool vlActionAdditionView::currentIsVelaMeeting() const {
    return !m_context->meetingKey.isEmpty();
}

bool vlActionAdditionView::isApptDirty() const {
    return m_pERCalendarEventEditorViewCtrl && m_pERCalendarEventEditorViewCtrl->isDirty();
}

bool vlActionAdditionView::blockDeleteVelaMeeting() const {
    return m_pERCalendarEventEditorViewCtrl && m_pERCalendarEventEditorViewCtrl->blockDeleteVelaMeeting();
}

bool vlActionAdditionView::getActionResult() const {
    return m_vlActionResult.getActionResult();
}

void vlActionAdditionView::setActionResultData(const QVariantMap &answer) {
    m_vlActionResult.setActionResultData(answer);
}

void vlActionAdditionView::setActionToSuccess() {
    setActionResultData({{keyApptWindowID, getAppointmentWindowID()}, {keyVLResult, keyVLSuccess}});
}

void vlActionAdditionView::onWindowWillClose(QWidget *window) {
    if (!m_ownWindow || window != m_ownWindow)
        return;
    vlActionAdditionViewMonitor::sharedInstance().removeVlActionAdditionViewInstance(this);
    hide();
    setParent(nullptr);
    m_ownWindow = nullptr;
    m_context->strip = nullptr;
    const QString identifier = rt::identifier(window);
    platform::services().runLoop->callAfter(closeReportDelay, [identifier, context = m_context] {
        const RequestOwner::Scope scope(context);
        sendWindowCloseNotification(identifier);
    });
    deleteLater(); // one of its own buttons may be what closes the window
}

void vlActionAdditionView::sendWindowCloseNotification(const QString &apptWindowID) {
    vlApptUIActionMgr::sharedInstance().closeOLAppointment(apptWindowID);
}

void vlActionAdditionView::paintEvent(QPaintEvent *) {
    if (needHideVlView())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(textColor(*this, true), edgeWidth, Qt::CustomDashLine, Qt::RoundCap);
    pen.setDashPattern({dashOn / edgeWidth, dashOff / edgeWidth}); // in units of the pen's width
    painter.setPen(pen);
    const QRectF bounds = rect();
    painter.drawLine(bounds.bottomLeft(), bounds.topLeft());
    painter.drawLine(bounds.bottomRight(), bounds.topRight());
}
