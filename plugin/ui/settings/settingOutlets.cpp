// How the options' controls are found in the interface description and tied to their actions.
#include "plugin/ui/settings/VlSettingViewController.h"

#include "platform/services/Contained.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace {

template<typename Control>
bool find(QWidget *sheet, const QString &name, Control *&outlet) {
    outlet = sheet->findChild<Control *>(name);
    return outlet != nullptr;
}

bool find(const QWidget *sheet, const char *name, HeightConstraint &outlet) {
    outlet = HeightConstraint(sheet, name);
    return outlet.isConnected();
}

// What goes wrong in an action stays in it.
template<typename Sender, typename Signal, typename Action>
void onAction(Sender *sender, Signal signal, QObject *owner, Action action) {
    QObject::connect(sender, signal, owner, [action] { platform::contained("a meeting setting", action); });
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
    if (m_connected)
        connectActions();
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

// "On" and "Off" alone say nothing to someone who does not see the row; nor does a field without a label.
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
