// To which appointment an answer belongs when several have asked.
#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/PendingRequests.h"
#include "plugin/util/EncodeUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

struct Appointment : RequestOwner {
    QString key;
    [[nodiscard]] bool hasMeeting(const QString &asked) const override { return asked == key; }
};

class Owners : public LinkTest {
protected:
    Owners() { givenTheClient(); }

    void reads(const std::shared_ptr<Appointment> &owner, const QString &key) {
        const RequestOwner::Scope scope(owner);
        manager.getMeeting(window.get(), {{vl_MeetingKey, key}});
    }
    void schedules(const std::shared_ptr<Appointment> &owner, const QVariantMap &setting = {}) {
        const RequestOwner::Scope scope(owner);
        manager.scheduleMeeting(window.get(), {{vl_Setting, setting}});
    }
    void clientTells(const QString &key) {
        clientAnswers(ClientAnswer::GetMeeting,
                      QString(13, u';') +
                          EncodeUtils::base64Encode("{\"meetingKey\":\"" + key.toUtf8() + "\"}"));
    }
    static QString readBy(const std::shared_ptr<Appointment> &owner) {
        return owner->loadedMeeting.data.value(vl_MeetingKey).toString();
    }

    vlAPIMgr &manager = vlAPIMgr::sharedInstance();
    std::shared_ptr<Appointment> a = std::make_shared<Appointment>();
    std::shared_ptr<Appointment> b = std::make_shared<Appointment>();
};

} // namespace

TEST_F(Owners, AMeetingGoesToWhoAskedForItsKeyInWhateverOrder) {
    reads(a, "1");
    reads(b, "2");
    clientTells("2");
    EXPECT_EQ(readBy(b), "2");
    EXPECT_EQ(readBy(a), "");
    clientTells("2"); // a second time: it is not for a
    EXPECT_EQ(readBy(a), "");
    EXPECT_EQ(receiver.finished.size(), 1);
    clientTells("1");
    EXPECT_EQ(readBy(a), "1");
    reads(a, "3");
    a.reset();
    clientTells("3"); // nobody is left to read it
    EXPECT_EQ(readBy(b), "2");
    EXPECT_TRUE(RequestOwner::nobody()->loadedMeeting.data.isEmpty());
}

TEST_F(Owners, AMeetingGoesToWhoWaitsThenToTheTimedOutThenToTheRefused) {
    auto dead = std::make_shared<Appointment>();
    const auto refused = std::make_shared<Appointment>();
    reads(refused, "1");
    clientAnswers(ClientAnswer::GetMeeting, "0;Error 3001");
    reads(a, "1");
    desktop.runLoop->advance(30.5);
    reads(dead, "1");
    dead.reset();
    reads(b, "1");
    for (const auto &owner : {b, a, refused}) {
        clientTells("1");
        EXPECT_EQ(readBy(owner), "1");
    }
}

TEST_F(Owners, AMeetingReadAgainAfterATimeOutIsAnsweredOnce) {
    reads(a, "1");
    desktop.runLoop->advance(30.5);
    reads(a, "1");
    clientTells("1");
    clientTells("1"); // to the request that timed out
    EXPECT_EQ(receiver.finished.size(), 1);
}

TEST_F(Owners, AMeetingGoesToTheOtherAfterAnExchange) {
    reads(a, "1");
    schedules(b);
    manager.exchangeOwners({a, window.get()}, {b, nullptr});
    clientTells("1");
    EXPECT_EQ(readBy(b), "1");
    EXPECT_EQ(readBy(a), "");
}

TEST_F(Owners, ARepeatedScheduleIsNotTakenForAnothersUnlessThatMeetingIsGone) {
    schedules(a);
    clientAnswers(ClientAnswer::Schedule, "1;text");
    a->key = "1";
    schedules(b);
    clientAnswers(ClientAnswer::Schedule, "1;text");
    EXPECT_EQ(receiver.finished.size(), 1);
    a->key.clear(); // the meeting is removed, and the client may use its key again
    clientAnswers(ClientAnswer::Schedule, "1;text");
    EXPECT_EQ(receiver.finished.size(), 2);
    a->key = "1";
    schedules(b, {{vl_Setting_IsPMI, true}}); // several appointments may share the personal meeting
    clientAnswers(ClientAnswer::Schedule, "1;text");
    EXPECT_EQ(receiver.finished.size(), 3);
}

TEST_F(Owners, AnOldAnswerIsForgottenAndALateOneRemembered) {
    for (int key = 1; key <= 40; ++key) {
        schedules(a);
        clientAnswers(ClientAnswer::Schedule, QString::number(key) + ";text");
    }
    schedules(b);
    for (const auto &[key, finished] : {std::pair{"40", 40}, {"1", 41}}) {
        a->key = key;
        clientAnswers(ClientAnswer::Schedule, a->key + ";text");
        EXPECT_EQ(receiver.finished.size(), finished);
    }
}

TEST_F(Owners, TheProgressStaysAsLongAsAnotherWaits) {
    schedules(a);
    desktop.runLoop->advance(20);
    schedules(b);
    desktop.runLoop->advance(10.5); // the first request has timed out
    EXPECT_EQ(feedback.shown, 1);
    clientAnswers(ClientAnswer::Schedule, "2;text");
    EXPECT_EQ(feedback.shown, 0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
}
