// File-system operations.
#include "plugin/util/vlFileUtils.h"
#include "tests/support/FreshPlugin.h"

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
        EXPECT_FALSE(vlIsFileExist(none) || vlIsDirection(none) || vlDeleteFile(none) ||
                     vlCreateDirection(none) || vlMoveFile(none, at("x")) ||
                     vlMoveFile(folder.path(), none) || vlCreateFile(none, "x"));
        EXPECT_FALSE(vlGetDirectoryItems(none));
        EXPECT_EQ(vlGetFileSizeFromPath(none), 0);
    }
}

TEST_F(Files, AreMadeAnewInFoldersThatAreMadeOnce) {
    EXPECT_FALSE(vlCreateFile(at("a/b/f"), "x"));
    EXPECT_TRUE(vlCreateDirection(at("a/b/c")));
    EXPECT_FALSE(vlCreateDirection(at("a/b/c")));
    EXPECT_TRUE(vlCreateFile(at("a/b/.f"), "longer than before"));
    EXPECT_TRUE(vlCreateFile(at("a/b/.f"), u"\u20ac"_s));
    EXPECT_EQ(contents(at("a/b/.f")), "\xe2\x82\xac");
    EXPECT_EQ(vlGetFileSizeFromPath(at("a/b/.f")), 3);
    EXPECT_FALSE(vlCreateFile(at("a"), "x"));
    EXPECT_TRUE(vlIsDirection(at("a")));
    EXPECT_FALSE(vlIsDirection(at("a/b/.f")));
    QStringList items = vlGetDirectoryItems(at("a/b")).value();
    items.sort();
    EXPECT_EQ(items, (QStringList{".f", "c"}));
    EXPECT_FALSE(vlGetDirectoryItems(at("a/b/.f")));
}

TEST_F(Files, AMoveReplacesItsTargetAndLosesNothingElse) {
    ASSERT_TRUE(vlCreateFile(at("a"), "new"));
    ASSERT_TRUE(vlCreateFile(at("b"), "old"));
    EXPECT_TRUE(vlMoveFile(at("a"), at("b")));
    for (const auto &[from, to] : {std::pair{at("a"), at("b")},
                                   {at("b"), at("b")},
                                   {at("b"), folder.path()},
                                   {folder.path(), at("b")}})
        EXPECT_FALSE(vlMoveFile(from, to));
    EXPECT_EQ(contents(at("b")), "new");
}
