#include "platform/Literals.h"
#include "standin/meetingclient/MeetingStore.h"
#include "standin/meetingclient/People.h"
#include "tests/support/DiskFaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace meetingclient;

namespace {
class StoreTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(u"data/meetings.json"_s);
};
} // namespace

TEST_F(StoreTest, ADamagedFileIsKeptAsideAndNotOverwritten) {
    const QByteArray damaged = "{\"meetings\": {\"1\": ";
    QDir().mkpath(folder.filePath(u"data"_s));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();
    MeetingStore store(path);
    EXPECT_FALSE(store.lastError().isEmpty());
    store.addMeeting({});
    QFile aside(path + u".broken-1"_s);
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), damaged);
}

TEST_F(StoreTest, AFullDiskIsSaidAndTheFileStaysWhole) {
    MeetingStore store(path);
    const QString key = store.addMeeting({{"subject", "Before"}});
    {
        const FullDisk full;
        store.addMeeting({{"subject", "No room"}});
        EXPECT_FALSE(store.lastError().isEmpty());
        EXPECT_TRUE(MeetingStore(path).meeting(key));
    }
    const QString later = store.addMeeting({{"subject", "Room again"}});
    EXPECT_TRUE(store.lastError().isEmpty());
    EXPECT_EQ(MeetingStore(path).meetings().size(), store.meetings().size())
        << "what had no room is kept now";
    EXPECT_TRUE(MeetingStore(path).meeting(later));
    MeetingStore(path).removeMeeting(later);
    EXPECT_NE(MeetingStore(path).addMeeting({}), later) << "keys are never given twice";
}

TEST_F(StoreTest, AnotherUserHasARoomOfTheirOwnAndWhatIsNoOrderIsRefused) {
    MeetingStore store{QString()};
    QString error;
    const auto room = [&store] { return store.profile().value("roomMeetingId").toString(); };
    const QString former = room();
    EXPECT_TRUE(obey(store, "user u-1002", &error));
    EXPECT_NE(room(), former);
    EXPECT_EQ(store.meeting(room())->value("meetingKey").toString(), room());
    EXPECT_TRUE(store.meeting(former)) << "meetings of others stay";
    for (const char *wrong : {"accounts seven", "user u-9", "bosses", "accounts"}) {
        EXPECT_TRUE(isOrder(wrong));
        EXPECT_FALSE(obey(store, wrong, &error)) << wrong;
        EXPECT_FALSE(error.isEmpty());
    }
    EXPECT_FALSE(isOrder("delay schedule 5"));
}
