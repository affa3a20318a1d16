#include "plugin/ui/settings/VlSettingViewController.h"

#include "plugin/link/localizedString.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/VlSettingWindowController.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>

namespace {

constexpr qint32 maxPasswordLength = 10;
constexpr int settingsAreaHeight = 412;    // with the third-party text
constexpr int audioBoxHeight = 152;        // with the third-party text
constexpr int besidePersonalMeeting = 100; // points: margins and check mark to the sides of its text
constexpr const char *propertyTag = "tag"; // a radio button's audio type

int tagOf(const QRadioButton *button) {
    return button->property(propertyTag).toInt();
}

// Sets a radio button without its neighbours having a say: none of them may be on.
void setOn(QRadioButton *button, bool on) {
    button->setAutoExclusive(false);
    button->setChecked(on);
    button->setAutoExclusive(true);
}

} // namespace

void VlSettingViewController::initFields() {
    passwordFormatter->setMaxLength(maxPasswordLength);
    initWithLocalString();
    m_settingData.initSettingData();
    m_settingData.initWithSiteMeetingInfo();
    initializeItems();
    updateCtrlPos();
    if (m_settingData.usePMI())
        getPMIMeetingInfo();
}

void VlSettingViewController::initWithLocalString() {
    m_sheet->setWindowTitle(vlLocalizedString(uiKeys::settingWindowTitle));
    videoOptionsBox->setTitle(vlLocalizedString(uiKeys::videoBox));
    audioOptionsBox->setTitle(vlLocalizedString(uiKeys::audioBox));
    meetingOptionsBox->setTitle(vlLocalizedString(uiKeys::meetingBox));
    textVideoHost->setText(vlLocalizedString(uiKeys::videoHost));
    textVideoPaticipant->setText(vlLocalizedString(uiKeys::videoParticipant));
    for (const VideoMatrix &matrix : {m_host, m_participants}) {
        matrix.on->setText(vlLocalizedString(uiKeys::radioOn));
        matrix.off->setText(vlLocalizedString(uiKeys::radioOff));
    }
    telephonyButton->setText(vlLocalizedString(uiKeys::audioTelephony));
    voipButton->setText(vlLocalizedString(uiKeys::audioVoip));
    bothButton->setText(vlLocalizedString(uiKeys::audioBoth));
    thirdPartyAudioButton->setText(vlLocalizedString(uiKeys::audioThirdParty));
    requiredMeetingPswButton->setText(vlLocalizedString(uiKeys::requiredPassword));
    enableJBHButton->setText(vlLocalizedString(uiKeys::joinBeforeHost));
    usePMI->setText(vlLocalizedString(uiKeys::usePersonalMeetingID));
    notShowMeAgain->setText(vlLocalizedString(uiKeys::notShowAgain));
    nameForAccessibility();
}

void VlSettingViewController::initializeItems() {
    setOn(m_host.on, m_settingData.hostvideoOn());
    setOn(m_host.off, !m_settingData.hostvideoOn());
    setOn(m_participants.on, m_settingData.paticipantvideoOn());
    setOn(m_participants.off, !m_settingData.paticipantvideoOn());
    showAudioType(m_settingData.audioType());
    thirdPartyAudioButton->setVisible(m_settingData.enableThirdPartyAudio());
    showThirdPartyAudio();
    showPassword();
    enableJBHButton->setChecked(m_settingData.enableJoinBeforeHost());
    showPersonalMeeting();
    notShowMeAgain->setChecked(m_settingData.notShowMeAgain());
}

void VlSettingViewController::showAudioType(int type) {
    for (QRadioButton *button : audioButtons())
        setOn(button, tagOf(button) == type);
}

void VlSettingViewController::showThirdPartyAudio() {
    m_shownThirdPartyAudio = QString();
    if (!m_settingData.enableThirdPartyAudio())
        return;
    m_shownThirdPartyAudio = m_settingData.thirdPartyAudio();
    thirdPartyAudioTextField->setPlainText(m_shownThirdPartyAudio);
}

void VlSettingViewController::showPassword() {
    const bool required = m_settingData.requiredMeetingPassword();
    requiredMeetingPswButton->setChecked(required);
    passwordFormatter->setShownText(m_settingData.meetingPassword());
    passwordTextField->setText(m_settingData.meetingPassword());
    passwordTextField->setVisible(required);
    passwordTextField->setEnabled(required);
}

// In a meeting for someone else the user's own personal meeting has no place; the model keeps the choice.
void VlSettingViewController::showPersonalMeeting() {
    const QString number = vlSettingData::getFormatRoomMeetingId(m_settingData.roomMeetingId());
    const QString full = usePMI->text() + number;
    const int room = m_sheet->width() - besidePersonalMeeting;
    const QString shown = usePMI->fontMetrics().elidedText(full, Qt::ElideRight, room, Qt::TextShowMnemonic);
    usePMI->setText(shown);
    usePMI->setToolTip(shown == full ? QString() : number); // half a number would be a wrong one
    const bool forOther =
        vlOnbehalfData::sharedInstance().isCurrentScheduleVelaForOther(m_windowController->apptWindowID());
    usePMI->setVisible(!forOther);
    usePMI->setChecked(!forOther && m_settingData.usePMI());
}

