#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/util/EncodeUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

QString fields(int count, const QString &meeting, const QString &binary = QString()) {
    QStringList list(count, u"x"_s);
    if (count > 13)
        list[13] = EncodeUtils::base64Encode(meeting.toUtf8());
    if (count > 14)
        list[14] = binary;
    return list.join(u';');
}

class Requests : public LinkTest {
protected:
    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
    vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
};

} // namespace

TEST_F(Requests, EachIsSentInItsOwnWords) {
    givenTheClient();
    struct Case {
        std::function<qint32()> send;
        const char *actionId, *content;
    };
    const Case cases[] = {{[this] {
                               return manager.getMeeting(nullptr, {{"meetingKey", "77"}});
                           },
                           "3", "4;77"},
                          {[this] {
                               return manager.deleteMeeting(nullptr, {{"meetingKey", "77"}});
                           },
                           "3", "3;77"},
                          {[this] { return manager.getUserProfile(nullptr); }, "6", "6"},
                          {[this] { return manager.getPAC(nullptr); }, "9", "9"}};
    for (const Case &c : cases) {
        desktop.bus->clearPosted();
        EXPECT_EQ(c.send(), 0);
        EXPECT_EQ(posted(kIPCNotifyOutlookPluginToVelaClient),
                  (QList<platform::TextMap>{{{"actionId", c.actionId}, {"content", c.content}}}));
    }
}

TEST_F(Requests, AStartSaysWhetherThereIsVideoAndWaitsForNothing) {
    givenTheClient();
    for (const bool withVideo : {true, false}) {
        desktop.bus->clearPosted();
        EXPECT_EQ(manager.startMeeting(withVideo), 0);
        EXPECT_EQ(requestJson(ClientAction::StartMeeting, 0),
                  (QVariantMap{{"from", "macOutlookPlugin"},
                               {"launchtype", withVideo ? "groupVideo" : "groupShare"}}));
    }
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
    EXPECT_EQ(feedback.shownEver, 0);
}

TEST_F(Requests, AStartWithoutARunningClientOffersToLaunchIt) {
    givenTheClient(supportedVersion, false);
    EXPECT_EQ(manager.startMeeting(true), qint32(ClientError::NotRunning));
    ASSERT_EQ(feedback.alerts.size(), 1);
    EXPECT_TRUE(feedback.alerts[0].offersLaunch);
    EXPECT_EQ(feedback.alerts[0].window, nullptr);
    EXPECT_TRUE(desktop.bus->posted().isEmpty());
}

TEST_F(Requests, AMeetingIsTakenFromFieldThirteenAndFourteen) {
    givenTheClient();
    struct Case {
        int count;
        bool handedBack, binary;
    };
    const Case cases[] = {
        {1, false, false}, {13, false, false}, {14, true, false}, {15, true, true}, {16, true, true}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.count);
        receiver.finished.clear();
        meeting.setMeetingData({});
        meeting.setPBMeetingData("");
        manager.getMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::GetMeeting, fields(c.count, R"({"meetingKey": "77"})", "CAA="));
        EXPECT_EQ(receiver.finished.size(), c.handedBack ? 1 : 0);
        EXPECT_EQ(meeting.hasMeetingInfo(), c.handedBack);
        EXPECT_EQ(meeting.hasPBMeetingData(), c.binary);
        if (c.handedBack) {
            EXPECT_EQ(receiver.finished[0].response(), (QVariantMap{{"meetingKey", "77"}}));
        }
    }
    manager.getMeeting(window.get(), {{"meetingKey", "77"}});
    clientAnswers(ClientAnswer::GetMeeting, fields(14, "{}"));
    EXPECT_TRUE(meeting.hasPBMeetingData()); // the earlier one stays
}

