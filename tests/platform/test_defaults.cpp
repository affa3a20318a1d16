// The same claims about the double and about defaults in files; then what only files have.
#include "platform/services/storage/FileUserDefaults.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/TestServices.h"
#include "tests/support/Warnings.h"

namespace {

using platform::FileUserDefaults;
using platform::MemoryUserDefaults;
using platform::UserDefaults;

const QString domain = u"com.parlo.test"_s;
const QString otherDomain = u"com.parlo.other"_s;
const QString file = domain + u".plist"_s;

class DefaultsContract : public testing::TestWithParam<bool> {
protected:
    std::unique_ptr<UserDefaults> make() const {
        if (GetParam())
            return std::make_unique<FileUserDefaults>(folder.path(), domain);
        auto doubled = std::make_unique<MemoryUserDefaults>();
        doubled->domains[otherDomain] = {{u"key"_s, u"theirs"_s}};
        return doubled;
    }
    TestFolder folder;
};

INSTANTIATE_TEST_SUITE_P(Double, DefaultsContract, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Desktop, DefaultsContract, testing::Values(true));

TEST_P(DefaultsContract, ValuesAreKeptRemovedAndRefused) {
    expectWarning(u"the default \"key\" cannot be kept"_s);
    const auto defaults = make();
    EXPECT_FALSE(defaults->value(u"key"_s).isValid());
    defaults->setValue(u"key"_s, u""_s);
    defaults->setValue(u"key"_s, QPoint(1, 2));
    defaults->setValue(u"key"_s, rt::nullMarker());
    EXPECT_EQ(defaults->value(u"key"_s), QVariant(u""_s)) << "a refused value changes nothing";
    defaults->setValue(u"key"_s, QString());
    EXPECT_FALSE(defaults->value(u"key"_s).isValid());
    EXPECT_TRUE(defaults->synchronize());
}

TEST_P(DefaultsContract, OtherDomainsAreReadAndMissingOnesHaveNoValue) {
    for (const QString &name : {otherDomain, u"sub/"_s + otherDomain})
        folder.put(name + u".plist"_s, "<plist><dict><key>key</key><string>theirs</string></dict></plist>");
    const auto defaults = make();
    EXPECT_EQ(defaults->valueInDomain(otherDomain, u"key"_s), QVariant(u"theirs"_s));
    EXPECT_FALSE(defaults->valueInDomain(otherDomain, u"missing"_s).isValid());
    for (const QString &none : {u"com.parlo.nobody"_s, u"sub/"_s + otherDomain, QString()})
        EXPECT_FALSE(defaults->valueInDomain(none, u"key"_s).isValid());
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
