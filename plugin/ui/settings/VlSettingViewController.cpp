#include "plugin/ui/settings/VlSettingViewController.h"

#include "platform/Guarded.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/SheetOwner.h"
#include "plugin/util/localizedString.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

namespace {

constexpr qint32 maxPasswordLength = 10;
constexpr int settingsAreaHeight = 412;    // with the third-party text
constexpr int audioBoxHeight = 152;        // with the third-party text
constexpr int besidePersonalMeeting = 100; // points: margins and check mark beside its text
const QString numberSeparator = u": "_s;   // between a title and its number
constexpr const char *propertyTag = "tag"; // a radio button's audio type

int tagOf(const QRadioButton *button) {
    return button->property(propertyTag).toInt();
}

// Sets the button independently of its group, because all buttons may be off.
void setOn(QRadioButton *button, bool on) {
    button->setAutoExclusive(false);
    button->setChecked(on);
    button->setAutoExclusive(true);
}

// The styles outline an indicator in a darker shade of the window colour, which is black on black in a dark
// palette. The control uses this colour only for the indicator.
void outlineOnDark(QAbstractButton *control) {
    const QPalette surroundings = control->parentWidget()->palette();
    const QColor text = surroundings.color(QPalette::WindowText);
    QPalette own; // otherwise the palette is inherited
    if (surroundings.color(QPalette::Window).lightness() < text.lightness())
        own.setColor(QPalette::Window, text);
    control->setPalette(own);
}

template<typename Control>
bool find(QWidget *sheet, const QString &name, Control *&outlet) {
    outlet = sheet->findChild<Control *>(name);
    return outlet != nullptr;
}

bool find(const QWidget *sheet, const char *name, HeightConstraint &outlet) {
    outlet = HeightConstraint(sheet, name);
    return outlet.isConnected();
}

// Exceptions thrown by an action do not leave it.
template<typename Sender, typename Signal, typename Action>
void onAction(Sender *sender, Signal signal, QObject *owner, Action action) {
    QObject::connect(sender, signal, owner, [action] { platform::guarded("a meeting setting", action); });
}

} // namespace

VlSettingViewController::VlSettingViewController(SheetOwner *windowController, SettingsSheetModel &model,
                                                 QWidget *sheet)
    : m_windowController(windowController)
    , m_model(model)
    , m_settingData(model.settings())
    , m_sheet(sheet)
    , passwordFormatter(new vlMaxLengthFormatter(this)) {
    findOutlets();
    if (!m_connected)
        return;
    connectActions();
    QSizePolicy policy = passwordTextField->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // the row keeps its height without the field
    passwordTextField->setSizePolicy(policy);
}

void VlSettingViewController::findOutlets() {
    const bool found[] = {
        find(m_sheet, u"videoOptionsBox"_s, videoOptionsBox),
        find(m_sheet, u"audioOptionsBox"_s, audioOptionsBox),
        find(m_sheet, u"meetingOptionsBox"_s, meetingOptionsBox),
        find(m_sheet, u"textVideoHost"_s, textVideoHost),
        find(m_sheet, u"textVideoPaticipant"_s, textVideoPaticipant),
        find(m_sheet, u"videoHostMatrix"_s, videoHostMatrix),
        find(m_sheet, u"videoHostMatrixOn"_s, m_host.on),
        find(m_sheet, u"videoHostMatrixOff"_s, m_host.off),
        find(m_sheet, u"videoParticipantMatrix"_s, videoParticipantMatrix),
        find(m_sheet, u"videoParticipantMatrixOn"_s, m_participants.on),
        find(m_sheet, u"videoParticipantMatrixOff"_s, m_participants.off),
        find(m_sheet, u"telephonyButton"_s, telephonyButton),
        find(m_sheet, u"voipButton"_s, voipButton),
        find(m_sheet, u"bothButton"_s, bothButton),
        find(m_sheet, u"thirdPartyAudioButton"_s, thirdPartyAudioButton),
        find(m_sheet, u"thirdPartyAudioTextField"_s, thirdPartyAudioTextField),
        find(m_sheet, u"requiredMeetingPswButton"_s, requiredMeetingPswButton),
        find(m_sheet, u"passwordTextField"_s, passwordTextField),
        find(m_sheet, u"enableJBHButton"_s, enableJBHButton),
        find(m_sheet, u"usePMI"_s, usePMI),
        find(m_sheet, u"notShowMeAgain"_s, notShowMeAgain),
        find(m_sheet, u"mainSettingBox"_s, mainSettingBox),
        find(m_sheet, "settingBoxConstraintHeight", settingBoxConstraintHeight),
        find(m_sheet, "audioOptionBoxConstrainHeight", audioOptionBoxConstrainHeight),
        find(m_sheet, "thirdPartyAudioConstrainHeight", thirdPartyAudioConstrainHeight),
    };
    m_connected = std::all_of(std::begin(found), std::end(found), [](bool isFound) { return isFound; });
}