void VlSettingViewController::updateUIItems() {
    initWithLocalString();
    initializeItems();
    updateCtrlPos();
}

void VlSettingViewController::refreshUI() {
    const ContextScope context(m_windowController->apptWindowID());
    const vlSettingData::OneWrite write;
    initWithLocalString();
    if (m_settingData.usePMI()) {
        m_settingData.initWithSiteMeetingInfo();
        m_settingData.setUsePMI(true);
    } else {
        m_settingData.updateWithSiteDefault();
    }
    initializeItems();
    updateCtrlPos();
}

QVariantMap VlSettingViewController::getSettingsData() {
    // What is not shown, or shown and not edited, stays as the client has it: the view has other line ends.
    if (thirdPartyAudioTextField->document()->isModified())
        m_settingData.setThirdPartyAudio(thirdPartyAudioTextField->toPlainText());
    else if (!m_shownThirdPartyAudio.isNull())
        m_settingData.setThirdPartyAudio(m_shownThirdPartyAudio);
    return m_settingData.getSettingsData();
}

void VlSettingViewController::onSettingsCommit() {
    m_settingData.setMeetingPassword(passwordTextField->text());
}

void VlSettingViewController::getPMIMeetingInfo() {
    EditorStrip *strip = vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByApptWindowID(
        m_windowController->apptWindowID());
    vlMeetingMgr::sharedInstance().getPMIMeetingInfo(strip, WorkflowState::StateSettingsPMI);
}

void VlSettingViewController::onClickvideoHostMatrix() {
    m_settingData.setHostvideoOn(m_host.on->isChecked());
}

void VlSettingViewController::onClickvideoParticipantMatrix() {
    m_settingData.setPaticipantvideoOn(m_participants.on->isChecked());
}

void VlSettingViewController::onClickAudioConfType(const QRadioButton *sender) {
    const int type = tagOf(sender);
    showAudioType(type);
    const QList<QRadioButton *> buttons = audioButtons();
    const bool isKnown = std::any_of(buttons.begin(), buttons.end(),
                                     [type](const QRadioButton *button) { return tagOf(button) == type; });
    m_settingData.setAudioType(isKnown ? type : int(vlSettingData::AudioType::NoChoice));
    updateCtrlPos();
}

void VlSettingViewController::onClickRequiredMeetingPswButton() {
    const bool required = requiredMeetingPswButton->isChecked();
    passwordTextField->setVisible(required);
    if (required) {
        passwordTextField->setEnabled(true);
        m_windowController->makeFirstResponderWithObject(passwordTextField);
    }
    m_settingData.setRequiredMeetingPassword(required);
}

void VlSettingViewController::onInputPasswordTextField() {
    m_settingData.setMeetingPassword(passwordTextField->text());
}

void VlSettingViewController::onClickEnableJBHButton() {
    m_settingData.setEnableJoinBeforeHost(enableJBHButton->isChecked());
}

void VlSettingViewController::onClickUsePMI() {
    m_settingData.setUsePMI(usePMI->isChecked());
    if (usePMI->isChecked())
        getPMIMeetingInfo();
    else
        refreshUI();
}

void VlSettingViewController::onClickNotShowMeAgain() {
    m_settingData.setNotShowMeAgain(notShowMeAgain->isChecked());
}

void VlSettingViewController::updateCtrlPos() {
    const int textHeight = thirdPartyAudioConstrainHeight.constant();
    const bool wanted = m_settingData.audioType() == int(vlSettingData::AudioType::ThirdParty);
    if (wanted == !thirdPartyAudioTextField->isHidden())
        return;
    audioOptionBoxConstrainHeight.setConstant(wanted ? audioBoxHeight : audioBoxHeight - textHeight);
    thirdPartyAudioTextField->setVisible(wanted);
    if (wanted) {
        thirdPartyAudioTextField->verticalScrollBar()->setValue(0);
        increaseSettingWindowPos(textHeight);
    } else {
        reduceSettingWindowPos(textHeight);
    }
}

void VlSettingViewController::increaseSettingWindowPos(int points) {
    changeSheetHeight(settingsAreaHeight, points);
}

void VlSettingViewController::reduceSettingWindowPos(int points) {
    changeSheetHeight(settingsAreaHeight - points, -points);
}

// The top edge stays where it is.
void VlSettingViewController::changeSheetHeight(int settingsArea, int change) {
    const int height = m_sheet->height() + change;
    settingBoxConstraintHeight.setConstant(settingsArea);
    // The smallest size that the layouts allow has changed: it goes from the inner to the outer ones only.
    for (QWidget *view = mainSettingBox->parentWidget(); view != m_sheet; view = view->parentWidget())
        view->layout()->activate();
    m_sheet->layout()->activate();
    m_sheet->resize(m_sheet->width(), height);
}
