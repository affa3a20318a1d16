#include "plugin/ui/strip/vlActionAdditionView.h"

#include "platform/Guarded.h"
#include "platform/runtime/Runtime.h"
#include "platform/services/Services.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"

#include <QMenu>
#include <QPainter>

namespace {

constexpr double closeReportDelay = 0.01; // seconds, so that the host has closed its window

const rt::Selector selectorWindow("window");
const rt::Selector selectorEditorViewController("editorViewController");
// The host's original save, under the hook's selector.
const rt::Selector selectorHostSave(olItem_hostSave);

constexpr double edgeWidth = 0.5;
constexpr double dashOn = 1.1; // points
constexpr double dashOff = 2.1;

const QString imageAdd = u"Schedule_Meeting_normal"_s;
const QString imageRemove = u"Remove_Meeting_normal"_s;
const QString imageSettings = u"Settings_normal"_s;
const QString imageSettingsDisabled = u"Settings_disable"_s;
const QString imageAudioConference = u"Add_Personal_Audio_Conference"_s;

constexpr int meetingType = 0; // there is only one

// Connects a button or a menu item; exceptions thrown by the action do not leave it.
template<typename Sender, typename Signal>
void onClick(Sender *sender, Signal signal, vlActionAdditionView *strip,
             void (vlActionAdditionView::*action)()) {
    QObject::connect(sender, signal, strip, [strip, action] {
        platform::guarded("a meeting button", [strip, action] {
            const ContextScope scope(strip);
            (strip->*action)();
        });
    });
}

vlSettingsButton *makeButton(vlActionAdditionView *strip, const QRectF &frame, const QString &imageName,
                             const QString &titleKey, void (vlActionAdditionView::*action)()) {
    auto *button = new vlSettingsButton(strip);
    platform::setBottomLeftFrame(button, frame);
    button->hide();
    button->setImage(BundleImage(imageName));
    button->setTitle(vlLocalizedString(titleKey));
    onClick(button, &QAbstractButton::clicked, strip, action);
    return button;
}

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
    if (!strip || strip->m_ownWindow) // set if the editor is shown again, e.g. by a double click
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
    m_model.setIsSupportVela(vlECCalendarEvent(event).isSupportVela());
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
    const QVariantMap record = vlOLUtils::toNSDictionary(vlECCalendarEvent(event).olmUCCapabilities());
    const QString key = rt::textValue(record.value(vl_OLProperty_MeetingKey));
    if (key.isNull())
        return;
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    store.setMeetingKey(key);
    store.setEncodeMailBody(rt::textValue(record.value(vl_OLProperty_EncodeMailBody)));
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

bool vlActionAdditionView::isApptDirty() const {
    return m_pERCalendarEventEditorViewCtrl && m_pERCalendarEventEditorViewCtrl->isDirty();
}

bool vlActionAdditionView::blockDeleteVelaMeeting() const {
    return m_pERCalendarEventEditorViewCtrl && m_pERCalendarEventEditorViewCtrl->blockDeleteVelaMeeting();
}

void vlActionAdditionView::setActionToSuccess() {
    setActionResultData({{keyApptWindowID, getAppointmentWindowID()}, {keyVLResult, keyVLSuccess}});
}

void vlActionAdditionView::onWindowWillClose(QWidget *window) {
    if (!m_ownWindow || window != m_ownWindow)
        return;
    vlActionAdditionViewMonitor::sharedInstance().removeVlActionAdditionViewInstance(this);
    setParent(nullptr); // hides it
    m_ownWindow = nullptr;
    m_context->strip = nullptr;
    platform::services().runLoop->callAfter(closeReportDelay, [context = m_context] {
        const RequestOwner::Scope scope(context);
        vlApptUIActionMgr::sharedInstance().closeOLAppointment();
    });
    deleteLater(); // the window may be closed by one of the strip's buttons
}

void vlActionAdditionView::paintEvent(QPaintEvent *) {
    if (needHideVlView())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(textColor(*this, true), edgeWidth, Qt::CustomDashLine, Qt::RoundCap);
    pen.setDashPattern({dashOn / edgeWidth, dashOff / edgeWidth}); // in multiples of the pen's width
    painter.setPen(pen);
    const QRectF bounds = rect();
    painter.drawLine(bounds.bottomLeft(), bounds.topLeft());
    painter.drawLine(bounds.bottomRight(), bounds.topRight());
}

// Where frames overlap, a later button covers an earlier one. Tab moves from left to right.
void vlActionAdditionView::createVLButton() {
    createAddPACButton();
    m_addButton = makeButton(this, gAddButtonFrame, imageAdd, uiKeys::addButton,
                             &vlActionAdditionView::onClickAddVelaMeeting);
    m_cancelButton = makeButton(this, gCancelButtonFrame, imageRemove, uiKeys::cancelButton,
                                &vlActionAdditionView::onClickCancelVelaMeeting);
    m_changeButton = makeButton(this, gChangeSettingButtonFrame, imageSettings, uiKeys::changeSettingButton,
                                &vlActionAdditionView::onClickChangeSettings);
    setTabOrder(m_addButton, m_addPACButton);
    setTabOrder(m_changeButton, m_cancelButton);
}

void vlActionAdditionView::createAddPACButton() {
    m_addPACButton = new vlPopupButton(this);
    platform::setBottomLeftFrame(m_addPACButton, gAddPACButtonFrame);
    m_addPACButton->hide();
    m_addPACButton->setImage(BundleImage(imageAudioConference));
    m_addPACButton->setTitle(vlLocalizedString(uiKeys::addPACButton));
    onClick(m_addPACButton, &QAbstractButton::clicked, this, &vlActionAdditionView::onClickAddPACAccount1);

    m_addPACButtonPopupMenu = std::make_unique<QMenu>();
    QAction *title = m_addPACButtonPopupMenu->addAction(QString()); // the menu's title, never shown
    title->setVisible(false);
    onClick(title, &QAction::triggered, this, &vlActionAdditionView::onClickAddPACAccount1);
    QAction *first = m_addPACButtonPopupMenu->addAction(vlLocalizedString(uiKeys::account1));
    onClick(first, &QAction::triggered, this, &vlActionAdditionView::onClickAddPACAccount1);
    m_addPACButtonPopupMenu->addSeparator();
    QAction *second = m_addPACButtonPopupMenu->addAction(vlLocalizedString(uiKeys::account2));
    onClick(second, &QAction::triggered, this, &vlActionAdditionView::onClickAddPACAccount2);
    m_addPACButton->setMenu(m_addPACButtonPopupMenu.get());
}

void vlActionAdditionView::onUIChanged(StripState state) {
    m_model.setState(state);
    platform::setBottomLeftFrame(m_changeButton, gChangeSettingButtonFrame);
    const bool hasAudioConferences =
        state == StripState::NoMeeting && vlGetPACHelper::sharedInstance().isPACEnabled(); // reads a file
    if (const auto shown = m_model.shownButtons(needHideVlView(), hasAudioConferences))
        setShown(*shown);
}

void vlActionAdditionView::setShown(const ShownButtons &shown) {
    // Buttons are shown before others are hidden, so that the focus of a hidden button can move to a visible
    // one.
    const std::pair<QWidget *, bool> buttons[] = {{m_addButton, shown.add},
                                                  {m_addPACButton, shown.audioConference},
                                                  {m_changeButton, shown.settings},
                                                  {m_cancelButton, shown.remove}};
    for (const auto &[button, isShown] : buttons)
        if (isShown)
            button->show();
    for (const auto &[button, isShown] : buttons) {
        if (isShown)
            continue;
        if (button->hasFocus())
            (shown.settings ? static_cast<QWidget *>(m_changeButton) : m_addButton)->setFocus();
        button->hide();
    }
    update();
}

void vlActionAdditionView::enableChangeSettingButton(bool enabled) {
    m_changeButton->setToolTip(enabled ? QString() : vlLocalizedString(uiKeys::notAllowChangeSettingsTip));
    m_changeButton->setImage(BundleImage(enabled ? imageSettings : imageSettingsDisabled));
    m_changeButton->setEnabled(enabled);
}

void vlActionAdditionView::onClickAddVelaMeeting() {
    attachOutlookERCalendarEventEditorWindowController(editorWindowController());
    if (m_model.state() == StripState::NoMeeting)
        vlApptUIActionMgr::sharedInstance().addVLMeeting(this);
}

void vlActionAdditionView::addPACMeeting(PACAccount account) {
    if (vlOnbehalfData::sharedInstance().isOnbehalf(getAppointmentWindowID()))
        return popupNotSupportPACWarningMsg();
    attachOutlookERCalendarEventEditorWindowController(editorWindowController());
    if (m_model.state() == StripState::NoMeeting)
        vlApptUIActionMgr::sharedInstance().addPACMeeting(this, account);
}

void vlActionAdditionView::onClickCancelVelaMeeting() {
    if (m_model.state() != StripState::MeetingAttached)
        return;
    const QPointer<vlActionAdditionView> alive(this);
    vlApptUIActionMgr::sharedInstance().cancelVLMeeting(this, meetingType);
    if (alive)
        enableChangeSettingButton(true);
}

void vlActionAdditionView::onClickChangeSettings() {
    const QPointer<vlActionAdditionView> alive(this);
    vlApptUIActionMgr::sharedInstance().changeVLMeeting(this, meetingType);
    if (alive && m_pERCalendarEventEditorViewCtrl)
        m_pERCalendarEventEditorViewCtrl->setIsDirty(true);
}

void vlActionAdditionView::popupNotSupportPACWarningMsg() {
    vlAlertHelper::sharedInstance().showAlertMessage(parentWidget() ? window() : nullptr,
                                                     vlLocalizedString(uiKeys::notSupportPACForOnBehalf));
}

void vlActionAdditionView::autoAddToVlMeeting() {
    QVariantMap &flags = platform::services().mainThreadDictionary;
    if (flags.remove(keyFlagAutoAddToVlMeeting) > 0) {
        flags.remove(keyFlagVlMeetingArgument);
        return onClickAddVelaMeeting();
    }
    if (flags.remove(keyFlagAutoAddToPACMeeting) == 0)
        return;
    const QVariantMap argument = rt::mapValue(flags.take(keyFlagVlMeetingArgument));
    const auto account = PACAccount(rt::integerValue(argument.value(keyPACAccountNo)));
    if (account == PACAccount::Second)
        onClickAddPACAccount2();
    else if (account == PACAccount::First)
        onClickAddPACAccount1();
}
