// Base64 of bytes and of texts, and the digest of an invitation.
#include "platform/Literals.h"
#include "plugin/util/EncodeUtils.h"
#include "plugin/util/vlMD5.h"
#include "plugin/util/vlMd5Utils.h"

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

TEST(Md5, IsTheDigestOfTheUtf8BytesInSmallHexDigits) {
    EXPECT_EQ(vlMd5Utils::vlMD5Hex(u""_s), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(vlMd5Utils::vlMD5Hex(u"\u20ac"_s), "bca53fde466a76b7bee3e18997e94a7a");
    EXPECT_TRUE(vlMd5Utils::vlMD5Hex(QString()).isNull());
}

TEST(Md5, IsFinishedOnceAndCanStartOver) {
    Quarvo::MD5 digest;
    digest.feed("abXX", 2);
    digest.feed("c", 1);
    digest.feed("x", 0);
    digest.feed("x", -5);
    digest.feed(nullptr, 5);
    digest.finalize();
    digest.feed("more", 4);
    digest.finalize();
    EXPECT_EQ(digest.hex(), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(digest.binary().toHex(), "900150983cd24fb0d6963f7d28e17f72");
    digest.reset();
    EXPECT_EQ(digest.hex(), "d41d8cd98f00b204e9800998ecf8427e");
}
