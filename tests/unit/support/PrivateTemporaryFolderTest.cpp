#include "support/PrivateTemporaryFolder.h"

#include "unit/support/SavedFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <optional>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class PrivateTemporaryFolderTest : public testing::Test
{
protected:
    static mode_t modeOf(const QString& path)
    {
        struct stat status = {};
        EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_mode & 07777;
    }
    static void put(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QStringList entries() const
    {
        return QDir(parent.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir parent;
    const QString usual = parent.filePath(QStringLiteral("own"));
    std::optional<PrivateTemporaryFolder> folder{std::in_place, parent.path(), QStringLiteral("own")};
};
} // namespace

TEST_F(PrivateTemporaryFolderTest, NothingIsMadeBeforeTheFirstFile)
{
    EXPECT_THAT(entries(), IsEmpty());
    EXPECT_EQ(folder->path(), QString());
}

TEST_F(PrivateTemporaryFolderTest, FolderAndFileAreForTheUserAlone)
{
    const auto before = umask(0);
    const auto path = folder->write(QStringLiteral("a"), "secret");
    umask(before);
    EXPECT_EQ(path, usual + u"/a"_qs);
    EXPECT_EQ(modeOf(usual), mode_t{0700});
    EXPECT_EQ(modeOf(*path), mode_t{0600});
    EXPECT_EQ(SavedFolder::read(*path), "secret");
}

TEST_F(PrivateTemporaryFolderTest, AFileIsWrittenOnce)
{
    const auto path = folder->write(QStringLiteral("a"), "first");
    EXPECT_EQ(folder->write(QStringLiteral("a"), "second"), path);
    EXPECT_EQ(SavedFolder::read(*path), "first");
}

TEST_F(PrivateTemporaryFolderTest, ItGoesWithItsFilesAndIsMadeAnew)
{
    folder->write(QStringLiteral("a"), "first");
    folder->remove();
    EXPECT_THAT(entries(), IsEmpty());
    const auto path = folder->write(QStringLiteral("a"), "second");
    EXPECT_EQ(SavedFolder::read(*path), "second");
    folder.reset();
    EXPECT_THAT(entries(), IsEmpty());
}

TEST_F(PrivateTemporaryFolderTest, WhatADeadProcessLeftIsNotTakenForItsOwn)
{
    ASSERT_TRUE(QDir().mkpath(usual));
    put(usual + u"/a"_qs, "old");
    put(usual + u"/b"_qs, "old");
    const auto path = folder->write(QStringLiteral("a"), "new");
    EXPECT_EQ(SavedFolder::read(*path), "new");
    EXPECT_EQ(modeOf(usual), mode_t{0700});
    EXPECT_FALSE(QFileInfo::exists(usual + u"/b"_qs));
}

TEST_F(PrivateTemporaryFolderTest, ALinkInItsPlaceIsNotFollowed)
{
    const auto trap = parent.filePath(QStringLiteral("trap"));
    ASSERT_TRUE(QDir().mkpath(trap));
    put(trap + u"/kept"_qs, "kept");
    ASSERT_TRUE(QFile::link(trap, usual));
    const auto path = folder->write(QStringLiteral("a"), "secret");
    ASSERT_TRUE(path);
    EXPECT_FALSE(path->startsWith(usual + u'/'));
    EXPECT_EQ(modeOf(folder->path()), mode_t{0700});
    EXPECT_EQ(SavedFolder::read(*path), "secret");
    folder->remove();
    EXPECT_THAT(QDir(trap).entryList(QDir::Files), ElementsAre(QStringLiteral("kept")));
    EXPECT_THAT(entries(), ElementsAre(QStringLiteral("own"), QStringLiteral("trap")));
}

TEST_F(PrivateTemporaryFolderTest, LinksThatADeadProcessLeftAreRemovedAndNotWhatTheyPointAt)
{
    const auto outside = parent.filePath(QStringLiteral("outside"));
    ASSERT_TRUE(QDir().mkpath(outside));
    put(outside + u"/kept"_qs, "kept");
    ASSERT_TRUE(QDir().mkpath(usual));
    ASSERT_TRUE(QFile::link(outside, usual + u"/link"_qs));
    ASSERT_TRUE(folder->write(QStringLiteral("a"), "secret"));
    EXPECT_FALSE(QFileInfo(usual + u"/link"_qs).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(outside + u"/kept"_qs));
}

TEST_F(PrivateTemporaryFolderTest, AFileInItsPlaceIsLeftAlone)
{
    put(usual, "somebody else's");
    const auto path = folder->write(QStringLiteral("a"), "secret");
    ASSERT_TRUE(path);
    EXPECT_EQ(SavedFolder::read(usual), "somebody else's");
}

TEST_F(PrivateTemporaryFolderTest, NothingIsWrittenWhileOthersCanGetIn)
{
    folder->write(QStringLiteral("a"), "secret");
    chmod(QFile::encodeName(usual).constData(), 0777);
    EXPECT_FALSE(folder->write(QStringLiteral("b"), "secret"));
    EXPECT_FALSE(QFileInfo::exists(usual + u"/b"_qs));
}

TEST_F(PrivateTemporaryFolderTest, WhereItCannotBeMadeThereIsNoFile)
{
    const auto file = parent.filePath(QStringLiteral("file"));
    put(file, "no folder");
    PrivateTemporaryFolder impossible(file, QStringLiteral("own"));
    EXPECT_FALSE(impossible.write(QStringLiteral("a"), "secret"));
}