QList<QRadioButton *> VlSettingViewController::audioButtons() const {
    return {telephonyButton, voipButton, bothButton, thirdPartyAudioButton};
}

void VlSettingViewController::connectActions() {
    passwordTextField->setValidator(passwordFormatter);
    for (QRadioButton *button : {m_host.on, m_host.off})
        onAction(button, &QAbstractButton::clicked, this, [this] { onClickvideoHostMatrix(); });
    for (QRadioButton *button : {m_participants.on, m_participants.off})
        onAction(button, &QAbstractButton::clicked, this, [this] { onClickvideoParticipantMatrix(); });
    for (QRadioButton *button : audioButtons())
        onAction(button, &QAbstractButton::clicked, this, [this, button] { onClickAudioConfType(button); });
    onAction(requiredMeetingPswButton, &QAbstractButton::clicked, this,
             [this] { onClickRequiredMeetingPswButton(); });
    onAction(passwordTextField, &QLineEdit::textEdited, this, [this] { onInputPasswordTextField(); });
    onAction(enableJBHButton, &QAbstractButton::clicked, this, [this] { onClickEnableJBHButton(); });
    onAction(usePMI, &QAbstractButton::clicked, this, [this] { onClickUsePMI(); });
    onAction(notShowMeAgain, &QAbstractButton::clicked, this, [this] { onClickNotShowMeAgain(); });
}

// A screen reader would read only "On" or "Off" without the row's title, and fields without a label.
void VlSettingViewController::nameForAccessibility() {
    const auto plain = [](const auto *labelled) { return labelled->text().remove(u'&'); };
    videoHostMatrix->setAccessibleName(plain(textVideoHost));
    videoParticipantMatrix->setAccessibleName(plain(textVideoPaticipant));
    for (QRadioButton *button : {m_host.on, m_host.off})
        button->setAccessibleDescription(plain(textVideoHost));
    for (QRadioButton *button : {m_participants.on, m_participants.off})
        button->setAccessibleDescription(plain(textVideoPaticipant));
    passwordTextField->setAccessibleName(plain(requiredMeetingPswButton));
    thirdPartyAudioTextField->setAccessibleName(plain(thirdPartyAudioButton));
}

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
    for (QRadioButton *button : audioButtons())
        setOn(button, tagOf(button) == m_settingData.audioType());
    thirdPartyAudioButton->setVisible(m_settingData.enableThirdPartyAudio());
    showThirdPartyAudio();
    showPassword();
    enableJBHButton->setChecked(m_settingData.enableJoinBeforeHost());
    showPersonalMeeting();
    notShowMeAgain->setChecked(m_settingData.notShowMeAgain());
    for (QAbstractButton *control : m_sheet->findChildren<QAbstractButton *>())
        if (!qobject_cast<QPushButton *>(control))
            outlineOnDark(control);
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
}

void VlSettingViewController::showPersonalMeeting() {
    const QString number = m_model.personalMeetingNumber();
    const QString title = usePMI->text();
    const bool announcesNothing = number.isEmpty() && title.endsWith(numberSeparator);
    const QString full = announcesNothing ? title.chopped(numberSeparator.size()).trimmed() : title + number;
    const int room = m_sheet->width() - besidePersonalMeeting;
    const QString shown = usePMI->fontMetrics().elidedText(full, Qt::ElideRight, room, Qt::TextShowMnemonic);
    usePMI->setText(shown);
    usePMI->setToolTip(shown == full ? QString() : number); // a truncated number would be misleading
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
    m_settingData.setAudioType(tagOf(sender));
    updateCtrlPos();
}

void VlSettingViewController::onClickRequiredMeetingPswButton() {
    const bool required = requiredMeetingPswButton->isChecked();
    passwordTextField->setVisible(required);
    if (required)
        m_windowController->makeFirstResponderWithObject(passwordTextField);
    m_settingData.setRequiredMeetingPassword(required);
}

void VlSettingViewController::onInputPasswordTextField() {
    m_settingData.setMeetingPassword(passwordTextField->text());
    passwordFormatter->setShownText(passwordTextField->text()); // removed characters no longer count
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

// Keeps the position of the top edge.
void VlSettingViewController::changeSheetHeight(int settingsArea, int change) {
    const int height = m_sheet->height() + change;
    settingBoxConstraintHeight.setConstant(settingsArea);
    // The layouts' minimum size has changed, and each layout passes it only to the next outer one.
    for (QWidget *view = mainSettingBox->parentWidget(); view != m_sheet; view = view->parentWidget())
        view->layout()->activate();
    m_sheet->layout()->activate();
    m_sheet->resize(m_sheet->width(), height);
}
