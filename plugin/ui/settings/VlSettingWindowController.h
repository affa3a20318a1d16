// The settings sheet of one appointment editor.
#pragma once

#include "plugin/ui/settings/SettingsSheetModel.h"
#include "plugin/ui/settings/SheetOwner.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <memory>

class ButtonGroupViewController;
class QDialog;
class QWidget;
class VlSettingViewController;
class vlOnbehalfViewController;

// Creates the sheet when it is first shown. The parent window is not owned; after its deletion the controller
// shows nothing.
class VlSettingWindowController : public QObject, public SheetOwner {
    Q_OBJECT
public:
    VlSettingWindowController(const QString &apptWindowID, const QVariantMap &data, QWidget *parentWindow);
    ~VlSettingWindowController() override;

    [[nodiscard]] const QString &apptWindowID() const { return m_model.apptWindowID(); }
    [[nodiscard]] QWidget *parentWindow() const { return m_parentWindow; }
    [[nodiscard]] QDialog *settingWindow() const {
        return m_window.get();
    } // nullptr before it is first shown
    [[nodiscard]] VlSettingViewController *settingViewController() const { return m_settings.get(); }
    [[nodiscard]] ButtonGroupViewController *buttonGroupViewController() const { return m_buttons.get(); }
    [[nodiscard]] vlOnbehalfViewController *onbehalfViewController() const { return m_banner.get(); }

    void initFields(bool first);
    void showWindowSheet(); // no effect on a sheet that is already shown
    void makeFirstResponderWithObject(QWidget *control) override;
    void postSettingCommitCommand(const QVariantMap &command) override;
    [[nodiscard]] QVariantMap getVlSettingsData() const; // empty before the sheet is first shown
    void saveSettingsToUserProfile() const;
    [[nodiscard]] bool isOnbehalf() const;
    [[nodiscard]] QString onbehalfEmail() const;

private:
    void loadWindow();
    void awakeFromNib();
    void endSheet(int result);

    SettingsSheetModel m_model;
    QPointer<QWidget> m_parentWindow;
    std::unique_ptr<QDialog> m_window;
    std::unique_ptr<VlSettingViewController> m_settings; // destroyed before the window, as the next two
    std::unique_ptr<ButtonGroupViewController> m_buttons;
    std::unique_ptr<vlOnbehalfViewController> m_banner;
};
