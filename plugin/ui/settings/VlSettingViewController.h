// The options of the settings sheet.
#pragma once

#include "plugin/ui/settings/SettingsSheetModel.h"
#include "plugin/ui/settings/heightConstraint.h"
#include "plugin/ui/settings/vlMaxLengthFormatter.h"

#include <QObject>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class SheetOwner;

// Shows the sheet's model and writes every choice into it at once.
class VlSettingViewController : public QObject {
    Q_OBJECT
public:
    // Finds its controls in the sheet; isConnected() is false if one is missing.
    VlSettingViewController(SheetOwner *windowController, SettingsSheetModel &model, QWidget *sheet);
    [[nodiscard]] bool isConnected() const { return m_connected; }

    void initFields();
    void initWithLocalString();
    void initializeItems();
    void updateUIItems();
    void refreshUI();
    [[nodiscard]] QVariantMap getSettingsData(); // first copies the third-party text into the model
    void onSettingsCommit();
    void getPMIMeetingInfo();
    [[nodiscard]] vlSettingData &settingData() { return m_model.settings(); }

    void onClickvideoHostMatrix();
    void onClickvideoParticipantMatrix();
    void onClickAudioConfType(const QRadioButton *sender);
    void onClickRequiredMeetingPswButton();
    void onInputPasswordTextField();
    void onClickEnableJBHButton();
    void onClickUsePMI();
    void onClickNotShowMeAgain();

    void updateCtrlPos();
    void increaseSettingWindowPos(int points);
    void reduceSettingWindowPos(int points);

private:
    struct VideoMatrix { // one row; column 0 means on
        QRadioButton *on = nullptr;
        QRadioButton *off = nullptr;
    };
    void findOutlets();
    void connectActions();
    void nameForAccessibility();
    void showThirdPartyAudio();
    void showPassword();
    void showPersonalMeeting();
    void changeSheetHeight(int settingsArea, int change);
    [[nodiscard]] QList<QRadioButton *> audioButtons() const;

    SheetOwner *m_windowController; // owns this and the model
    SettingsSheetModel &m_model;
    vlSettingData &m_settingData; // owned by the model
    QWidget *m_sheet;
    vlMaxLengthFormatter *passwordFormatter;
    bool m_connected = true;

    QGroupBox *videoOptionsBox = nullptr;
    QGroupBox *audioOptionsBox = nullptr;
    QGroupBox *meetingOptionsBox = nullptr;
    QLabel *textVideoHost = nullptr;
    QLabel *textVideoPaticipant = nullptr;
    QWidget *videoHostMatrix = nullptr;
    QWidget *videoParticipantMatrix = nullptr;
    VideoMatrix m_host;
    VideoMatrix m_participants;
    QRadioButton *telephonyButton = nullptr;
    QRadioButton *voipButton = nullptr;
    QRadioButton *bothButton = nullptr;
    QRadioButton *thirdPartyAudioButton = nullptr;
    QPlainTextEdit *thirdPartyAudioTextField = nullptr; // scrolls its text itself
    QCheckBox *requiredMeetingPswButton = nullptr;
    QLineEdit *passwordTextField = nullptr;
    QCheckBox *enableJBHButton = nullptr;
    QCheckBox *usePMI = nullptr;
    QCheckBox *notShowMeAgain = nullptr;
    QWidget *mainSettingBox = nullptr;
    HeightConstraint settingBoxConstraintHeight; // of the whole settings area
    HeightConstraint audioOptionBoxConstrainHeight;
    HeightConstraint thirdPartyAudioConstrainHeight;
};
