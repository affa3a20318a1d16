#include "meeting.pb.h"
#include "platform/Literals.h"
#include "standin/meetingclient/MeetingService.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QTimeZone>
#include <gtest/gtest.h>

using namespace meetingclient;

namespace {

QString commit(int subCommand, const QJsonObject &request) {
    return QString::number(subCommand) + QString(13, u';') +
           QString::fromUtf8(QJsonDocument(request).toJson(QJsonDocument::Compact));
}

QJsonObject aRequest() {
    return {{"apptInfo", QJsonObject{{"subject", "Review"},
                                     {"duration", "30"},
                                     {"startTime", "1700000000"},
                                     {"recurrence", false}}},
            {"setting",
             QJsonObject{
                 {"audioOption", 2}, {"enableJBH", true}, {"usePMI", false}, {"meetingPassword", "123456"}}}};
}

class ServiceTest : public testing::Test {
protected:
    QString answerTo(quint32 action, const QString &content) {
        const std::optional<Answer> answer = service.handle(action, content);
        return answer ? answer->content : u"(none)"_s;
    }
    QString scheduledKey() { return answerTo(3, commit(1, aRequest())).section(u';', 0, 0); }
    QJsonObject readBack(const QString &key) {
        const QStringList fields = answerTo(3, u"4;"_s + key).split(u';');
        EXPECT_GE(fields.size(), 15);
        return QJsonDocument::fromJson(QByteArray::fromBase64(fields.value(13).toLatin1())).object();
    }
    MeetingStore store{QString()};
    MeetingService service{store};
};

} // namespace

TEST_F(ServiceTest, AScheduledMeetingReadsBackAsItWasAskedFor) {
    const std::optional<Answer> answer = service.handle(3, commit(1, aRequest()));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->actionId(), 1U);
    const QString key = answer->content.section(u';', 0, 0);
    const QString invitation = answer->content.section(u';', 1);
    const QJsonObject meeting = readBack(key);
    EXPECT_EQ(meeting["subject"].toString(), u"Review"_s);
    EXPECT_EQ(meeting["duration"].toString(), u"30"_s);
    EXPECT_EQ(meeting["startTime"].toInteger(), 1700000000);
    EXPECT_TRUE(meeting["enableJBH"].toBool());
    EXPECT_EQ(meeting["meetingKey"].toString(), key);
    EXPECT_EQ(meeting["invitationEmail"].toString(), invitation);
    EXPECT_TRUE(invitation.contains(meeting["joinUrl"].toString()));
}

TEST_F(ServiceTest, AMeetingIsUpdatedAndDeletedByItsKey) {
    const QString key = scheduledKey();
    QJsonObject request = aRequest();
    request["meetingKey"] = key;
    request["apptInfo"] = QJsonObject{{"subject", "Retro"}, {"duration", "45"}, {"startTime", "1700003600"}};
    const std::optional<Answer> answer = service.handle(3, commit(2, request));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->actionId(), 2U);
    EXPECT_EQ(answer->content.section(u';', 0, 0), key);
    EXPECT_EQ(readBack(key)["subject"].toString(), u"Retro"_s);
    EXPECT_EQ(answerTo(3, u"3;"_s + key), key);
    for (const QString &content : {commit(2, request), u"3;"_s + key, u"4;"_s + key})
        EXPECT_EQ(answerTo(3, content), u"0;Error 3001"_s);
}

TEST_F(ServiceTest, AMeetingInAnotherZoneStartsAtTheClockTimeThere) {
    const QDate day(2026, 11, 24);
    const QTime nine(9, 0);
    QJsonObject request = aRequest();
    QJsonObject appointment = request["apptInfo"].toObject();
    appointment["startTime"] = QString::number(QDateTime(day, nine).toSecsSinceEpoch());
    for (const char *zone : {"Asia/Tokyo", "America/New_York"}) {
        appointment["timezone"] = QString::fromLatin1(zone);
        request["apptInfo"] = appointment;
        const QString key = answerTo(3, commit(1, request)).section(u';', 0, 0);
        EXPECT_EQ(readBack(key)["startTime"].toInteger(),
                  QDateTime(day, nine, QTimeZone(zone)).toSecsSinceEpoch())
            << zone;
    }
}

TEST_F(ServiceTest, APersonalMeetingHasTheRoomsNumberInItsUrl) {
    QJsonObject request = aRequest();
    QJsonObject setting = request["setting"].toObject();
    setting["usePMI"] = true;
    setting["meetingPassword"] = "";
    request["setting"] = setting;
    const QString key = answerTo(3, commit(1, request)).section(u';', 0, 0);
    const QString room = store.profile()["roomMeetingId"].toString();
    EXPECT_EQ(readBack(key)["originalMeetingNumber"].toString(), room);
    EXPECT_EQ(readBack(key)["joinUrl"].toString(), MeetingService::joinUrl(room, QString()));
    EXPECT_TRUE(readBack(room)["usePMI"].toBool()) << "the room itself can be read";
}

TEST_F(ServiceTest, SignedOutEveryRequestIsAnsweredSo) {
    store.setSignedIn(false);
    for (const QString &content : {commit(1, aRequest()), u"3;1"_s, u"4;1"_s})
        EXPECT_EQ(answerTo(3, content), u"0;Error VelaClientNotSignIn"_s);
    EXPECT_EQ(answerTo(6, u"6"_s), u"0;Error VelaClientNotSignIn"_s);
}

TEST_F(ServiceTest, AccountsTravelAsTheBinaryMessage) {
    store.setAccounts(
        {QJsonObject{{"meetingNumber", 5550001},
                     {"tollNumbers", QJsonArray{QJsonObject{{"country", "DE"}, {"number", "+49 30 555"}}}},
                     {"tollFreeNumbers", QJsonArray{QJsonObject{{"number", "+1 800 555"}}}},
                     {"invitation", "Dial in."}}});
    const QByteArray bytes = QByteArray::fromBase64(answerTo(9, u"9"_s).toLatin1());
    com::brindle::webapp::proto::Response response;
    ASSERT_TRUE(response.ParsePartialFromArray(bytes.constData(), int(bytes.size())));
    ASSERT_EQ(response.pac_info().meetings_size(), 1);
    const auto &account = response.pac_info().meetings(0);
    EXPECT_EQ(account.meeting_number(), 5550001);
    EXPECT_EQ(account.toll_numbers(0).country(), "DE");
    EXPECT_FALSE(account.toll_free_numbers(0).has_country());
}

TEST_F(ServiceTest, OnlyRequestsThatWantAnAnswerGetOne) {
    for (const bool video : {false, true}) {
        EXPECT_FALSE(service.handle(2, video ? u"{\"launchtype\": \"groupVideo\"}"_s
                                             : u"{\"launchtype\": \"groupShare\"}"_s));
        ASSERT_TRUE(service.startedMeeting());
        EXPECT_EQ(service.startedMeeting()->withVideo, video);
    }
    for (quint32 action : {0U, 1U, 4U, 5U, 4294967295U})
        EXPECT_FALSE(service.handle(action, u"x"_s)) << action;
    for (const QString &content : {QString(), u"3"_s, u"5;x"_s, u";;;"_s})
        EXPECT_FALSE(service.handle(3, content)) << qPrintable(content);
    for (const QString &content : {u"1;;;;;;;;;;;;;not json"_s, u"1;;"_s})
        EXPECT_EQ(answerTo(3, content), u"0;Error 5003"_s);
}
