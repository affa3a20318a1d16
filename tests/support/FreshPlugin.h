// The plug-in made afresh for one test: doubles of all services, new shared objects, empty ports.
#pragma once

#include "platform/services/propertylist/PropertyList.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/linkSession.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/CalendarChanges.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlPACMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"
#include "tests/support/TestServices.h"

#include <QDir>

// A bundle below the root folder of the desktop, with its property list.
inline void installBundle(const platform::TestDesktop &desktop, const QString &identifier,
                          const QString &path, const QVariantMap &info,
                          const QString &executable = u"/bin/run"_s) {
    desktop.workspace->bundles.append({identifier, path, executable});
    const QString contents = desktop.workspace->resolve(path) + u"/Contents"_s;
    QDir().mkpath(contents);
    platform::PropertyList::write(contents + u"/Info.plist"_s, info);
}

inline void installHost(const platform::TestDesktop &desktop, const QString &version) {
    installBundle(desktop, u"com.microsoft.Outlook"_s, u"/Applications/Host.app"_s,
                  {{u"CFBundleShortVersionString"_s, version}});
}

// The link and everything below it.
struct FreshLink {
    FreshLink() { startAfresh(); }
    ~FreshLink() { startAfresh(); }
    FreshLink(const FreshLink &) = delete;
    FreshLink &operator=(const FreshLink &) = delete;

    platform::TestDesktop desktop = platform::installTestServices();

private:
    static void startAfresh() {
        LinkPorts::instance() = {};
        startLinkAfresh();
    }
};

// The workflow, too. Its singletons are recreated on next use, with the services set at that time. Existing
// references become invalid.
struct FreshPlugin : FreshLink {
    FreshPlugin() { startAfresh(); }
    ~FreshPlugin() { startAfresh(); }

private:
    static void startAfresh() {
        WorkflowPorts::instance() = {};
        BodyPorts::instance() = {};
        RequestOwner::setNobody(MeetingContext::make());
        SharedObject<CalendarChanges>::renew();
        SharedObject<vlMeetingMgr>::renew();
        SharedObject<vlMeetingDataMgr>::renew();
        SharedObject<vlPACMeetingMgr>::renew();
        SharedObject<vlApptUIActionMgr>::renew();
        SharedObject<vlCalendarActionMgr>::renew();
    }
};
