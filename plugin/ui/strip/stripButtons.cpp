// The strip's buttons: how they are made, when they show, what they do.
#include "platform/services/Contained.h"
#include "platform/services/Services.h"
#include "platform/toolkit/Frames.h"
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/controls/vlSettingsButton.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/util/localizedString.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"

#include <QMenu>

namespace {

const QString imageAdd = u"Schedule_Meeting_normal"_s;
const QString imageRemove = u"Remove_Meeting_normal"_s;
const QString imageSettings = u"Settings_normal"_s;
const QString imageSettingsDisabled = u"Settings_disable"_s;
const QString imageAudioConference = u"Add_Personal_Audio_Conference"_s;

// The account in what the tool-bar leaves for the next editor.
const QString keyPacAccountNo = u"pacAccountNo"_s;
constexpr qint64 firstAccount = 1;
constexpr qint64 secondAccount = 2;
constexpr int meetingType = 0; // there is only one

// Connects a button or a menu item; what goes wrong in the action stays in it.
template<typename Sender, typename Signal>
void onClick(Sender *sender, Signal signal, vlActionAdditionView *strip,
             void (vlActionAdditionView::*action)()) {
    QObject::connect(sender, signal, strip, [strip, action] {
        platform::contained("a meeting button", [strip, action] {
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

// Later buttons lie above earlier ones where their frames overlap; Tab goes from left to right.
void vlActionAdditionView::createVLButton() {
    createAddPACButton();
    m_addButton = makeButton(this, gAddButtonFrame, imageAdd, uiKeys::addButton,
                             &vlActionAdditionView::onClickAddVelaMeeting);
    m_cancelButton = makeButton(this, gCancelButtonFrame, imageRemove, uiKeys::cancelButton,
                                &vlActionAdditionView::onClickCancelVelaMeeting);
    m_changeButton = makeButton(this, gChangeSettingButtonFrame, imageSettings, uiKeys::changeSettingButton,
                                &vlActionAdditionView::onClickChangeSettings);
    setTabOrder(m_addButton, m_addPACButton);
    setTabOrder(m_addPACButton, m_changeButton);
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
    QAction *title = m_addPACButtonPopupMenu->addAction(QString()); // a pull-down's own title, never listed
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

void vlActionAdditionView::refreshUI() {
    onUIChanged(m_model.state());
}

void vlActionAdditionView::hideAll() {
    setShown({});
}

void vlActionAdditionView::setShown(const ShownButtons &shown) {
    const bool hadFocus = focusWidget() && focusWidget()->hasFocus();
    // What is shown comes first: the keyboard's focus goes on to it when its own button goes away.
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
        if (hadFocus && button->hasFocus())
            (shown.settings ? static_cast<QWidget *>(m_changeButton) : m_addButton)->setFocus();
        button->hide();
    }
    update();
}

void vlActionAdditionView::enableChangeSettingButton(bool enabled) {
    m_changeButton->setToolTip(enabled ? QString() : vlLocalizedString(uiKeys::notAllowChangeSettingsTip));
    m_changeButton->setImage(BundleImage(enabled ? imageSettings : imageSettingsDisabled));
    m_changeButton->setEnabled(enabled);
    update();
}

void vlActionAdditionView::onClickAddVelaMeeting() {
    attachOutlookERCalendarEventEditorWindowController(editorWindowController());
    if (m_model.state() == StripState::NoMeeting)
        vlApptUIActionMgr::sharedInstance().addVLMeeting(this);
}

void vlActionAdditionView::onClickAddPACAccount1() {
    addPACMeeting(firstAccount);
}

void vlActionAdditionView::onClickAddPACAccount2() {
    addPACMeeting(secondAccount);
}

void vlActionAdditionView::addPACMeeting(qint64 account) {
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

void vlActionAdditionView::autoRemoveVelaMeeting() {
    onClickCancelVelaMeeting();
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
    const qint64 account = rt::integerValue(argument.value(keyPacAccountNo));
    if (account == secondAccount)
        onClickAddPACAccount2();
    else if (account == firstAccount)
        onClickAddPACAccount1();
}
