// Property lists in bytes and in files, and the user's defaults that are kept in them.
#include "platform/services/propertylist/PropertyList.h"
#include "platform/services/storage/FileUserDefaults.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/Warnings.h"

#include <QPoint>
#include <limits>

namespace {

using platform::FileUserDefaults;
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

TEST(PropertyListFiles, AreReplacedOnlyByAValueThatCanBeWritten) {
    const TestFolder folder;
    const QString path = folder.path(u"a.plist"_s);
    ASSERT_TRUE(PropertyList::write(path, QVariantMap{{u"n"_s, 1}}));
    EXPECT_FALSE(PropertyList::write(path, QVariantMap{{u"n"_s, QPoint()}}));
    EXPECT_FALSE(PropertyList::write(folder.path(u"no/such/folder.plist"_s), QVariantMap()));
    EXPECT_EQ(PropertyList::read(path).toMap(), (QVariantMap{{u"n"_s, 1}}));
    EXPECT_TRUE(PropertyList::write(path, QVariantMap{{u"n"_s, true}}));
    EXPECT_EQ(PropertyList::read(path).toMap(), (QVariantMap{{u"n"_s, true}}));
    EXPECT_EQ(folder.files(), QStringList{u"a.plist"_s});
}

TEST(PropertyListFiles, HaveNoValueWhenTheyAreMissingOrTooLarge) {
    const TestFolder folder;
    for (const QString &path : {folder.path(u"missing"_s), folder.path(), u"/dev/zero"_s, QString()})
        EXPECT_FALSE(PropertyList::read(path).isValid()) << qPrintable(path);
    folder.put(u"large"_s, xmlOf("<dict/>" + QByteArray(PropertyList::maximumSize, ' ')));
    EXPECT_FALSE(PropertyList::read(folder.path(u"large"_s)).isValid());
}

// --- the user's defaults

const QString domain = u"com.parlo.test"_s;
const QString otherDomain = u"com.parlo.other"_s;
const QString file = domain + u".plist"_s;

TEST(FileDefaults, KeepRemoveAndRefuseValues) {
    expectWarning(u"the default \"key\" cannot be kept"_s);
    const TestFolder folder;
    FileUserDefaults defaults(folder.path(), domain);
    defaults.setValue(u"key"_s, u""_s);
    defaults.setValue(u"key"_s, QPoint(1, 2));
    defaults.setValue(u"key"_s, rt::nullMarker());
    EXPECT_EQ(defaults.value(u"key"_s), QVariant(u""_s)) << "a refused value changes nothing";
    defaults.setValue(u"key"_s, QString());
    EXPECT_FALSE(defaults.value(u"key"_s).isValid());
}

TEST(FileDefaults, OfOtherDomainsAreReadByTheirNamesOnly) {
    const TestFolder folder;
    for (const QString &name : {otherDomain, u"sub/"_s + otherDomain})
        folder.put(name + u".plist"_s, "<plist><dict><key>key</key><string>theirs</string></dict></plist>");
    const FileUserDefaults defaults(folder.path(), domain);
    EXPECT_EQ(defaults.valueInDomain(otherDomain, u"key"_s), QVariant(u"theirs"_s));
    EXPECT_FALSE(defaults.valueInDomain(u"sub/"_s + otherDomain, u"key"_s).isValid());
}

TEST(FileDefaults, AreWrittenOnlyWhenSomethingIsDifferent) {
    const TestFolder folder;
    const QString path = folder.path(u"new folder"_s);
    FileUserDefaults defaults(path, domain);
    const auto isWrittenWith = [&](const QVariant &value) {
        defaults.setValue(u"n"_s, value);
        EXPECT_TRUE(defaults.synchronize());
        return QFile::remove(path + u'/' + file);
    };
    EXPECT_FALSE(isWrittenWith({}));
    EXPECT_TRUE(isWrittenWith(7));
    EXPECT_FALSE(isWrittenWith(7));
    EXPECT_TRUE(isWrittenWith(7.0)) << "another type is a difference";
}

TEST(FileDefaults, ABrokenFileIsKeptAsideEachTime) {
    const TestFolder folder;
    const QByteArray broken[] = {"<plist><dict><key>half", "<plist><array/></plist>"};
    for (const QByteArray &content : broken) {
        expectWarning(u"cannot be read and were moved to"_s);
        folder.put(file, content);
        FileUserDefaults defaults(folder.path(), domain);
        defaults.setValue(u"n"_s, 7);
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(folder.files(), (QStringList{file, file + u".broken-1"_s, file + u".broken-2"_s}));
    EXPECT_EQ(folder.content(file + u".broken-1"_s), broken[0]);
    EXPECT_EQ(FileUserDefaults(folder.path(), domain).value(u"n"_s), QVariant(7));
}

TEST(FileDefaults, AFailedWriteIsRepeatedAndWithoutADomainNothingIsWritten) {
    const TestFolder folder;
    folder.put(u"in the way"_s, "a file, not a folder");
    FileUserDefaults defaults(folder.path(u"in the way"_s), domain);
    FileUserDefaults nameless(folder.path(), QString());
    for (FileUserDefaults *one : {&defaults, &nameless}) {
        one->setValue(u"n"_s, 7);
        EXPECT_FALSE(one->synchronize());
        EXPECT_EQ(one->value(u"n"_s), QVariant(7));
    }
    ASSERT_TRUE(QFile::remove(folder.path(u"in the way"_s)));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_TRUE(folder.files().isEmpty());
}

} // namespace
