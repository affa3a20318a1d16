#include "plugin/link/localizedString.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/dialogs/vlClientNotRunningError.h"
#include "plugin/ui/dialogs/vlProgressUIMgr.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/settings/VlSettingViewController.h"
#include "tests/ui/UiFixture.h"
#include <QDialog>
#include <QRadioButton>
class Pictures : public UiTest {};
TEST_F(Pictures, Take) {
    platform::services().pluginBundle = platform::makeFolderBundle(QStringLiteral(PLUGIN_RESOURCES));
    for (bool dark : {false, true}) {
        QPalette p =
            dark ? QPalette(QColor(53, 53, 53), QColor(42, 42, 42)) : QPalette(QColor(239, 239, 239));
        if (dark) {
            p.setColor(QPalette::Window, QColor(42, 42, 42));
            p.setColor(QPalette::Base, QColor(30, 30, 30));
            p.setColor(QPalette::WindowText, QColor(235, 235, 235));
            p.setColor(QPalette::Text, QColor(235, 235, 235));
            p.setColor(QPalette::ButtonText, QColor(235, 235, 235));
            p.setColor(QPalette::Disabled, QPalette::WindowText, QColor(130, 130, 130));
        }
        QApplication::setPalette(p);
        const QString d = QStringLiteral("/tmp/brief/pic_") + (dark ? "dark_" : "light_");
        enableAudioConferences(true);
        vlUserProfileHelper::sharedInstance().setUserProfile(
            QVariantMap{{"userId", "u"},
                        {"roomMeetingId", "1234567890"},
                        {"enableThirdPartyAudio", true},
                        {"thirdPartyAudio", "Dial +1 555 0100, then 42#"},
                        {"useRandomPasswordByDefault", true}});
        HostEditorWindow e;
        e.window->show();
        e.open();
        auto grab = [&](const QString &n, QWidget *w) {
            QImage i(w->size() * 2, QImage::Format_ARGB32);
            i.setDevicePixelRatio(2);
            i.fill(p.color(QPalette::Window));
            w->render(&i);
            i.save(d + n + ".png");
        };
        button(e.strip(), "x");
        auto bs = e.strip().findChildren<QAbstractButton *>();
        QEnterEvent en(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(bs[1], &en);
        grab("strip2", &e.strip());
        e.strip().onUIChanged(StripState::MeetingAttached);
        e.window->activateWindow();
        bs[2]->setFocus(Qt::TabFocusReason);
        grab("strip3", &e.strip());
        e.strip().enableChangeSettingButton(false);
        grab("strip3d", &e.strip());
        SchSettingWndCtrlMgr s;
        s.addSchSettingWindowToArray(e.id(), {}, e.window);
        s.showSchSettingWindow(e.id());
        auto *c = s.getSchSettingWindowInArray(e.id());
        QCoreApplication::processEvents();
        grab("sheet", c->settingWindow());
        c->settingWindow()->findChild<QRadioButton *>("thirdPartyAudioButton")->click();
        QCoreApplication::processEvents();
        grab("sheet3", c->settingWindow());
        c->settingWindow()->findChild<QWidget *>("onbehalfView")->show();
        vlClientNotRunningError::sharedInstance().showClientError(e.window,
                                                                  vlLocalizedString("VelaClientNotRunning"));
        QCoreApplication::processEvents();
        for (QDialog *x : dialogs())
            if (x != c->settingWindow())
                grab("alert", x);
        vlProgressUIMgr pr;
        pr.showCommunication(nullptr);
        QCoreApplication::processEvents();
        grab("progress", pr.progressWindowController().window());
        QWidget row;
        row.resize(13 * 40, 44);
        QImage i(row.size() * 2, QImage::Format_ARGB32);
        i.setDevicePixelRatio(2);
        i.fill(p.color(QPalette::Window));
        {
            QPainter q(&i);
            int k = 0;
            for (auto n : {"Schedule_Meeting_normal", "Remove_Meeting_normal", "Settings_normal",
                           "Settings_disable", "Add_Personal_Audio_Conference", "Start_Meeting_normal_32",
                           "Schedule_Meeting_normal_32", "Schedule_PACMeeting_32", "OpenLogFolder_normal_32"})
                BundleImage(QString(n)).draw(q, QRectF(6 + 40 * k++, 6, 32, 32));
        }
        i.save(d + "icons.png");
    }
}
