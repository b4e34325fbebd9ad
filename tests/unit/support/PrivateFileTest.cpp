#include "support/PrivateFile.h"

#include "unit/support/SavedFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST(PrivateFileTest, WritesIntoFoldersThatItMakes)
{
    const SavedFolder folder;
    const auto path = folder.path(QStringLiteral("a/b/store.json"));
    const auto umaskBefore = umask(0);
    EXPECT_TRUE(PrivateFile::write(path, {"by", "tes"}));
    umask(umaskBefore);
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("a"))), 0700u);
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("a/b"))), 0700u);
    EXPECT_EQ(SavedFolder::mode(path), 0600u);
    EXPECT_EQ(PrivateFile::read(path), "bytes");
}

TEST(PrivateFileTest, NarrowsWhatIsWider)
{
    const SavedFolder folder;
    folder.put(QStringLiteral("store.json"), "bytes");
    chmod(QFile::encodeName(folder.file()).constData(), 0644);
    EXPECT_EQ(PrivateFile::read(folder.file()), "bytes");
    EXPECT_EQ(SavedFolder::mode(folder.file()), 0600u);
    const auto wide = folder.path(QStringLiteral("wide"));
    mkdir(QFile::encodeName(wide).constData(), 0755);
    EXPECT_TRUE(PrivateFile::makeFolder(wide));
    EXPECT_EQ(SavedFolder::mode(wide), 0700u);
}

TEST(PrivateFileTest, ReadsRegularFilesOnly)
{
    const SavedFolder folder;
    EXPECT_EQ(PrivateFile::read(folder.file()), std::nullopt);
    EXPECT_EQ(PrivateFile::read(folder.path(QString())), std::nullopt);
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.file()).constData(), 0600), 0);
    EXPECT_EQ(PrivateFile::read(folder.file()), std::nullopt);
}

TEST(PrivateFileTest, FailsWhereAFileStandsInTheFoldersPlace)
{
    const SavedFolder folder;
    folder.put(QStringLiteral("a"), {});
    EXPECT_FALSE(PrivateFile::makeFolder(folder.path(QStringLiteral("a"))));
    EXPECT_FALSE(PrivateFile::write(folder.path(QStringLiteral("a/store.json")), {"bytes"}));
}
