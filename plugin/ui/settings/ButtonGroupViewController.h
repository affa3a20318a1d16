// The buttons that close the settings sheet.
#pragma once

#include <QObject>

class QDialog;
class QPushButton;
class SheetOwner;

class ButtonGroupViewController : public QObject {
    Q_OBJECT
public:
    ButtonGroupViewController(SheetOwner *windowController, QDialog *sheet);
    [[nodiscard]] bool isConnected() const { return buttonContinue && buttonCancel; }
    void initWithLocalString();

    // Close the sheet, which then notifies the workflow.
    void onClickContinue();
    void onClickCancel();
    void postCommitCommand(bool isOk);

private:
    SheetOwner *m_windowController; // owns this
    QDialog *settingWindow;
    QPushButton *buttonContinue = nullptr;
    QPushButton *buttonCancel = nullptr;
};
