// Carries out the commands of the main window's tool-bar.
#pragma once

#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>
#include <memory>

enum class ToolbarCommand : qint32 {
    StartInstantMeeting = 1,   // {"startWithVideo": reads as true or not}
    ScheduleNewMeeting = 2,    // no data
    ScheduleNewPACMeeting = 3, // {"pacAccountNo": a PACAccount}
    OpenLogFolder = 4          // no data
};

inline const QString keyStartWithVideo = u"startWithVideo"_s;

class vlCommandItemMgr : public SharedObject<vlCommandItemMgr> {
public:
    // Gets the host application's delegate. Without it the commands that open an editor do nothing.
    void initPluginInstance();
    // Ignores any other number. Returns 0.
    int SendToolbarItemCommand(qint32 command, const QVariantMap &data = {});

    void startInstantMeeting(const QVariantMap &data);
    void scheduleNewMeeting(const QVariantMap &data);
    void scheduleNewPACMeeting(const QVariantMap &data);
    void openLogFolder(const QVariantMap &data);

private:
    std::unique_ptr<vlErageAppDelegate> m_appDelegate;
};
