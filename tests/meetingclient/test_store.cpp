#include "standin/meetingclient/MeetingStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace meetingclient;

namespace {
class StoreTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("data/meetings.json"));
};
} // namespace

TEST_F(StoreTest, WhatWasKeptIsThereAfterARestart) {
    QString key;
    {
        MeetingStore store(path);
        key = store.addMeeting({{"subject", "Review"}});
        store.setSignedIn(false);
        EXPECT_TRUE(store.lastError().isEmpty());
    }
    const MeetingStore again(path);
    ASSERT_TRUE(again.meeting(key));
    EXPECT_EQ((*again.meeting(key))["subject"].toString(), QStringLiteral("Review"));
    EXPECT_FALSE(again.signedIn());
}

TEST_F(StoreTest, KeysAreNeverGivenTwice) {
    QString first;
    {
        MeetingStore store(path);
        first = store.addMeeting({});
        store.removeMeeting(first);
    }
    MeetingStore again(path);
    EXPECT_NE(again.addMeeting({}), first);
}

TEST_F(StoreTest, ADamagedFileIsKeptAsideAndNotOverwritten) {
    QDir().mkpath(folder.filePath(QStringLiteral("data")));
    const QByteArray damaged = "{\"meetings\": {\"1\": ";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();
    MeetingStore store(path);
    EXPECT_FALSE(store.lastError().isEmpty());
    store.addMeeting({});
    QFile aside(path + QStringLiteral(".broken-1"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), damaged);
}
