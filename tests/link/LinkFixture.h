// The link with a scripted client. The layers above it only record.
#pragma once

#include "plugin/link/clientCodes.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingLink.h"
#include "tests/support/ScriptedClient.h"

#include <QWidget>
#include <gtest/gtest.h>

class LinkTest : public testing::Test {
protected:
    static constexpr auto requestChannel = "VelaOutlookPluginToVelaVideoClient_PRL";

    LinkTest() {
        LinkPorts::instance() = {&feedback, &receiver};
        receiver.editors.insert(window.get(), "1a2b");
    }
    void givenTheClient() { client.isInstalled(); }

    // The client sends a message, which arrives.
    void clientAnswers(const QString &actionId, const QString &content) {
        client.sendsNow(actionId, content);
        desktop.runLoop->advance(0);
    }
    void clientAnswers(ClientAnswer answer, const QString &content) {
        clientAnswers(QString::number(qint32(answer)), content);
    }
    // The messages that the plug-in has posted on the channel.
    [[nodiscard]] QList<platform::TextMap> posted(const QString &channel = requestChannel) const {
        QList<platform::TextMap> result;
        for (const auto &notification : desktop.bus->posted())
            if (notification.name == channel && notification.sender.isNull() &&
                notification.deliverImmediately)
                result.append(notification.userInfo);
        return result;
    }

    RecordingFeedback feedback;
    RecordingReceiver receiver;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    FreshLink fresh; // destroyed before the ports that it reports to
    platform::TestDesktop &desktop = fresh.desktop;
    ScriptedClient client{desktop, false};
};