TEST_F(Requests, AMeetingThatCannotBeReadEmptiesWhatIsKept) {
    givenTheClient();
    const QString unreadable[] = {fields(14, "{"), fields(14, "[1]"), fields(14, ""),
                                  QString(13, u';') + "%%%%", QString(13, u';') + "/w=="};
    for (const QString &content : unreadable) {
        SCOPED_TRACE(qPrintable(content));
        meeting.setMeetingData({{"meetingKey", "77"}});
        receiver.finished.clear();
        manager.getMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::GetMeeting, content);
        ASSERT_EQ(receiver.finished.size(), 1);
        EXPECT_EQ(receiver.finished[0].command, MeetingCommand::CmdGetMeetingDone);
        EXPECT_FALSE(receiver.finished[0].data.contains("vlAPIResponse"));
        EXPECT_TRUE(meeting.meetingData().isEmpty());
    }
}

TEST_F(Requests, ThePersonalMeetingIsReadAsOneOnlyWhenAskedFor) {
    givenTheClient();
    for (const bool forPMI : {true, false}) {
        meeting.setMeetingData({{"usePMI", 1}});
        manager.getMeeting(window.get(), {{"meetingKey", "77"}, {"isForPMI", forPMI}});
        clientAnswers(ClientAnswer::GetMeeting, fields(14, R"({"meetingKey": "77", "usePMI": 0})"));
        EXPECT_EQ(meeting.meetingData().value("usePMI").toInt(), forPMI ? 1 : 0);
    }
    manager.getMeeting(window.get(), {{"meetingKey", "77"}}); // does not inherit the flag
    meeting.setMeetingData({{"usePMI", 1}});
    clientAnswers(ClientAnswer::GetMeeting, fields(14, R"({"usePMI": 0})"));
    EXPECT_EQ(meeting.meetingData().value("usePMI").toInt(), 0);
}

TEST_F(Requests, ADeleteHandsBackWhateverTheClientSays) {
    givenTheClient();
    for (const char *content : {"77", "0;Error 3001", ""}) {
        receiver.finished.clear();
        manager.deleteMeeting(window.get(), {{"meetingKey", "77"}});
        clientAnswers(ClientAnswer::Delete, content);
        ASSERT_EQ(receiver.finished.size(), 1);
        EXPECT_EQ(
            receiver.finished[0].response(),
            (QVariantMap{{"meetingKey", content}, {"invitationEmail", ""}, {"keyVlResult", "Success"}}));
    }
    EXPECT_TRUE(feedback.alerts.isEmpty());
}

TEST_F(Requests, AProfileIsKeptAndHandedBackWhole) {
    givenTheClient();
    manager.getUserProfile(window.get());
    clientAnswers(ClientAnswer::GetUserProfile,
                  R"({"userId": "u1", "userOption": 9007199254740993, "new": [null]})");
    ASSERT_EQ(receiver.finished.size(), 1);
    EXPECT_EQ(receiver.finished[0].response(), vlUserProfileHelper::sharedInstance().userProfile());
    EXPECT_EQ(vlUserProfileHelper::sharedInstance().userOption(), 9007199254740993);

    manager.getUserProfile(window.get());
    clientAnswers(ClientAnswer::GetUserProfile,
                  "0;Error 3001"); // no error for a profile, and no profile either
    ASSERT_EQ(receiver.finished.size(), 2);
    EXPECT_FALSE(receiver.finished[1].data.contains("vlAPIResponse"));
    EXPECT_FALSE(vlUserProfileHelper::sharedInstance().hasUserProfile());
}

TEST_F(Requests, AccountsAreKeptAndHandedBackWithoutData) {
    givenTheClient();
    manager.getPAC(window.get());
    clientAnswers(ClientAnswer::GetPAC, "CAA=");
    ASSERT_EQ(receiver.finished.size(), 1);
    EXPECT_EQ(receiver.finished[0].data, (QVariantMap{{"keyApptWindowID", "1a2b"}}));
    EXPECT_TRUE(vlGetPACHelper::sharedInstance().hasPACInfo());
}

TEST_F(Requests, AClientTooOldForAccountsIsNotEvenAsked) {
    givenTheClient("3.6.40486");
    EXPECT_EQ(manager.getPAC(window.get()), 0);
    EXPECT_TRUE(feedback.alerts.isEmpty());
    EXPECT_TRUE(desktop.bus->posted().isEmpty());
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
}
