// Property lists: what is written and read, and files of them.
#include "platform/services/propertylist/PropertyList.h"
#include "tests/platform/TestFolder.h"

#include <QPoint>
#include <QTimeZone>
#include <limits>
#include <sys/stat.h>

namespace {

using platform::PropertyList;

QByteArray xmlOf(const QByteArray &content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + content + "</plist>";
}

TEST(PropertyList, AWrittenValueReadsBackUnchanged) {
    const QVariantMap value{{u"text"_s, u"Grüße 😀 <&>\" \r\n\ttrailing  "_s},
                            {u"empty"_s, u""_s},
                            {u"Schlüssel & <key>"_s, u" "_s},
                            {u"low"_s, std::numeric_limits<qint64>::min()},
                            {u"real"_s, 0.1},
                            {u"yes"_s, true},
                            {u"data"_s, QByteArray("\0\xff\n", 3)},
                            {u"date"_s, QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC)},
                            {u"list"_s, QVariantList{qint64(1), u"two"_s, QVariantList(), QVariantMap()}}};
    const QByteArray xml = PropertyList::toXml(value);
    const QVariantMap back = PropertyList::parse(xml).toMap();
    EXPECT_EQ(back, value);
    for (const auto &[key, one] : value.asKeyValueRange())
        EXPECT_EQ(back.value(key).typeId(), one.typeId()) << qPrintable(key);
    EXPECT_FALSE(back.value(u"empty"_s).toString().isNull());
    EXPECT_EQ(PropertyList::toXml(back), xml) << "the same value must give the same bytes";
    EXPECT_EQ(PropertyList::parse("\xef\xbb\xbf" + xml), back) << "with a byte order mark";
    const QByteArray type = "<!DOCTYPE plist SYSTEM \"list.dtd\">";
    EXPECT_EQ(PropertyList::parse(QByteArray(xml).insert(xml.indexOf("<plist"), type)), back)
        << "as other programs write it";
}

TEST(PropertyList, WhatItCannotContainIsLeftOutOrGivesNothing) {
    const QString text =
        u"a"_s + QChar(u'\0') + QChar(u'\x1b') + QChar(0xd800) + QChar(0xfffe) + QChar(0xdc00) + u"b"_s;
    const QVariantMap value{{u"text"_s, text},
                            {u"marker"_s, rt::nullMarker()},
                            {u"nothing"_s, QVariant()},
                            {u"no text"_s, QString()},
                            {u"list"_s, QVariantList{1, rt::nullMarker(), quint16(2)}}};
    const QVariantMap expected{{u"text"_s, u"ab"_s}, {u"list"_s, QVariantList{1, 2}}};
    EXPECT_EQ(PropertyList::parse(PropertyList::toXml(value)).toMap(), expected);
    QVariant deep = u"deep"_s;
    for (int i = 0; i < PropertyList::maximumDepth; ++i)
        deep = QVariantList{deep};
    for (const QVariant &none :
         {QVariant(QPoint(1, 2)), QVariant(QDateTime()), QVariant(std::numeric_limits<quint64>::max()), deep})
        EXPECT_TRUE(PropertyList::toXml(QVariantMap{{u"key"_s, QVariantList{none}}}).isEmpty())
            << none.typeName();
    EXPECT_TRUE(PropertyList::toXml(rt::nullMarker()).isEmpty());
}

// Input that a lenient reader would accept. The fuzz target "propertylist" tries other damage.
TEST(PropertyList, MalformedInputIsUnreadable) {
    const QByteArray malformed[] = {
        "<dict/>",
        xmlOf("<dict/>").chopped(1),
        xmlOf(""),
        xmlOf("<dict/><dict/>"),
        xmlOf("<dict/>") + "<plist><dict/></plist>",
        xmlOf("<dict><key>a</key></dict>"),
        xmlOf("<dict><key>a</key><key>b</key></dict>"),
        xmlOf("<array>stray</array>"),
        xmlOf("<integer>9223372036854775808</integer>"),
        xmlOf("<date>yesterday</date>"),
        xmlOf("<data>!!!</data>"),
        xmlOf("<string>\xff\xfe</string>"),
        xmlOf(QByteArray("<array>").repeated(300) + QByteArray("</array>").repeated(300)),
        "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
        "<plist><string>&d;</string></plist>",
    };
    for (const QByteArray &bytes : malformed)
        EXPECT_FALSE(PropertyList::parse(bytes).isValid()) << bytes.left(120).constData();
}

TEST(PropertyListFiles, ChangeOnlyWhenOtherBytesCanBeWritten) {
    const TestFolder folder;
    const QString path = folder.path(u"a.plist"_s);
    const auto fileNumber = [&path] {
        struct stat status {};
        EXPECT_EQ(::stat(qPrintable(path), &status), 0);
        return status.st_ino; // each write puts a new file in its place
    };
    ASSERT_TRUE(PropertyList::write(path, QVariantMap{{u"n"_s, 1}}));
    QFile keptOpen(path); // so that no new file gets its number
    ASSERT_TRUE(keptOpen.open(QIODevice::ReadOnly));
    const auto first = fileNumber();
    EXPECT_TRUE(PropertyList::write(path, QVariantMap{{u"n"_s, 1}})) << "without waiting for the disk";
    EXPECT_FALSE(PropertyList::write(path, QVariantMap{{u"n"_s, QPoint()}}));
    EXPECT_FALSE(PropertyList::write(path, QVariant()));
    EXPECT_FALSE(PropertyList::write(folder.path(u"no/such/folder.plist"_s), QVariantMap()));
    EXPECT_EQ(fileNumber(), first);
    EXPECT_TRUE(PropertyList::write(path, QVariantMap{{u"n"_s, true}}));
    EXPECT_EQ(PropertyList::read(path).toMap(), (QVariantMap{{u"n"_s, true}}));
    EXPECT_EQ(folder.files(), QStringList{u"a.plist"_s});
}

TEST(PropertyListFiles, AMissingOrTooLargeFileHasNoValue) {
    const TestFolder folder;
    for (const QString &path : {folder.path(u"missing"_s), folder.path(), u"/dev/zero"_s, QString()})
        EXPECT_FALSE(PropertyList::read(path).isValid()) << qPrintable(path);
    folder.put(u"large"_s, xmlOf("<dict/>" + QByteArray(PropertyList::maximumSize, ' ')));
    EXPECT_FALSE(PropertyList::read(folder.path(u"large"_s)).isValid());
}

} // namespace
