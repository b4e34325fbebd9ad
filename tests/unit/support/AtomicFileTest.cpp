#include "support/AtomicFile.h"

#include "unit/support/SavedFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {
class AtomicFileTest : public testing::Test
{
protected:
    SavedFolder folder;
};

/// Restores the process's umask.
class Umask
{
public:
    explicit Umask(mode_t mask) : m_before(umask(mask)) {}
    ~Umask() { umask(m_before); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    const mode_t m_before;
};

const QString staleName = QStringLiteral(".quillbar-saving-0123456789abcdef0123456789abcdef.tmp");
} // namespace

TEST_F(AtomicFileTest, PutsPiecesTogether)
{
    EXPECT_TRUE(AtomicFile::write(folder.file(), QList<QByteArray>{"a", {}, QByteArray(100'000, 'b'), "c"}));
    EXPECT_EQ(folder.read(), "a" + QByteArray(100'000, 'b') + "c");
    EXPECT_TRUE(AtomicFile::write(folder.file(), QList<QByteArray>()));
    EXPECT_EQ(folder.read(), "");
}

TEST_F(AtomicFileTest, MakesAndReplacesAFileAndLeavesNothingElse)
{
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("first")));
    EXPECT_EQ(folder.read(), "first");
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("second, and longer")));
    EXPECT_EQ(folder.read(), "second, and longer");
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray()));
    EXPECT_EQ(folder.read(), "");
    EXPECT_EQ(folder.entries(), QStringList{QStringLiteral("store.json")});
}

TEST_F(AtomicFileTest, WritesAnyBytes)
{
    QByteArray bytes;
    for (int at = 0; at < 300'000; ++at)
        bytes += static_cast<char>(at * 31);
    EXPECT_TRUE(AtomicFile::write(folder.file(), bytes));
    EXPECT_EQ(folder.read(), bytes);
}

TEST_F(AtomicFileTest, TheFileIsPrivateWhateverTheUmaskAndTheOldMode)
{
    for (const mode_t mask : {0u, 022u, 0777u}) {
        const Umask umask(mask);
        EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
        EXPECT_EQ(SavedFolder::mode(folder.file()), 0600u);
        chmod(QFile::encodeName(folder.file()).constData(), 0666);
        EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("newer")));
        EXPECT_EQ(SavedFolder::mode(folder.file()), 0600u);
        QFile::remove(folder.file());
    }
}

TEST_F(AtomicFileTest, FollowsALinkToAFileElsewhere)
{
    const SavedFolder elsewhere;
    elsewhere.put(QStringLiteral("kept.json"), "old");
    ASSERT_TRUE(QFile::link(elsewhere.path(QStringLiteral("kept.json")), folder.file()));
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_TRUE(QFileInfo(folder.file()).isSymLink());
    EXPECT_EQ(elsewhere.read(elsewhere.path(QStringLiteral("kept.json"))), "new");
    EXPECT_EQ(elsewhere.entries(), QStringList{QStringLiteral("kept.json")});
}

TEST_F(AtomicFileTest, RefusesALinkToNothing)
{
    const QString nowhere = folder.path(QStringLiteral("nowhere"));
    ASSERT_TRUE(QFile::link(nowhere, folder.file()));
    EXPECT_FALSE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_TRUE(QFileInfo(folder.file()).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(nowhere));
}

TEST_F(AtomicFileTest, RefusesWhatIsNotAFile)
{
    EXPECT_FALSE(AtomicFile::write(folder.path(QString()), QByteArray("new")));
    EXPECT_FALSE(AtomicFile::write(QString(), QByteArray("new")));
    EXPECT_FALSE(AtomicFile::write(folder.path(QStringLiteral("missing/store.json")), QByteArray("new")));

    ASSERT_EQ(mkdir(QFile::encodeName(folder.file()).constData(), 0700), 0);
    EXPECT_FALSE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_TRUE(QFileInfo(folder.file()).isDir());

    const QString pipe = folder.path(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_FALSE(AtomicFile::write(pipe, QByteArray("new")));
    EXPECT_EQ(folder.entries(), (QStringList{QStringLiteral("pipe"), QStringLiteral("store.json")}));
}

TEST_F(AtomicFileTest, RemovesWhatAKilledProcessLeft)
{
    folder.put(staleName, "half of a sec");
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_EQ(folder.entries(), QStringList{QStringLiteral("store.json")});
}

TEST_F(AtomicFileTest, LeavesATemporaryFileInUseAlone)
{
    folder.put(staleName, "being written");
    const int user = open(QFile::encodeName(folder.path(staleName)).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(user, LOCK_EX), 0);
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_TRUE(folder.entries().contains(staleName));
    close(user);
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_FALSE(folder.entries().contains(staleName));
}

TEST_F(AtomicFileTest, RemovesNothingElse)
{
    const QStringList others = {
        QStringLiteral(".quillbar-saving-0123456789abcdef0123456789abcdef.tmp.json"),
        QStringLiteral(".quillbar-saving-0123456789abcdef0123456789abcdeg.tmp"),
        QStringLiteral(".quillbar-saving-.tmp"),
        QStringLiteral("quillbar-saving-0123456789abcdef0123456789abcdef.tmp"),
    };
    for (const auto& name : others)
        folder.put(name, "data");
    const SavedFolder elsewhere;
    elsewhere.put(QStringLiteral("data"), "data");
    ASSERT_TRUE(QFile::link(elsewhere.path(QStringLiteral("data")), folder.path(staleName)));
    EXPECT_TRUE(AtomicFile::write(folder.file(), QByteArray("new")));
    EXPECT_EQ(folder.entries().size(), others.size() + 2);
    EXPECT_EQ(elsewhere.entries().size(), 1);
}

TEST_F(AtomicFileTest, SavesOfOneFolderDoNotDisturbEachOther)
{
    constexpr int threads = 4;
    std::vector<int> saved(threads, 0);
    {
        std::vector<std::jthread> savers;
        for (std::size_t at = 0; at < threads; ++at) {
            savers.emplace_back([&, at] {
                const QString path = folder.path(QString::number(at));
                for (int round = 0; round < 50; ++round)
                    saved[at] += AtomicFile::write(path, QByteArray(1000, 'x')) ? 1 : 0;
            });
        }
    }
    EXPECT_EQ(saved, std::vector<int>(threads, 50));
    EXPECT_EQ(folder.entries().size(), threads);
}
