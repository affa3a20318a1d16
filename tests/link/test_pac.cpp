// The user's audio conference accounts, as the client sends them.
#include "meeting.pb.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/proto/vlProtoBufConvert.h"
#include "plugin/util/EncodeUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

namespace wire = com::brindle::webapp::proto;

class Accounts : public LinkTest {
protected:
    vlGetPACHelper &helper = vlGetPACHelper::sharedInstance();
};

} // namespace

// The bytes that the client sends: the client decides the numbers of the fields.
TEST_F(Accounts, AreFoundUnderTheClientsFieldNumbersAndWrittenAsTheyAreLookedForLater) {
    const QByteArray tollNumber = QByteArray::fromHex("12 09 0a025553 2203323132");     // "US", "212"
    const QByteArray tollFreeNumber = QByteArray::fromHex("1a 09 0a024445 2203383030"); // "DE", "800"
    const QByteArray numberOnly = QByteArray::fromHex("1a 05 2203313131");
    const QByteArray account = QByteArray::fromHex("08 4d") + tollNumber + tollFreeNumber + numberOnly +
                               QByteArray::fromHex("22 02 4869"); // 77, "Hi"
    const QByteArray accounts = '\x0a' + QByteArray(1, char(account.size())) + account;
    // The required field 1 is missing. A text (field 2) comes first, a phone number record (field 36) last.
    const QByteArray answer = QByteArray::fromHex("12 01 78 8a02") + QByteArray(1, char(accounts.size())) +
                              accounts + QByteArray::fromHex("a202 02 0801");
    helper.setPACInfo(EncodeUtils::base64Encode(answer));
    EXPECT_EQ(helper.pacCount(), 1);
    EXPECT_EQ(helper.pacMeetingID(1), "77");
    EXPECT_EQ(helper.pacDialInNumber(1), "800 (DE Toll Free)\r\n111212 (US Toll)\r\n");
    EXPECT_EQ(helper.pacDialInNumberWithCommaSeparator(1), "800 (DE Toll Free), 111, 212 (US Toll)");
    EXPECT_EQ(helper.invitationMail(1), "Hi");
    EXPECT_EQ(helper.pacMeetingID(2), "0") << "there is one account";
}

TEST_F(Accounts, AreAlsoTakenFromAnAnswerThatNobodyAskedFor) {
    givenTheClient();
    static_cast<void>(vlAPIMgr::sharedInstance()); // listens from now on
    clientAnswers(ClientAnswer::GetPAC, ScriptedClient::accountsAnswer({{"800", 77, "Dial"}}));
    EXPECT_EQ(helper.pacMeetingID(1), "77");
    client.quits();
    clientAnswers(ClientAnswer::GetPAC, "CAA=");
    EXPECT_EQ(helper.pacMeetingID(1), "77");
}

TEST_F(Accounts, AnAnswerThatCannotBeReadLeavesTheLastGoodOneAndAnEmptyOneNone) {
    EXPECT_EQ(helper.pacCount(), 0);
    helper.setPACInfo(ScriptedClient::accountsAnswer({{"800", 9876543210LL, "Dial"}}));
    const QByteArray tooDeep = QByteArray(70, '\x13') + QByteArray(70, '\x14'); // groups of an unknown field
    for (const QString &bad : {u"not base64!"_s, u"igI="_s, u"/w=="_s, EncodeUtils::base64Encode(tooDeep)}) {
        helper.setPACInfo(bad);
        EXPECT_EQ(helper.pacMeetingID(1), "9876543210") << qPrintable(bad);
        EXPECT_TRUE(helper.isPACEnabled());
    }
    helper.setPACInfo("CAA=");
    EXPECT_EQ(helper.pacCount(), 0);
    EXPECT_FALSE(helper.isPACEnabled());
}

TEST(Proto, AMessageIsWrittenWholeOrNotAtAllAndMayBeEmpty) {
    wire::Response message;
    unsigned char *bytes = nullptr;
    int size = 7;
    EXPECT_FALSE(vlProtoBufConvert::ProtoToByteStream(nullptr, bytes, size));
    EXPECT_EQ(size, 0);
    EXPECT_FALSE(vlProtoBufConvert::ProtoToByteStream(&message, bytes, size))
        << "a required field is missing";
    EXPECT_EQ(bytes, nullptr);
    message.set_unread_1(0);
    ASSERT_TRUE(vlProtoBufConvert::ProtoToByteStream(&message, bytes, size));
    EXPECT_EQ(QByteArray(reinterpret_cast<const char *>(bytes), size).toHex(), "0800");
    vlProtoBufConvert::FreeProtoByteStream(bytes, size);
    EXPECT_TRUE(vlProtoBufConvert::ProtoFromByteStream(&message, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&message, "", -1));
}
