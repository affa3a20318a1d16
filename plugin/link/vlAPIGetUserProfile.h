// Asks for the signed-in user's profile.
#pragma once

#include "plugin/link/vlAPIBase.h"

#include <QPointer>
#include <QWidget>

class vlAPIGetUserProfile : public vlAPIBase {
public:
    ClientError doAction(QWidget *window);
    // Keeps the profile in vlUserProfileHelper (an empty one when the answer is not a dictionary) and hands
    // it back.
    void onVelaFeedback(const QString &content);
    ClientError CheckFeedbackError(const QString &content);

private:
    QPointer<QWidget> m_parentWindow;
};
