#include "platform/Literals.h"
#include "standin/meetingclient/MeetingService.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace meetingclient;

namespace {

QString commit(int subCommand, const QJsonObject &request) {
    return QString::number(subCommand) + QString(13, u';') +
           QString::fromUtf8(QJsonDocument(request).toJson(QJsonDocument::Compact));
}

QJsonObject aRequest() {
    return {{"apptInfo", QJsonObject{{"subject", "Review"}, {"duration", "30"}, {"startTime", "1700000000"}}},
            {"setting", QJsonObject{{"enableJBH", true}}}};
}

class ServiceTest : public testing::Test {
protected:
    QString answerTo(quint32 action, const QString &content) {
        const std::optional<Answer> answer = carryOut(store, action, content);
        return answer ? answer->content : u"(none)"_s;
    }
    QJsonObject readBack(const QString &key) {
        const QStringList fields = answerTo(3, u"4;"_s + key).split(u';');
        EXPECT_GE(fields.size(), 15);
        return QJsonDocument::fromJson(QByteArray::fromBase64(fields.value(13).toLatin1())).object();
    }
    MeetingStore store{QString()};
};

} // namespace

TEST_F(ServiceTest, AMeetingReadsBackAsItWasAskedForAndABadRequestIsRefused) {
    const QString answer = answerTo(3, commit(1, aRequest()));
    const QString key = answer.section(u';', 0, 0);
    const QJsonObject meeting = readBack(key);
    EXPECT_EQ(meeting["duration"], "30");
    EXPECT_EQ(meeting["startTime"], 1700000000);
    EXPECT_EQ(meeting["enableJBH"], true);
    EXPECT_EQ(meeting["meetingKey"], key);
    EXPECT_EQ(meeting["invitationEmail"], answer.section(u';', 1));
    QJsonObject request = aRequest();
    request["meetingKey"] = key;
    EXPECT_EQ(answerTo(3, commit(2, request)), answer);
    EXPECT_EQ(answerTo(3, u"3;"_s + key), key);
    for (const QString &content : {commit(2, request), u"3;"_s + key, u"4;"_s + key})
        EXPECT_EQ(answerTo(3, content), u"0;Error 3001"_s);
    EXPECT_EQ(answerTo(3, u"1;;;;;;;;;;;;;not json"_s), u"0;Error 5003"_s);
    for (const QString &content : {QString(), u"3"_s, u"5;x"_s, u";;;"_s})
        EXPECT_FALSE(carryOut(store, 3, content)) << qPrintable(content);
}

TEST_F(ServiceTest, APersonalMeetingHasTheRoomsNumberInItsUrl) {
    QJsonObject request = aRequest();
    request["setting"] = QJsonObject{{"usePMI", true}};
    const QString key = answerTo(3, commit(1, request)).section(u';', 0, 0);
    const QString room = store.profile()["roomMeetingId"].toString();
    EXPECT_EQ(readBack(key)["joinUrl"], joinUrl(room, QString()));
    EXPECT_EQ(readBack(room)["joinUrl"], joinUrl(room, QString())) << "the room itself can be read";
}
