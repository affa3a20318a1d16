// The digest of an invitation.
#include "platform/Literals.h"
#include "plugin/util/vlMD5.h"
#include "plugin/util/vlMd5Utils.h"

#include <gtest/gtest.h>

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
