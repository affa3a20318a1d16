#include "platform/Literals.h"
#include "plugin/util/vlMD5.h"
#include "plugin/util/vlMd5Utils.h"

#include <QCryptographicHash>
#include <gtest/gtest.h>

TEST(Md5, GivesTheDigestsOfTheStandardsSuite) {
    struct Case {
        const char *text, *digest;
    };
    const Case cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(vlMd5Utils::vlMD5Hex(QString::fromLatin1(c.text)), c.digest) << c.text;
    EXPECT_TRUE(vlMd5Utils::vlMD5Hex(QString()).isNull());
    EXPECT_EQ(vlMd5Utils::vlMD5Hex(u"\u20ac"_s), "bca53fde466a76b7bee3e18997e94a7a");
}

TEST(Md5, TheDigestDoesNotDependOnHowTheBytesCome) {
    QByteArray bytes;
    for (int i = 0; i < 300; ++i)
        bytes.append(char(i * 7));
    for (qsizetype length = 0; length <= bytes.size(); ++length) {
        const QByteArray text = bytes.first(length);
        const QByteArray expected = QCryptographicHash::hash(text, QCryptographicHash::Md5);
        for (const qsizetype chunk : {1, 55, 56, 63, 64, 65, 128}) {
            Quarvo::MD5 digest;
            for (qsizetype at = 0; at < length; at += chunk)
                digest.feed(text.mid(at, chunk));
            EXPECT_EQ(digest.binary(), expected) << length << ' ' << chunk;
        }
    }
}

TEST(Md5, IsFinishedOnceAndCanStartOver) {
    Quarvo::MD5 digest;
    digest.feed("abcXX", 3);
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
