#include "platform/services/TestServices.h"
#include "platform/services/storage/Storage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>

namespace {

using platform::PropertyLists;

const std::unique_ptr<PropertyLists> lists = platform::makePropertyLists();

QVariantMap everything() {
    return {{u"text"_s, u"Grüße 😀 <&>\" \r\n\ttrailing  "_s},
            {u"empty"_s, u""_s},
            {u"Schlüssel & <key>"_s, u" "_s},
            {u"low"_s, std::numeric_limits<qint64>::min()},
            {u"high"_s, std::numeric_limits<qint64>::max()},
            {u"real"_s, 0.1},
            {u"tiny"_s, 5e-324},
            {u"yes"_s, true},
            {u"no"_s, false},
            {u"data"_s, QByteArray("\0\xff\n", 3)},
            {u"none"_s, QByteArray()},
            {u"date"_s, QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC)},
            {u"list"_s, QVariantList{qint64(1), u"two"_s, QVariantList(), QVariantMap()}}};
}

QByteArray xmlOf(const QByteArray &content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + content + "</plist>";
}

TEST(PropertyLists, WhatIsWrittenReadsBackAsItWas) {
    const QByteArray xml = lists->toXml(everything());
    const rt::Value back = lists->parse(xml);
    ASSERT_EQ(back.typeId(), QMetaType::QVariantMap);
    for (const auto &[key, value] : everything().asKeyValueRange()) {
        EXPECT_EQ(back.toMap().value(key), value) << qPrintable(key);
        EXPECT_EQ(back.toMap().value(key).typeId(), value.typeId()) << qPrintable(key);
    }
    EXPECT_FALSE(back.toMap().value(u"empty"_s).toString().isNull());
    EXPECT_EQ(back.toMap().size(), everything().size());
    EXPECT_EQ(lists->toXml(back), xml) << "the same value must give the same bytes";
    EXPECT_EQ(lists->parse("\xef\xbb\xbf" + xml), back) << "with a byte order mark";
}

TEST(PropertyLists, WhatXmlCannotCarryIsLeftOut) {
    const QString text =
        u"a"_s + QChar(u'\0') + QChar(u'\x1b') + QChar(0xd800) + QChar(0xfffe) + QChar(0xdc00) + u"b"_s;
    const QVariantMap value{{u"text"_s, text},
                            {u"marker"_s, rt::nullMarker()},
                            {u"nothing"_s, QVariant()},
                            {u"no text"_s, QString()},
                            {u"list"_s, QVariantList{1, rt::nullMarker(), 2}}};
    const QVariantMap expected{{u"text"_s, u"ab"_s}, {u"list"_s, QVariantList{1, 2}}};
    EXPECT_EQ(lists->parse(lists->toXml(value)).toMap(), expected);
}

TEST(PropertyLists, WhatHasNoPlaceInOneGivesNothing) {
    QVariant deep = u"deep"_s;
    for (int i = 0; i < PropertyLists::maximumDepth; ++i)
        deep = QVariantList{deep};
    for (const QVariant &value :
         {QVariant(), rt::nullMarker(), QVariant(QString()), QVariant(QPoint(1, 2)), QVariant(QDateTime()),
          QVariant(std::numeric_limits<quint64>::max()), QVariant::fromValue<void *>(&deep), deep})
        EXPECT_TRUE(lists->toXml(QVariantMap{{u"key"_s, QVariantList{value}}}).isEmpty() ||
                    !rt::isPresent(value))
            << value.typeName();
    EXPECT_TRUE(lists->toXml(QVariant()).isEmpty());
    EXPECT_TRUE(lists->toXml(rt::nullMarker()).isEmpty());
}

