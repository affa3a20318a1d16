#include "plugin/ui/settings/ButtonGroupViewController.h"

#include "platform/Guarded.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/SheetOwner.h"
#include "plugin/util/localizedString.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

namespace {

constexpr int smallestWidth = 96; // points

// The box orders the buttons as the desktop does; when it is shown, the one that accepts becomes the default.
QPushButton *addButton(QDialogButtonBox *box, const QString &name, QDialogButtonBox::ButtonRole role) {
    auto *button = new QPushButton;
    button->setObjectName(name);
    button->setMinimumWidth(smallestWidth);
    button->setAutoDefault(false);
    box->addButton(button, role);
    return button;
}

} // namespace

ButtonGroupViewController::ButtonGroupViewController(SheetOwner *windowController, QDialog *sheet)
    : m_windowController(windowController)
    , settingWindow(sheet) {
    auto *box = sheet->findChild<QDialogButtonBox *>(u"buttonGroupView"_s);
    if (!box)
        return;
    buttonContinue = addButton(box, u"buttonContinue"_s, QDialogButtonBox::AcceptRole);
    buttonCancel = addButton(box, u"buttonCancel"_s, QDialogButtonBox::RejectRole);
    connect(buttonContinue, &QPushButton::clicked, this, &ButtonGroupViewController::onClickContinue);
    connect(buttonCancel, &QPushButton::clicked, this, &ButtonGroupViewController::onClickCancel);
}

void ButtonGroupViewController::initWithLocalString() {
    if (!isConnected())
        return;
    buttonContinue->setText(vlLocalizedString(uiKeys::buttonContinue));
    buttonCancel->setText(vlLocalizedString(uiKeys::buttonCancel));
}

void ButtonGroupViewController::onClickContinue() {
    settingWindow->accept();
}

void ButtonGroupViewController::onClickCancel() {
    settingWindow->reject();
}

void ButtonGroupViewController::postCommitCommand(bool isOk) {
    platform::guarded("leaving the meeting settings", [this, isOk] {
        m_windowController->postSettingCommitCommand(
            {{keyVLUserOperator, keyVLSettingCommit}, {keyButtonClickIsOK, isOk}});
    });
}
