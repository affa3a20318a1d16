#include "platform/services/TestServices.h"
#include "plugin/util/vlFileUtils.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class Files : public testing::Test {
protected:
    QString at(const QString &name) const { return folder.filePath(name); }
    static QByteArray contents(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    QTemporaryDir folder;
};

} // namespace

TEST_F(Files, NothingIsDoneWithAMissingPath) {
    for (const QString &none : {QString(), u""_s}) {
        EXPECT_FALSE(vlIsFileExist(none));
        EXPECT_FALSE(vlIsDirection(none));
        EXPECT_FALSE(vlDeleteFile(none));
        EXPECT_FALSE(vlGetDirectoryItems(none));
        EXPECT_FALSE(vlCreateDirection(none));
        EXPECT_FALSE(vlMoveFile(none, at("x")));
        EXPECT_FALSE(vlMoveFile(folder.path(), none));
        EXPECT_FALSE(vlCreateFile(none, "x"));
        EXPECT_EQ(vlGetFileSizeFromPath(none), 0);
    }
    EXPECT_TRUE(QDir(folder.path()).exists());
}

TEST_F(Files, AFileIsMadeAnewWithItsText) {
    EXPECT_TRUE(vlCreateFile(at("a"), "longer than before"));
    EXPECT_TRUE(vlCreateFile(at("a"), u"\u20ac"_s));
    EXPECT_EQ(contents(at("a")), "\xe2\x82\xac");
    EXPECT_EQ(vlGetFileSizeFromPath(at("a")), 3);
    EXPECT_FALSE(vlCreateFile(at("missing/a"), "x"));
    EXPECT_FALSE(vlCreateFile(folder.path(), "x"));
    EXPECT_TRUE(vlIsDirection(folder.path()));
    EXPECT_FALSE(vlIsDirection(at("a")));
}

TEST_F(Files, AFolderIsMadeOnceWithItsParents) {
    EXPECT_TRUE(vlCreateDirection(at("a/b/c")));
    EXPECT_TRUE(vlIsDirection(at("a/b/c")));
    EXPECT_FALSE(vlCreateDirection(at("a/b/c")));
    ASSERT_TRUE(vlCreateFile(at("a/b/.hidden"), ""));
    QStringList items = vlGetDirectoryItems(at("a/b")).value();
    items.sort();
    EXPECT_EQ(items, (QStringList{".hidden", "c"}));
    EXPECT_EQ(vlGetDirectoryItems(at("a/b/c")), QStringList());
    EXPECT_FALSE(vlGetDirectoryItems(at("a/b/.hidden")));
}

TEST_F(Files, DeletingTakesAFolderWholeButALinkAlone) {
    ASSERT_TRUE(vlCreateDirection(at("real/inner")));
    ASSERT_TRUE(vlCreateFile(at("real/inner/f"), "x"));
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    EXPECT_TRUE(vlDeleteFile(at("link")));
    EXPECT_TRUE(vlIsFileExist(at("real/inner/f")));
    EXPECT_TRUE(vlDeleteFile(at("real")));
    EXPECT_FALSE(vlIsFileExist(at("real")));
    EXPECT_FALSE(vlDeleteFile(at("real")));
}

TEST_F(Files, AMoveReplacesItsTargetAndLosesNothingElse) {
    ASSERT_TRUE(vlCreateFile(at("a"), "new"));
    ASSERT_TRUE(vlCreateFile(at("b"), "old"));
    EXPECT_TRUE(vlMoveFile(at("a"), at("b")));
    EXPECT_EQ(contents(at("b")), "new");
    EXPECT_FALSE(vlIsFileExist(at("a")));
    EXPECT_FALSE(vlMoveFile(at("a"), at("b")));
    EXPECT_FALSE(vlMoveFile(at("b"), at("b")));
    EXPECT_FALSE(vlMoveFile(at("b"), folder.path()));
    EXPECT_FALSE(vlMoveFile(folder.path(), at("b")));
    EXPECT_EQ(contents(at("b")), "new");
}

TEST_F(Files, ABundlesVersionIsFoundBelowTheRoot) {
    const platform::TestDesktop desktop = platform::installTestServices();
    desktop.workspace->root = folder.path();
    const QString bundle = u"/Applications/Some.app"_s;
    ASSERT_TRUE(vlCreateDirection(folder.path() + bundle + "/Contents"));
    const QString info = folder.path() + bundle + "/Contents/Info.plist";
    const QString none = vlGetFileVersion(bundle);
    EXPECT_TRUE(none.isEmpty() && !none.isNull());
    platform::services().propertyLists->write(info, QVariantMap{{"CFBundleVersion", "3.6.40487"}});
    EXPECT_EQ(vlGetFileVersion(bundle), "3.6.40487");
    EXPECT_EQ(vlGetFileVersion(folder.path() + bundle), "3.6.40487");
    platform::services().propertyLists->write(info, QVariantMap{{"CFBundleVersion", qint64(3)}});
    EXPECT_EQ(vlGetFileVersion(bundle), "");
}
