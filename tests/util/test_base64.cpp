// Base64 of bytes and of texts.
#include "platform/Literals.h"
#include "plugin/util/EncodeUtils.h"

#include <gtest/gtest.h>

TEST(Base64, ComesBackFromItsText) {
    for (const auto &[bytes, text] :
         {std::pair{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xfb\xff", "+/8="}}) {
        EXPECT_EQ(EncodeUtils::base64Encode(bytes), text);
        EXPECT_EQ(EncodeUtils::base64DecodeToData(text), bytes);
        EXPECT_FALSE(EncodeUtils::base64DecodeToData(text).isNull());
    }
    EXPECT_EQ(EncodeUtils::base64Decode("4oKs"), u"\u20ac"_s);
    EXPECT_FALSE(EncodeUtils::base64Decode("").isNull());
    for (const QString &foreign : {QString(), u"Z"_s, u"Zg"_s, u"Zg="_s, u"===="_s, u"Z==="_s, u"Zg=a"_s,
                                   u"Zm9v Zm9"_s, u"Zm9-"_s, u"Zm9_"_s, u"Zm\n="_s, u"Zm9\u0176"_s})
        EXPECT_TRUE(EncodeUtils::base64DecodeToData(foreign).isNull()) << qPrintable(foreign);
    for (const char *noUtf8 : {"/w==", "4oI=", "wIA="}) {
        EXPECT_FALSE(EncodeUtils::base64DecodeToData(noUtf8).isNull()) << noUtf8;
        EXPECT_TRUE(EncodeUtils::base64Decode(noUtf8).isNull()) << noUtf8;
    }
}
