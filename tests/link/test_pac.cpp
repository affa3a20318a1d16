// The user's audio conference accounts, as the client sends them.
#include "meeting.pb.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/proto/vlProtoBufConvert.h"
#include "plugin/util/EncodeUtils.h"
#include "tests/link/LinkFixture.h"

namespace {

namespace wire = com::brindle::webapp::proto;

// Numbers and their countries; nullptr: not set.
using Numbers = std::vector<std::pair<const char *, const char *>>;

void add(google::protobuf::RepeatedPtrField<wire::CountryCodeProto> *field, const Numbers &numbers) {
    for (const auto &[number, country] : numbers) {
        wire::CountryCodeProto *added = field->Add();
        if (number)
            added->set_number(number);
        if (country)
            added->set_country(country);
    }
}

QString encoded(const wire::Response &response) {
    return EncodeUtils::base64Encode(QByteArray::fromStdString(response.SerializePartialAsString()));
}

class Accounts : public LinkTest {
protected:
    vlGetPACHelper &helper = vlGetPACHelper::sharedInstance();
};

QString twoAccounts() {
    return ScriptedClient::accountsAnswer({{"800", 9876543210LL, u"Dial \u20ac"_s}, {}});
}

} // namespace

TEST_F(Accounts, DialInTextsHaveTheExactFormThatIsLookedForLater) {
    const std::tuple<Numbers, Numbers, const char *, const char *> cases[] = {
        {{{"F", "C"}}, {{"T", "C"}}, "F (C Toll Free)\r\nT (C Toll)\r\n", "F (C Toll Free), T (C Toll)"},
        {{{"1", nullptr}, {"2", "B"}}, {}, "12 (B Toll Free)\r\n", "1, 2 (B Toll Free)"},
        {{{"1", "A"}, {nullptr, nullptr}}, {}, "1 (A Toll Free)\r\n", "1 (A Toll Free), "},
        {{{nullptr, "A"}}, {{nullptr, "A"}}, " (A Toll Free)\r\n (A Toll)\r\n", " (A Toll Free),  (A Toll)"},
        {{}, {}, "", ""},
    };
    for (const auto &[tollFree, toll, lines, commas] : cases) {
        wire::Response response;
        wire::PACMeeting *account = response.mutable_pac_info()->add_meetings();
        add(account->mutable_toll_free_numbers(), tollFree);
        add(account->mutable_toll_numbers(), toll);
        helper.setPACInfo(encoded(response));
        EXPECT_EQ(helper.pacDialInNumber(1), lines);
        EXPECT_EQ(helper.pacDialInNumberWithCommaSeparator(1), commas);
    }
}

// The bytes that the client sends: the client decides the numbers of the fields.
TEST_F(Accounts, AreFoundUnderTheClientsFieldNumbers) {
    const QByteArray tollNumber = QByteArray::fromHex("12 09 0a025553 2203323132");     // "US", "212"
    const QByteArray tollFreeNumber = QByteArray::fromHex("1a 09 0a024445 2203383030"); // "DE", "800"
    const QByteArray account = QByteArray::fromHex("08 4d") + tollNumber + tollFreeNumber +
                               QByteArray::fromHex("22 02 4869"); // 77, "Hi"
    const QByteArray accounts = '\x0a' + QByteArray(1, char(account.size())) + account;
    // The required field 1 is missing. A text (field 2) comes first, a phone number record (field 36) last.
    const QByteArray answer = QByteArray::fromHex("12 01 78 8a02") + QByteArray(1, char(accounts.size())) +
                              accounts + QByteArray::fromHex("a202 02 0801");
    helper.setPACInfo(EncodeUtils::base64Encode(answer));
    EXPECT_EQ(helper.pacCount(), 1);
    EXPECT_EQ(helper.pacMeetingID(1), "77");
    EXPECT_EQ(helper.pacDialInNumber(1), "800 (DE Toll Free)\r\n212 (US Toll)\r\n");
    EXPECT_EQ(helper.invitationMail(1), "Hi");
}

TEST_F(Accounts, AreCountedFromOneAndUnknownOnesAreEmpty) {
    helper.setPACInfo(QString());
    EXPECT_FALSE(helper.hasPACInfo() || helper.isPACEnabled());
    EXPECT_EQ(helper.pacCount(), 0);
    for (const QString &text : {helper.pacMeetingID(1), helper.pacDialInNumber(1), helper.invitationMail(1)})
        EXPECT_TRUE(text.isNull()) << "before any answer";

    helper.setPACInfo(twoAccounts());
    EXPECT_EQ(helper.pacCount(), 2);
    EXPECT_EQ(helper.pacMeetingID(1), "9876543210");
    EXPECT_EQ(helper.invitationMail(1), u"Dial \u20ac"_s);
    for (const int account : {0, -1, 2, 3, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(helper.pacMeetingID(account), "0") << account;
        for (const QString &text :
             {helper.pacDialInNumber(account), helper.pacDialInNumberWithCommaSeparator(account),
              helper.invitationMail(account), helper.htmlInvitationMail(account)})
            EXPECT_TRUE(text.isEmpty() && !text.isNull()) << account;
        EXPECT_FALSE(helper.supportHtmlInvitationMail(account));
    }
}

TEST_F(Accounts, AnAnswerThatCannotBeReadLeavesTheLastGoodOneAndAnEmptyOneNone) {
    helper.setPACInfo(twoAccounts());
    for (const QString &bad : {u"not base64!"_s, u"igI="_s, u"/w=="_s}) {
        helper.setPACInfo(bad);
        EXPECT_EQ(helper.pacMeetingID(1), "9876543210") << qPrintable(bad);
        EXPECT_TRUE(helper.isPACEnabled());
    }
    wire::Response none;
    none.set_unread_1(0);
    for (const wire::Response &empty : {none, wire::Response()}) {
        helper.setPACInfo(encoded(empty));
        EXPECT_EQ(helper.pacCount(), 0);
        EXPECT_FALSE(helper.isPACEnabled());
    }
}

TEST(Proto, BytesThatAreNoMessageAreRefused) {
    wire::PACInfo info;
    const auto reads = [&info](const QByteArray &bytes) {
        return vlProtoBufConvert::ProtoFromByteStream(&info, bytes.constData(), int(bytes.size()));
    };
    const QByteArray account = QByteArray::fromHex("0a 02 08 4d");
    EXPECT_TRUE(vlProtoBufConvert::ProtoFromByteStream(&info, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, nullptr, 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(nullptr, "", 0));
    EXPECT_FALSE(vlProtoBufConvert::ProtoFromByteStream(&info, "", -1));
    // A zero byte in place of a tag ends the message.
    EXPECT_TRUE(reads(account + QByteArray("\0\xff\xff", 3)) && reads(account));
    EXPECT_EQ(info.meetings_size(), 2) << "each message adds to the former ones";
    EXPECT_FALSE(reads(account + "\xff\xff"));
    // Nested groups of an unknown field.
    const auto nested = [](int depth) { return QByteArray(depth, '\x13') + QByteArray(depth, '\x14'); };
    EXPECT_TRUE(reads(nested(60)));
    EXPECT_FALSE(reads(nested(70)));
    EXPECT_TRUE(reads(QByteArray(vlProtoBufConvert::totalBytesLimit, '\0')));
    EXPECT_FALSE(reads(QByteArray(vlProtoBufConvert::totalBytesLimit + 1, '\0')));
}
