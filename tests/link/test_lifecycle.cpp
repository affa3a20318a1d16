// What all requests have in common, from sending to the answer, the error or the time-out.
#include "plugin/link/channel/channelObserver.h"
#include "tests/link/LinkFixture.h"

namespace {

// A kind of request that the manager offers.
struct Kind {
    const char *name;
    const char *actionId, *content; // of the request; the beginning of its content
    ClientAnswer answer;
    QString accepted; // a good answer
    MeetingCommand command;
    std::function<qint32(vlAPIMgr &, QWidget *)> send;
};

const QVariantMap withProgress{{vl_API_Call_Para_ShowCommunicationDlg, true}, {vl_MeetingKey, "77"}};

const Kind kinds[] = {
    {"schedule", "3", "1;;;;;;;;;;;;;{", ClientAnswer::Schedule, "77;text",
     MeetingCommand::CmdScheduleMeeting,
     [](vlAPIMgr &manager, QWidget *window) { return manager.scheduleMeeting(window, {}); }},
    {"update", "3", "2;;;;;;;;;;;;;{", ClientAnswer::Update, "77;text", MeetingCommand::CmdUpdateMeeting,
     [](vlAPIMgr &manager, QWidget *window) { return manager.updateMeeting(window, {}); }},
    {"get", "3", "4;77", ClientAnswer::GetMeeting,
     QString(13, u';') + "e30=", MeetingCommand::CmdGetMeetingDone,
     [](vlAPIMgr &manager, QWidget *window) { return manager.getMeeting(window, withProgress); }},
    {"profile", "6", "6", ClientAnswer::GetUserProfile, "{}", MeetingCommand::CmdGetUserProfileDone,
     [](vlAPIMgr &manager, QWidget *window) { return manager.getUserProfile(window, withProgress); }},
    {"accounts", "9", "9", ClientAnswer::GetPAC, "CAA=", MeetingCommand::CmdGetAudioConferenceDone,
     [](vlAPIMgr &manager, QWidget *window) { return manager.getPAC(window, withProgress); }},
    {"delete", "3", "3;77", ClientAnswer::Delete, "done", MeetingCommand::CmdDeleteMeeting,
     [](vlAPIMgr &manager, QWidget *window) { return manager.deleteMeeting(window, withProgress); }},
};

class Lifecycle : public LinkTest {
protected:
    vlAPIMgr &manager = vlAPIMgr::sharedInstance();

    qint32 send(const Kind &kind) { return kind.send(manager, window.get()); }
    void givenAWindow() {
        window = std::make_unique<QWidget>();
        receiver.editors = {{window.get(), "1a2b"}};
    }
};

} // namespace

TEST_F(Lifecycle, AnAnswerGoesToTheWorkflowInTimeLateAndAfterItsWindow) {
    givenTheClient();
    enum { InTime, Late, WithoutWindow };
    for (const Kind &kind : kinds) {
        for (const auto answered : {InTime, Late, WithoutWindow}) {
            SCOPED_TRACE(testing::Message() << kind.name << ' ' << answered);
            givenAWindow();
            receiver.finished.clear();
            desktop.bus->clearPosted();
            EXPECT_EQ(send(kind), 0);
            ASSERT_EQ(posted().size(), 1);
            EXPECT_EQ(posted()[0].value("actionId"), kind.actionId);
            EXPECT_TRUE(posted()[0].value("content").startsWith(kind.content));
            EXPECT_EQ(feedback.shownOn.last(), window.get());
            desktop.runLoop->advance(29.9);
            EXPECT_EQ(feedback.shown, 1);
            if (answered == WithoutWindow)
                window.reset();
            if (answered == Late) {
                desktop.runLoop->advance(0.2);
                EXPECT_EQ(feedback.shown, 0);
                EXPECT_TRUE(receiver.finished.isEmpty());
            }
            clientAnswers(kind.answer, kind.accepted);
            EXPECT_EQ(feedback.shown, 0);
            EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
            ASSERT_EQ(receiver.finished.size(), 1);
            EXPECT_EQ(receiver.finished[0].command, kind.command);
            EXPECT_EQ(receiver.finished[0].data.value("keyApptWindowID"),
                      window ? QVariant("1a2b") : QVariant());
            EXPECT_TRUE(feedback.alerts.isEmpty());
        }
    }
}

TEST_F(Lifecycle, EachRequestKnowsItsOwnErrorAnswers) {
    givenTheClient();
    struct Case {
        QString content, message;
        QString takenBy; // the kinds of request for which this is no error
        bool hasQuit = false;
    };
    const Case cases[] = {
        {"", "[SystemError]", ""},
        {QString(), "[SystemError]", ""},
        {"0;Error VelaClientNotSignIn", "[VelaClientNotSignIn]", ""},
        {"0;Error 2", "[NetworkConnectionError]", "accounts"},
        {"0;Error 5003", "[NetworkConnectionError]", "accounts"},
        {"0;Error 3001", "[MeetingNotFound]", "profile accounts"},
        {"0;Error 3018", "[MeetingNotFound]", "profile accounts"},
        {"an answer of a client that has quit", "[VelaClientNotRunning]", "", true},
    };
    for (const Kind &kind : kinds) {
        for (const Case &c : cases) {
            for (const bool windowDies : {false, true}) {
                SCOPED_TRACE(std::string(kind.name) + ' ' + qPrintable(c.content));
                givenAWindow();
                feedback.alerts.clear();
                receiver.finished.clear();
                receiver.denied = 0;
                send(kind);
                if (windowDies)
                    window.reset();
                if (c.hasQuit)
                    client.quits();
                clientAnswers(kind.answer, c.hasQuit ? kind.accepted : c.content);
                desktop.workspace->running = QStringList{kVelausIdentify};
                const bool isTaken = kind.answer == ClientAnswer::Delete || c.takenBy.contains(kind.name);
                EXPECT_EQ(receiver.finished.size(), isTaken ? 1 : 0);
                // Nothing waits for accounts.
                EXPECT_EQ(receiver.denied, isTaken || kind.answer == ClientAnswer::GetPAC ? 0 : 1);
                ASSERT_EQ(feedback.alerts.size(), isTaken ? 0 : 1);
                if (!isTaken) {
                    EXPECT_EQ(feedback.alerts[0].message, c.message);
                    EXPECT_EQ(feedback.alerts[0].offersLaunch, c.hasQuit);
                    EXPECT_EQ(feedback.alerts[0].window, window.get());
                } else if (c.hasQuit) {
                    EXPECT_EQ(receiver.finished[0].response().value("keyVlResult"), "Fail");
                }
                EXPECT_EQ(feedback.shown, 0);
            }
        }
    }
}

TEST_F(Lifecycle, AnObserverHearsNothingAfterItsEnd) {
    int heard = 0;
    auto observer = std::make_unique<ChannelObserver>("channel", [&heard](const auto &) { ++heard; });
    for (int i = 0; i < 2; ++i) {
        desktop.bus->post("channel", QString(), {}, true);
        desktop.runLoop->advance(0);
        observer.reset();
    }
    EXPECT_EQ(heard, 1);
}

TEST_F(Lifecycle, ReadsShowProgressOnlyWhenAskedTo) {
    givenTheClient();
    manager.getUserProfile(window.get());
    manager.getPAC(window.get());
    manager.getMeeting(window.get(), {{vl_MeetingKey, "77"}});
    EXPECT_TRUE(feedback.shownOn.isEmpty());
    manager.getUserProfile(window.get(), {{"showCommunicationDlg", qint64(1)}});
    EXPECT_EQ(feedback.shownOn.size(), 1);
}
