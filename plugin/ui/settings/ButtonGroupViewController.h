// The buttons that leave the settings sheet.
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

    // End the sheet and tell the workflow.
    void onClickContinue();
    void onClickCancel();
    void postCommitCommand(bool isOk);
    // Whether one of the two has just ended the sheet (false: it was closed in another way).
    [[nodiscard]] bool isEndingSheet() const { return m_endingSheet; }

private:
    void endSheet(bool isOk);

    SheetOwner *m_windowController; // owns this
    QDialog *settingWindow;
    QPushButton *buttonContinue = nullptr;
    QPushButton *buttonCancel = nullptr;
    bool m_endingSheet = false;
};
