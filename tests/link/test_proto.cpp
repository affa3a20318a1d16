#include "meeting.pb.h"
#include "plugin/proto/vlProtoBufConvert.h"

#include <QByteArray>
#include <gtest/gtest.h>

namespace {

using com::brindle::webapp::proto::PACInfo;
using com::brindle::webapp::proto::Response;

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

TEST(Proto, AMessageComesBackFromItsBytes) {
    const PACInfo info = infoWith(77);
    unsigned char *buffer = nullptr;
    int size = 0;
    ASSERT_TRUE(vlProtoBufConvert::ProtoToByteStream(&info, buffer, size));
    PACInfo back;
    EXPECT_TRUE(vlProtoBufConvert::ProtoFromByteStream(&back, buffer, size));
    EXPECT_EQ(back.meetings(0).meeting_number(), 77);
    vlProtoBufConvert::FreeProtoByteStream(buffer, size);
    vlProtoBufConvert::FreeProtoByteStream(nullptr, 0);
}

TEST(Proto, AnIncompleteMessageIsReadButNotWritten) {
    unsigned char *buffer = nullptr;
    int size = 0;
    EXPECT_FALSE(vlProtoBufConvert::ProtoToByteStream(nullptr, buffer, size));
    Response response;
    *response.mutable_pac_info() = infoWith(77);
    EXPECT_FALSE(vlProtoBufConvert::ProtoToByteStream(&response, buffer, size));
    EXPECT_EQ(buffer, nullptr);
    Response back;
    EXPECT_TRUE(read(back, bytesOf(response)));
    EXPECT_EQ(back.pac_info().meetings_size(), 1);
}

TEST(Proto, BytesAreMergedIntoWhatIsThere) {
    PACInfo info = infoWith(1);
    EXPECT_TRUE(read(info, bytesOf(infoWith(2))));
    EXPECT_EQ(info.meetings_size(), 2);
    EXPECT_TRUE(vlProtoBufConvert::ProtoFromByteStream(&info, "", 0));
    EXPECT_EQ(info.meetings_size(), 2);
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, nullptr, 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(nullptr, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, "", -1));
}

TEST(Proto, AZeroByteInPlaceOfATagEndsTheMessage) {
    PACInfo info;
    EXPECT_TRUE(read(info, bytesOf(infoWith(7)) + QByteArray("\0\xff\xff", 3)));
    EXPECT_EQ(info.meetings_size(), 1);
    PACInfo other;
    EXPECT_FALSE(read(other, bytesOf(infoWith(7)) + "\xff\xff"));
}

TEST(Proto, UnknownFieldsAreSkipped) {
    PACInfo info;
    EXPECT_TRUE(read(info, QByteArray("\xa2\x06\x03"
                                      "abc",
                                      6) +
                               bytesOf(infoWith(7))));
    EXPECT_EQ(info.meetings_size(), 1);
}

TEST(Proto, TooDeepOrTooLargeInputIsRefused) {
    // Groups of an unknown field, each inside the one before.
    const auto nested = [](int depth) { return QByteArray(depth, '\x13') + QByteArray(depth, '\x14'); };
    PACInfo info;
    EXPECT_TRUE(read(info, nested(60)));
    EXPECT_FALSE(read(info, nested(70)));
    EXPECT_FALSE(read(info, nested(100'000)));

    QByteArray zeroes(vlProtoBufConvert::totalBytesLimit + 1, '\0');
    EXPECT_FALSE(read(info, zeroes));
    zeroes.chop(1);
    EXPECT_TRUE(read(info, zeroes));
}
