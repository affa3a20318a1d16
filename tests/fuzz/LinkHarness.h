// A running meeting client, and layers above the link that record its reports.
#pragma once

#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingLink.h"
#include "tests/support/ScriptedClient.h"

namespace fuzz {

// Made again for each input, so that inputs cannot affect each other.
struct LinkHarness {
    LinkHarness() {
        LinkPorts::instance() = {&feedback, &receiver};
        (void)vlAPIMgr::sharedInstance();
        (void)vlGetClientVersionHelper::sharedInstance();
    }
    // Delivers the notification to all observers.
    void receive(const QString &channel, const platform::TextMap &userInfo) {
        fresh.desktop.bus->post(channel, QString(), userInfo, true);
        fresh.desktop.runLoop->advance(0);
    }

    RecordingFeedback feedback;
    RecordingReceiver receiver;
    FreshLink fresh; // must be destroyed before the ports that it reports to
    ScriptedClient client{fresh.desktop};
};

} // namespace fuzz
