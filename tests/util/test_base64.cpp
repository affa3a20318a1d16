#include "platform/Literals.h"
#include "plugin/util/EncodeUtils.h"

#include <gtest/gtest.h>

TEST(Base64, EncodesAndDecodesTheStandardVectors) {
    struct Case {
        const char *bytes, *text;
    };
    const Case cases[] = {{"", ""},
                          {"f", "Zg=="},
                          {"fo", "Zm8="},
                          {"foo", "Zm9v"},
                          {"foob", "Zm9vYg=="},
                          {"fooba", "Zm9vYmE="},
                          {"foobar", "Zm9vYmFy"},
                          {"\xfb\xff", "+/8="}};
    for (const Case &c : cases) {
        EXPECT_EQ(EncodeUtils::base64Encode(c.bytes), c.text);
        const QByteArray decoded = EncodeUtils::base64DecodeToData(c.text);
        EXPECT_EQ(decoded, c.bytes);
        EXPECT_FALSE(decoded.isNull());
    }
    EXPECT_EQ(EncodeUtils::base64Decode("4oKs"), u"\u20ac"_s);
    EXPECT_TRUE(EncodeUtils::base64Decode("").isEmpty() && !EncodeUtils::base64Decode("").isNull());
}

TEST(Base64, TextThatIsCutOrForeignDecodesToNothing) {
    EXPECT_TRUE(EncodeUtils::base64DecodeToData(QString()).isNull());
    for (const char *text :
         {"Z", "Zg", "Zg=", "Zm9", "Zm9vY", "====", "Z===", "Zg=a", "Zm9v Zm9", "Zm9-", "Zm9_", "Zm\n="})
        EXPECT_TRUE(EncodeUtils::base64DecodeToData(text).isNull()) << text;
    EXPECT_TRUE(EncodeUtils::base64DecodeToData(u"Zm9\u0176"_s).isNull());
}

TEST(Base64, BytesThatAreNotUtf8AreNoText) {
    for (const char *text : {"/w==", "4oI=", "wIA="}) {
        EXPECT_FALSE(EncodeUtils::base64DecodeToData(text).isNull()) << text;
        EXPECT_TRUE(EncodeUtils::base64Decode(text).isNull()) << text;
    }
}
