// Property lists: what is written and read, and the files that hold them.
#include "platform/services/storage/Storage.h"

#include <QDir>
#include <QFile>
#include <QPoint>
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
    EXPECT_EQ(
        lists->parse(QByteArray(xml).insert(xml.indexOf("<plist"), "<!DOCTYPE plist SYSTEM \"list.dtd\">")),
        back)
        << "with a document type, as other programs write it";
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
         {QVariant(QPoint(1, 2)), QVariant(QDateTime()), QVariant(std::numeric_limits<quint64>::max()), deep})
        EXPECT_TRUE(lists->toXml(QVariantMap{{u"key"_s, QVariantList{value}}}).isEmpty()) << value.typeName();
    EXPECT_TRUE(lists->toXml(QVariant()).isEmpty());
    EXPECT_TRUE(lists->toXml(rt::nullMarker()).isEmpty());
}

// Whatever damage does, the fuzz target "propertylist" tries; here is what a lenient reader would take.
TEST(PropertyLists, WhatIsNotQuiteOneIsUnreadable) {
    const QByteArray whole = lists->toXml(everything()).trimmed();
    EXPECT_TRUE(lists->parse(whole).isValid());
    const QByteArray malformed[] = {
        "<dict/>",
        whole.chopped(1),
        whole.first(whole.size() / 2),
        xmlOf(""),
        xmlOf("<dict/><dict/>"),
        xmlOf("<dict/>") + "<plist><dict/></plist>",
        xmlOf("<dict><key>a</key></dict>"),
        xmlOf("<dict><string>a</string></dict>"),
        xmlOf("<dict><key>a</key><key>b</key></dict>"),
        xmlOf("<array>stray</array>"),
        xmlOf("<array><unknown/></array>"),
        xmlOf("<integer>12a</integer>"),
        xmlOf("<integer>9223372036854775808</integer>"),
        xmlOf("<real>one</real>"),
        xmlOf("<date>yesterday</date>"),
        xmlOf("<data>!!!</data>"),
        xmlOf("<string>\xff\xfe</string>"),
        xmlOf(QByteArray("<array>").repeated(300) + QByteArray("</array>").repeated(300)),
        "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
        "<plist><string>&d;</string></plist>",
    };
    for (const QByteArray &bytes : malformed)
        EXPECT_FALSE(lists->parse(bytes).isValid()) << bytes.left(120).constData();
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
