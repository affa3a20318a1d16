#include "plugin/ui/settings/ButtonGroupViewController.h"

#include "platform/Guarded.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/SheetOwner.h"
#include "plugin/util/localizedString.h"

#include <QDialog>
#include <QPushButton>

ButtonGroupViewController::ButtonGroupViewController(SheetOwner *windowController, QDialog *sheet)
    : m_windowController(windowController)
    , settingWindow(sheet) {
    buttonContinue = sheet->findChild<QPushButton *>(u"buttonContinue"_s);
    buttonCancel = sheet->findChild<QPushButton *>(u"buttonCancel"_s);
    if (!isConnected())
        return;
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
