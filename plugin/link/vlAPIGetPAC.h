// Asks for the user's personal audio-conference accounts.
#pragma once

#include "plugin/link/vlAPIBase.h"

#include <QPointer>
#include <QWidget>

class vlAPIGetPAC : public vlAPIBase {
public:
    // Does nothing, and no answer will come, when the client is too old for such accounts.
    ClientError doAction(QWidget *window);
    // Keeps the accounts in vlGetPACHelper, takes down the flag that the user is another, and hands back
    // without data. An error is said; then nothing changes.
    void onVelaFeedback(const QString &content);
    ClientError CheckFeedbackError(const QString &content);

private:
    QPointer<QWidget> m_parentWindow;
};
