// The banner that tells for whom the meeting is scheduled.
#pragma once

#include <QObject>

class QLabel;
class QWidget;
class VlSettingWindowController;

class vlOnbehalfViewController : public QObject {
    Q_OBJECT
public:
    vlOnbehalfViewController(VlSettingWindowController *windowController, QWidget *sheet);
    [[nodiscard]] bool isConnected() const { return m_view && m_textOnbehalfInfo; }

    [[nodiscard]] bool needDisplayOnbehalfView() const;
    // Fills the banner and shows or hides it; the sheet grows and shrinks downwards with it.
    void initFields();
    void updateCtrlPos();

private:
    VlSettingWindowController *m_windowController; // owns this
    QWidget *settingWindow;
    QWidget *m_view = nullptr; // its fixed height is the banner's
    QLabel *m_textOnbehalfInfo = nullptr;
};
