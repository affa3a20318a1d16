// A running meeting client, and layers above the link that record what reaches them.
#pragma once

#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingLink.h"
#include "tests/support/ScriptedClient.h"

namespace fuzz {

// Fresh for each input: nothing that an earlier one left behind changes what this one does.
struct LinkHarness {
    LinkHarness() {
        LinkPorts::instance() = {&feedback, &receiver};
        (void)vlAPIMgr::sharedInstance();
        (void)vlGetClientVersionHelper::sharedInstance();
    }
    // The notification arrives at everything that listens.
    void receive(const QString &channel, const platform::TextMap &userInfo) {
        fresh.desktop.bus->post(channel, QString(), userInfo, true);
        fresh.desktop.runLoop->advance(0);
    }

    RecordingFeedback feedback;
    RecordingReceiver receiver;
    FreshLink fresh; // goes before what it reports to
    ScriptedClient client{fresh.desktop};
};

} // namespace fuzz
