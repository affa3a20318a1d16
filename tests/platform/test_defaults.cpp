// The same claims about the double and about defaults in files, and what only files have.
#include "platform/services/TestServices.h"
#include "platform/services/storage/FileUserDefaults.h"
#include "tests/support/Warnings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using platform::FileUserDefaults;
using platform::MemoryUserDefaults;
using platform::UserDefaults;

const QString domain = u"com.parlo.test"_s;
const QString otherDomain = u"com.parlo.other"_s;

class DefaultsTest : public testing::Test {
protected:
    void put(const QString &name, const QByteArray &content) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QStringList files() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    const QString file = domain + u".plist"_s;
};

class DefaultsContract : public DefaultsTest, public testing::WithParamInterface<bool> {
protected:
    std::unique_ptr<UserDefaults> make() const {
        if (GetParam())
            return std::make_unique<FileUserDefaults>(folder.path(), domain);
        auto doubled = std::make_unique<MemoryUserDefaults>();
        doubled->domains[otherDomain] = {{u"key"_s, u"theirs"_s}};
        return doubled;
    }
};

INSTANTIATE_TEST_SUITE_P(Double, DefaultsContract, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Desktop, DefaultsContract, testing::Values(true));

TEST_P(DefaultsContract, ValuesAreKeptRemovedAndRefused) {
    expectWarning(u"the default \"key\" cannot be kept"_s);
    const auto defaults = make();
    EXPECT_FALSE(defaults->value(u"key"_s).isValid());
    defaults->setValue(u"key"_s, u""_s);
    EXPECT_EQ(defaults->value(u"key"_s), QVariant(u""_s));
    defaults->setValue(u"key"_s, QPoint(1, 2));
    defaults->setValue(u"key"_s, rt::nullMarker());
    EXPECT_EQ(defaults->value(u"key"_s), QVariant(u""_s)) << "what is refused changes nothing";
    defaults->setValue(u"key"_s, QString());
    EXPECT_FALSE(defaults->value(u"key"_s).isValid());
    defaults->setValue(u"other"_s, QVariantMap{{u"a"_s, QVariantList{1, true}}});
    defaults->setValue(u"other"_s, QVariant());
    EXPECT_FALSE(defaults->value(u"other"_s).isValid());
    EXPECT_TRUE(defaults->synchronize());
}

TEST_P(DefaultsContract, OtherDomainsAreReadAndMissingOnesHaveNoValue) {
    put(otherDomain + u".plist"_s, "<plist><dict><key>key</key><string>theirs</string></dict></plist>");
    const auto defaults = make();
    EXPECT_EQ(defaults->valueInDomain(otherDomain, u"key"_s), QVariant(u"theirs"_s));
    EXPECT_FALSE(defaults->valueInDomain(otherDomain, u"missing"_s).isValid());
    EXPECT_FALSE(defaults->valueInDomain(u"com.parlo.nobody"_s, u"key"_s).isValid());
    EXPECT_FALSE(defaults->valueInDomain(u"../"_s + otherDomain, u"key"_s).isValid());
    EXPECT_FALSE(defaults->valueInDomain(QString(), u"key"_s).isValid());
    EXPECT_FALSE(defaults->value(u"key"_s).isValid());
}

TEST_F(DefaultsTest, AFileIsWrittenOnlyWhenSomethingIsDifferent) {
    FileUserDefaults defaults(folder.filePath(u"new folder"_s), domain);
    const QString path = folder.filePath(u"new folder/"_s + file);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_FALSE(QFile::exists(path));
    defaults.setValue(u"n"_s, 7);
    EXPECT_TRUE(defaults.synchronize());
    ASSERT_TRUE(QFile::remove(path));
    defaults.setValue(u"n"_s, 7);
    defaults.setValue(u"missing"_s, QVariant());
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_FALSE(QFile::exists(path)) << "nothing was different";
    defaults.setValue(u"n"_s, true);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(FileUserDefaults(folder.filePath(u"new folder"_s), domain).value(u"n"_s), QVariant(true));
}

TEST_F(DefaultsTest, ABrokenFileIsKeptAsideEachTime) {
    const QByteArray broken[] = {"<plist><dict><key>half", "<plist><array/></plist>"};
    for (const QByteArray &content : broken) {
        expectWarning(u"cannot be read and were moved to"_s);
        put(file, content);
        FileUserDefaults defaults(folder.path(), domain);
        defaults.setValue(u"n"_s, 7);
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(files(), (QStringList{file, file + u".broken-1"_s, file + u".broken-2"_s}));
    QFile aside(folder.filePath(file + u".broken-1"_s));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), broken[0]);
}

TEST_F(DefaultsTest, WhatCannotBeWrittenIsSaidAndTriedAgain) {
    put(u"in the way"_s, "a file, not a folder");
    FileUserDefaults defaults(folder.filePath(u"in the way"_s), domain);
    defaults.setValue(u"n"_s, 7);
    EXPECT_FALSE(defaults.synchronize());
    ASSERT_TRUE(QFile::remove(folder.filePath(u"in the way"_s)));
    EXPECT_TRUE(defaults.synchronize());
}

TEST_F(DefaultsTest, AProcessWithoutADomainKeepsItsValuesForItselfOnly) {
    FileUserDefaults defaults(folder.path(), QString());
    defaults.setValue(u"n"_s, 7);
    EXPECT_EQ(defaults.value(u"n"_s), QVariant(7));
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_TRUE(files().isEmpty());
}

} // namespace
