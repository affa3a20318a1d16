// The banner that shows for whom the meeting is scheduled.
#pragma once

#include "plugin/ui/settings/heightConstraint.h"

#include <QObject>

class QLabel;
class QWidget;
class SettingsSheetModel;

class vlOnbehalfViewController : public QObject {
    Q_OBJECT
public:
    vlOnbehalfViewController(const SettingsSheetModel &model, QWidget *sheet);
    [[nodiscard]] bool isConnected() const {
        return m_view && _textOnbehalfInfo && selfConstraintHeight.isConnected();
    }

    [[nodiscard]] bool needDisplayOnbehalfView() const;
    // Fills the banner and shows or hides it. The height of the sheet changes with it at the bottom.
    void initFields();
    void updateCtrlPos();

private:
    void showText(const QString &text);

    const SettingsSheetModel &m_model;
    QWidget *settingWindow;
    QWidget *m_view = nullptr;
    QLabel *_textOnbehalfInfo = nullptr;
    HeightConstraint selfConstraintHeight;
};
