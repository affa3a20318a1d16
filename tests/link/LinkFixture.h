// A desktop with a meeting client on it, and the floors above the link that only take notes.
#pragma once

#include "platform/services/TestServices.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/requests/vlAPIMgr.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

struct Alert {
    QWidget *window;
    QString message;
    bool offersLaunch;
};

class NotingFeedback : public RequestFeedback {
public:
    QList<Alert> alerts;
    int shown = 0; // progress windows that are up now
    int shownEver = 0;
    QWidget *shownOn = nullptr;

    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress() override;
    void showAlertMessage(QWidget *window, const QString &message) override;
    void showClientError(QWidget *window, const QString &message) override;
};

class NotingReceiver : public FinishReceiver {
public:
    struct Finished {
        MeetingCommand command;
        QVariantMap data;
        [[nodiscard]] QVariantMap response() const;
    };
    QList<Finished> finished;
    QMap<QWidget *, QString> editors; // identifiers by window
    QStringList scheduledFor;

    void onExcuteCommandFinished(int command, const QVariantMap &data) override;
    [[nodiscard]] QString getApptWindowIDByWindow(QWidget *window) const override;
    void setScheduleForEmail(const QString &email) override;
};

class LinkTest : public testing::Test {
protected:
    static constexpr auto supportedVersion = "3.6.40487";
    static constexpr auto clientsChannel = "VelaVideoClientToVelaOutlookPlugin_PRL";

    LinkTest();
    ~LinkTest() override;

    void givenTheClient(const QString &version = supportedVersion, bool running = true);
    void givenTheHost(const QString &version);
    void givenABundle(const QString &identifier, const QString &path, const QVariantMap &info,
                      const QString &executable = u"/bin/run"_s);
    // The client, or the agent, sends a message, and it arrives.
    void clientAnswers(const QString &actionId, const QString &content);
    void clientAnswers(ClientAnswer answer, const QString &content);
    void agentAnswers(const platform::TextMap &envelope);
    // What the plug-in has posted under the channel's name.
    [[nodiscard]] QList<platform::TextMap> posted(const QString &channel) const;
    // The content of the only request to the client; a null text when it is not the only one or has another
    // action id.
    [[nodiscard]] QString request(ClientAction action) const;
    // What is left of its JSON after the head.
    [[nodiscard]] QVariantMap requestJson(ClientAction action, qsizetype headLength) const;
    [[nodiscard]] QString siteConfigText() const;

    QTemporaryDir folder;
    platform::TestDesktop desktop;
    NotingFeedback feedback;
    NotingReceiver receiver;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
};
