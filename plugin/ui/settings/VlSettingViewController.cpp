#include "plugin/ui/settings/VlSettingViewController.h"

#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/SheetOwner.h"
#include "plugin/util/localizedString.h"

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
    m_model.initFields();
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
    const QString text = m_model.beginThirdPartyText();
    if (!text.isNull())
        thirdPartyAudioTextField->setPlainText(text);
}

void VlSettingViewController::showPassword() {
    const bool required = m_settingData.requiredMeetingPassword();
    requiredMeetingPswButton->setChecked(required);
    passwordFormatter->setShownText(m_settingData.meetingPassword());
    passwordTextField->setText(m_settingData.meetingPassword());
    passwordTextField->setVisible(required);
    passwordTextField->setEnabled(required);
}

void VlSettingViewController::showPersonalMeeting() {
    const QString number = m_model.personalMeetingNumber();
    const QString full = usePMI->text() + number;
    const int room = m_sheet->width() - besidePersonalMeeting;
    const QString shown = usePMI->fontMetrics().elidedText(full, Qt::ElideRight, room, Qt::TextShowMnemonic);
    usePMI->setText(shown);
    usePMI->setToolTip(shown == full ? QString() : number); // half a number would be a wrong one
    usePMI->setVisible(!m_model.isForOther());
    usePMI->setChecked(m_model.usesPersonalMeeting());
}

void VlSettingViewController::updateUIItems() {
    initWithLocalString();
    initializeItems();
    updateCtrlPos();
}

void VlSettingViewController::refreshUI() {
    m_model.refresh();
    updateUIItems();
}

QVariantMap VlSettingViewController::getSettingsData() {
    const bool isEdited = thirdPartyAudioTextField->document()->isModified();
    return m_model.getSettingsData(isEdited ? thirdPartyAudioTextField->toPlainText() : QString());
}

void VlSettingViewController::onSettingsCommit() {
    m_settingData.setMeetingPassword(passwordTextField->text());
}

void VlSettingViewController::getPMIMeetingInfo() {
    m_model.getPMIMeetingInfo();
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
    QList<int> offered;
    for (const QRadioButton *button : audioButtons())
        offered.append(tagOf(button));
    m_model.chooseAudioType(type, offered);
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
    passwordFormatter->setShownText(passwordTextField->text()); // what was taken away does not come again
}

void VlSettingViewController::onClickEnableJBHButton() {
    m_settingData.setEnableJoinBeforeHost(enableJBHButton->isChecked());
}

void VlSettingViewController::onClickUsePMI() {
    m_model.setUsePMI(usePMI->isChecked());
    if (!usePMI->isChecked())
        updateUIItems();
}

void VlSettingViewController::onClickNotShowMeAgain() {
    m_settingData.setNotShowMeAgain(notShowMeAgain->isChecked());
}

void VlSettingViewController::updateCtrlPos() {
    const int textHeight = thirdPartyAudioConstrainHeight.constant();
    const bool wanted = m_model.showsThirdPartyText();
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
