#include "platform/linux/applications/DesktopEntries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {
class DesktopEntriesTest : public testing::Test
{
protected:
    QString mine() const { return m_folder.path() + QStringLiteral("/mine"); }
    QString everybodys() const { return m_folder.path() + QStringLiteral("/everybodys"); }

    static void install(const QString& folder, const char* relative, const QByteArray& lines)
    {
        const auto path = folder + u'/' + QString::fromLatin1(relative);
        ASSERT_TRUE(QDir().mkpath(path.section(u'/', 0, -2)));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\n" + lines);
    }

    /// A folder's changes are told apart by its time, and what changed just now may change once more within
    /// the same tick: so tests that are about the comparing set times of long ago.
    static void setTime(const QString& path, time_t seconds)
    {
        const timespec times[] = {{seconds, 0}, {seconds, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
    }

    std::string nameOf(const char* id)
    {
        const auto* entry = entries.index().withId(QString::fromLatin1(id));
        return entry ? entry->name.toStdString() : "none";
    }

private:
    QTemporaryDir m_folder;

protected:
    DesktopEntries entries{{mine(), everybodys()}, {QStringLiteral("de")}};
};
} // namespace

TEST_F(DesktopEntriesTest, WithoutFoldersNothingIsInstalled)
{
    EXPECT_EQ(entries.index().size(), 0);
}

TEST_F(DesktopEntriesTest, FilesOfAllFoldersAreFound)
{
    install(mine(), "a.desktop", "Name=A\n");
    install(everybodys(), "b.desktop", "Name=B\nName[de]=Be\n");
    install(everybodys(), "kde/c.desktop", "Name=C\n");
    install(everybodys(), "mimeinfo.cache", "Name=D\n");
    EXPECT_EQ(nameOf("a"), "A");
    EXPECT_EQ(nameOf("b"), "Be");
    EXPECT_EQ(nameOf("kde-c"), "C");
    EXPECT_EQ(entries.index().size(), 3);
}

TEST_F(DesktopEntriesTest, AnEarlierFolderWinsAndMayHide)
{
    install(mine(), "a.desktop", "Name=Mine\n");
    install(everybodys(), "a.desktop", "Name=Everybody's\n");
    install(mine(), "b.desktop", "Hidden=true\n");
    install(everybodys(), "b.desktop", "Name=B\n");
    EXPECT_EQ(nameOf("a"), "Mine");
    EXPECT_EQ(nameOf("b"), "none");
}

TEST_F(DesktopEntriesTest, WhatIsInstalledLaterIsFound)
{
    EXPECT_EQ(nameOf("a"), "none");
    install(everybodys(), "a.desktop", "Name=A\n");
    EXPECT_EQ(nameOf("a"), "A");
    install(everybodys(), "kde/c.desktop", "Name=C\n");
    EXPECT_EQ(nameOf("kde-c"), "C");
    install(everybodys(), "kde/d.desktop", "Name=D\n");
    EXPECT_EQ(nameOf("kde-d"), "D");
    ASSERT_TRUE(QFile::remove(everybodys() + QStringLiteral("/a.desktop")));
    EXPECT_EQ(nameOf("a"), "none");
}

TEST_F(DesktopEntriesTest, WithoutAChangeNothingIsReadAgain)
{
    install(everybodys(), "a.desktop", "Name=A\n");
    setTime(everybodys(), 1000);
    entries.index();
    const int generation = entries.generation();
    EXPECT_EQ(nameOf("a"), "A");
    EXPECT_EQ(entries.generation(), generation);
    setTime(everybodys(), 2000);
    EXPECT_EQ(nameOf("a"), "A");
    EXPECT_EQ(entries.generation(), generation + 1);
}

TEST_F(DesktopEntriesTest, AReplacedFileIsReadAgain)
{
    install(everybodys(), "a.desktop", "Name=A\n");
    EXPECT_EQ(nameOf("a"), "A");
    install(everybodys(), "new", "Name=B\n");
    const auto path = everybodys() + QStringLiteral("/a.desktop");
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::rename(everybodys() + QStringLiteral("/new"), path));
    EXPECT_EQ(nameOf("a"), "B");
}

TEST_F(DesktopEntriesTest, FoldersThatHoldThemselvesEnd)
{
    install(everybodys(), "a.desktop", "Name=A\n");
    ASSERT_TRUE(QFile::link(everybodys(), everybodys() + QStringLiteral("/again")));
    EXPECT_EQ(nameOf("a"), "A");
    EXPECT_EQ(nameOf("again-a"), "A");
    EXPECT_LE(entries.index().size(), 4);
}

TEST_F(DesktopEntriesTest, HugeFilesAndPipesArePassedOver)
{
    install(everybodys(), "a.desktop", "Name=A\n" + QByteArray(1024 * 1024, '#'));
    install(everybodys(), "b.desktop", "Name=B\n");
    ASSERT_EQ(::mkfifo(QFile::encodeName(everybodys() + QStringLiteral("/c.desktop")).constData(), 0600), 0);
    EXPECT_EQ(nameOf("a"), "none");
    EXPECT_EQ(nameOf("b"), "B");
    EXPECT_EQ(nameOf("c"), "none");
}
