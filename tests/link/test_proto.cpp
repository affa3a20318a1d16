// Reading protobuf messages from bytes.
#include "meeting.pb.h"
#include "plugin/proto/vlProtoBufConvert.h"

#include <QByteArray>
#include <gtest/gtest.h>

namespace {

using com::brindle::webapp::proto::PACInfo;

bool read(google::protobuf::MessageLite &message, const QByteArray &bytes) {
    return vlProtoBufConvert::ProtoFromByteStream(&message, bytes.constData(), int(bytes.size()));
}

PACInfo infoWith(qint64 number) {
    PACInfo info;
    info.add_meetings()->set_meeting_number(number);
    return info;
}

QByteArray bytesOf(const google::protobuf::MessageLite &message) {
    return QByteArray::fromStdString(message.SerializePartialAsString());
}

} // namespace

TEST(Proto, BytesThatAreNoMessageAreRefused) {
    PACInfo info;
    EXPECT_TRUE(vlProtoBufConvert::ProtoFromByteStream(&info, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, nullptr, 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(nullptr, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, "", -1));
    // A zero byte in place of a tag ends the message.
    EXPECT_TRUE(read(info, bytesOf(infoWith(7)) + QByteArray("\0\xff\xff", 3)));
    EXPECT_TRUE(read(info, bytesOf(infoWith(8))));
    EXPECT_EQ(info.meetings_size(), 2) << "what is read is added";
    EXPECT_FALSE(read(info, bytesOf(infoWith(7)) + "\xff\xff"));
    // Groups of an unknown field, each inside the one before.
    const auto nested = [](int depth) { return QByteArray(depth, '\x13') + QByteArray(depth, '\x14'); };
    EXPECT_TRUE(read(info, nested(60)));
    EXPECT_FALSE(read(info, nested(70)));
    QByteArray zeroes(vlProtoBufConvert::totalBytesLimit + 1, '\0');
    EXPECT_FALSE(read(info, zeroes));
    zeroes.chop(1);
    EXPECT_TRUE(read(info, zeroes));
}