TEST(PropertyLists, MalformedOnesAreUnreadable) {
    const QByteArray malformed[] = {
        "",
        "text",
        "<plist/>",
        "<dict/>",
        xmlOf(""),
        xmlOf("<dict/><dict/>"),
        xmlOf("<dict/>") + "<plist><dict/></plist>",
        xmlOf("<dict/>") + "trailing",
        xmlOf("<dict><key>a</key></dict>"),
        xmlOf("<dict><string>a</string></dict>"),
        xmlOf("<dict><key>a</key><key>b</key></dict>"),
        xmlOf("<dict>stray<key>a</key><true/></dict>"),
        xmlOf("<array>stray</array>"),
        xmlOf("<array><unknown/></array>"),
        xmlOf("<array><string><b/></string></array>"),
        xmlOf("<integer>12a</integer>"),
        xmlOf("<integer>9223372036854775808</integer>"),
        xmlOf("<integer/>"),
        xmlOf("<real>one</real>"),
        xmlOf("<date>yesterday</date>"),
        xmlOf("<data>!!!</data>"),
        xmlOf("<string>\xff\xfe</string>"),
        xmlOf(QByteArray("<string>a\0b</string>", 20)),
        xmlOf("<string>\x1b</string>"),
        xmlOf("<string>&undefined;</string>"),
        "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
        "<plist><string>&d;</string></plist>",
        xmlOf(QByteArray("<array>").repeated(200'000)),
        xmlOf(QByteArray("<array>").repeated(300) + QByteArray("</array>").repeated(300)),
        xmlOf(QByteArray("<dict><key>k</key>").repeated(200'000)),
    };
    for (const QByteArray &bytes : malformed)
        EXPECT_FALSE(lists->parse(bytes).isValid()) << bytes.left(120).constData();
}

TEST(PropertyLists, EveryTruncationIsUnreadable) {
    const QByteArray whole = lists->toXml(everything()).trimmed();
    for (qsizetype size = 0; size < whole.size(); ++size)
        ASSERT_FALSE(lists->parse(whole.first(size)).isValid()) << size;
    EXPECT_TRUE(lists->parse(whole).isValid());
}

// Binary form. The sample was written by another program.

const QByteArray binarySample = QByteArray::fromBase64(
    "YnBsaXN0MDDaAQIDBAUGBwgJCgsMDQ4PEBUWFxhVYXNjaWlTYmlnVGRhdGFUZGF0ZVVlbXB0eVRsaXN0UW5UcmVhbFR0ZXh0U3llc1Vw"
    "bGFpbhMAAAEAAAAAAEIA/zNBxckA5oAAANCjERITEAFTdHdvoRQQAxP/////////+SM/+AAAAAAAAGgARwByAPwA3wBlACDYPd4ACQgd"
    "IycsMTc8PkNITFJbXmdobG5ydHZ/iJkAAAAAAAABAQAAAAAAAAAZAAAAAAAAAAAAAAAAAAAAmg==");

TEST(BinaryPropertyLists, EveryKindIsRead) {
    const QVariantMap expected{
        {u"ascii"_s, u"plain"_s},
        {u"text"_s, u"Grüße 😀"_s},
        {u"n"_s, qint64(-7)},
        {u"big"_s, qint64(1) << 40},
        {u"real"_s, 1.5},
        {u"yes"_s, true},
        {u"data"_s, QByteArray("\0\xff", 2)},
        {u"date"_s, QDateTime(QDate(2024, 3, 1), QTime(12, 30, 5), Qt::UTC)},
        {u"list"_s, QVariantList{qint64(1), u"two"_s, QVariantList{qint64(3)}}},
        {u"empty"_s, QVariantMap()},
    };
    const QVariantMap read = lists->parse(binarySample).toMap();
    for (const auto &[key, value] : expected.asKeyValueRange())
        EXPECT_EQ(read.value(key), value) << qPrintable(key);
    EXPECT_EQ(read.size(), expected.size());
}

TEST(BinaryPropertyLists, NoDamageDoesHarm) {
    for (qsizetype size = 0; size < binarySample.size(); ++size)
        EXPECT_FALSE(lists->parse(binarySample.first(size)).isValid()) << size;
    for (qsizetype at = 8; at < binarySample.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray damaged = binarySample;
            damaged[at] = char(damaged[at] ^ (1 << bit));
            std::ignore = lists->parse(damaged); // may be readable still; must come back
        }
    }
}

// Objects of at most 255 bytes in all are referred to by one byte, offsets are four bytes.
QByteArray binaryOf(const QList<QByteArray> &objects, int referenceSize = 1) {
    const auto bigEndian = [](quint64 number, int size) {
        QByteArray bytes(size, '\0');
        for (int i = 0; i < size; ++i)
            bytes[size - 1 - i] = char(number >> (8 * i));
        return bytes;
    };
    QByteArray result = "bplist00";
    QByteArray table;
    for (const QByteArray &object : objects) {
        table += bigEndian(quint64(result.size()), 4);
        result += object;
    }
    const auto tableOffset = quint64(result.size());
    return result + table + QByteArray(6, '\0') + bigEndian(4, 1) + bigEndian(quint64(referenceSize), 1) +
           bigEndian(quint64(objects.size()), 8) + bigEndian(0, 8) + bigEndian(tableOffset, 8);
}

TEST(BinaryPropertyLists, FewBytesThatStandForTooMuchAreUnreadable) {
    EXPECT_EQ(lists->parse(binaryOf({"\xa1\x01", "\x51x"})), QVariant(QVariantList{u"x"_s}))
        << "the builder itself";

    EXPECT_FALSE(lists->parse(binaryOf({QByteArray("\xa1\x00", 2)})).isValid()) << "a list that holds itself";
    EXPECT_FALSE(lists->parse(binaryOf({"\xa1\x07"})).isValid()) << "a member that is not there";

    QList<QByteArray> doubling;
    for (char i = 1; i < 40; ++i)
        doubling.append(QByteArray("\xa2") + i + i);
    EXPECT_FALSE(lists->parse(binaryOf(doubling + QList<QByteArray>{"\x51x"})).isValid())
        << "2 to the 39th nodes";

    QList<QByteArray> deep;
    for (int i = 1; i < 100'000; ++i)
        deep.append(QByteArray("\xa1") + char(i >> 16) + char(i >> 8) + char(i));
    EXPECT_FALSE(lists->parse(binaryOf(deep + QList<QByteArray>{"\x51x"}, 3)).isValid()) << "nested deep";

    // A shared member must not lie too deep along any of the ways to it.
    QList<QByteArray> shared{"\xa2\x01\x03", "\xa1\x02", "\xa1\x03"};
    for (int i = 4; i < 256; ++i)
        shared.append(QByteArray("\xa1") + char(i));
    shared.append("\x51x");
    EXPECT_TRUE(lists->parse(binaryOf(shared)).isValid()) << "just not too deep";
    shared[0] = "\xa2\x03\x01";
    EXPECT_TRUE(lists->parse(binaryOf(shared)).isValid()) << "the same in the other order";
}

// Files

class PropertyListFiles : public testing::Test {
protected:
    void put(const QByteArray &content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"a.plist"_s);
};

TEST_F(PropertyListFiles, AWriteThatFailsLeavesTheOldFileAndNothingElse) {
    ASSERT_TRUE(lists->write(path, QVariantMap{{u"old"_s, 1}}));
    EXPECT_FALSE(lists->write(path, QVariantMap{{u"new"_s, QPoint()}}));
    EXPECT_FALSE(lists->write(path, QVariant()));
    EXPECT_FALSE(lists->write(folder.filePath(u"no/such/folder.plist"_s), QVariantMap()));
    EXPECT_EQ(lists->read(path).toMap(), (QVariantMap{{u"old"_s, 1}}));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.plist"_s});
    ASSERT_TRUE(lists->write(path, QVariantMap()));
    EXPECT_EQ(lists->read(path), QVariant(QVariantMap()));
}

// Whoever keeps the same again does not wait for the disk.
TEST_F(PropertyListFiles, TheSameBytesAreNotWrittenAgainAndOthersAre) {
    const auto file = [this] {
        struct stat status {};
        EXPECT_EQ(::stat(qPrintable(path), &status), 0);
        return status.st_ino; // each write puts a new file in its place
    };
    ASSERT_TRUE(lists->write(path, QVariantMap{{u"n"_s, 1}}));
    QFile keptOpen(path); // so that no new file gets its number
    ASSERT_TRUE(keptOpen.open(QIODevice::ReadOnly));
    const auto first = file();
    EXPECT_TRUE(lists->write(path, QVariantMap{{u"n"_s, 1}}));
    EXPECT_EQ(file(), first);
    EXPECT_TRUE(lists->write(path, QVariantMap{{u"n"_s, true}}));
    EXPECT_NE(file(), first);
    EXPECT_EQ(lists->read(path).toMap(), (QVariantMap{{u"n"_s, true}}));
}

TEST_F(PropertyListFiles, WhatIsNoReadableFileHasNoValue) {
    EXPECT_FALSE(lists->read(path).isValid());
    EXPECT_FALSE(lists->read(folder.path()).isValid());
    EXPECT_FALSE(lists->read(u"/dev/zero"_s).isValid());
    EXPECT_FALSE(lists->read(QString()).isValid());
    put(xmlOf("<dict/>" + QByteArray(PropertyLists::maximumSize, ' ')));
    EXPECT_FALSE(lists->read(path).isValid()) << "too large";
    put(xmlOf("<dict/>" + QByteArray(1000, ' ')));
    EXPECT_TRUE(lists->read(path).isValid());
}

} // namespace
