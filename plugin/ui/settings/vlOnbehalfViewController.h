// The banner that tells for whom the meeting is scheduled.
#pragma once

#include "plugin/ui/settings/heightConstraint.h"

#include <QObject>

class QLabel;
class QWidget;
class VlSettingWindowController;

class vlOnbehalfViewController : public QObject {
    Q_OBJECT
public:
    vlOnbehalfViewController(VlSettingWindowController *windowController, QWidget *sheet);
    [[nodiscard]] bool isConnected() const {
        return m_view && _textOnbehalfInfo && selfConstraintHeight.isConnected();
    }

    [[nodiscard]] bool needDisplayOnbehalfView() const;
    // Fills the banner and shows or hides it; the sheet grows and shrinks downwards with it.
    void initFields();
    void updateCtrlPos();

private:
    void showText(const QString &text);

    VlSettingWindowController *m_windowController; // owns this
    QWidget *settingWindow;
    QWidget *m_view = nullptr;
    QLabel *_textOnbehalfInfo = nullptr;
    HeightConstraint selfConstraintHeight;
};
