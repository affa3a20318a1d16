// File-system operations.
#include "platform/Literals.h"
#include "plugin/util/vlFileUtils.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Files, NothingIsDoneWithAMissingPath) {
    for (const QString &none : {QString(), u""_s}) {
        EXPECT_FALSE(vlIsFileExist(none) || vlIsDirection(none) || vlDeleteFile(none) ||
                     vlCreateDirection(none) || vlMoveFile(none, "x") || vlMoveFile("/", none) ||
                     vlCreateFile(none, "x") || vlGetDirectoryItems(none));
        EXPECT_EQ(vlGetFileSizeFromPath(none), 0);
    }
}

TEST(Files, AreReplacedWholeAndFoldersAreKept) {
    const QTemporaryDir folder;
    const QString sub = folder.filePath("a/b"), hidden = sub + "/.f", moved = sub + "/g";
    EXPECT_FALSE(vlCreateFile(hidden, "x")) << "it has no folder";
    EXPECT_TRUE(vlCreateDirection(sub + "/c"));
    EXPECT_FALSE(vlCreateDirection(sub + "/c"));
    EXPECT_TRUE(vlCreateFile(hidden, "longer than before"));
    EXPECT_TRUE(vlCreateFile(hidden, u"\u20ac"_s));
    EXPECT_EQ(vlGetFileSizeFromPath(hidden), 3);
    EXPECT_FALSE(vlCreateFile(sub, "x"));
    EXPECT_TRUE(vlIsDirection(sub) && !vlIsDirection(hidden));
    QStringList items = vlGetDirectoryItems(sub).value();
    items.sort();
    EXPECT_EQ(items, (QStringList{".f", "c"}));
    EXPECT_FALSE(vlGetDirectoryItems(hidden));

    ASSERT_TRUE(vlCreateFile(moved, "old"));
    EXPECT_TRUE(vlMoveFile(hidden, moved));
    // The source is missing, or one path is the other or contains it.
    for (const auto &[from, to] :
         {std::pair{hidden, moved}, {moved, moved}, {moved, folder.path()}, {folder.path(), moved}})
        EXPECT_FALSE(vlMoveFile(from, to));
    QFile file(moved);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "\xe2\x82\xac");

    const QString link = folder.filePath("link");
    ASSERT_TRUE(QFile::link(sub, link));
    EXPECT_TRUE(vlDeleteFile(link)); // not what it leads to
    EXPECT_TRUE(!vlIsFileExist(link) && vlIsFileExist(moved));
    EXPECT_TRUE(vlDeleteFile(sub));
    EXPECT_FALSE(vlIsFileExist(sub));
}
