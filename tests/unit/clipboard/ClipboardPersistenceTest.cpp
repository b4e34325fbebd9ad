#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <QDir>

using testing::ElementsAre;

namespace {
const auto a = QStringLiteral("a");
const auto b = QStringLiteral("b");

class ClipboardPersistenceTest : public ClipboardWatcherFixture
{
protected:
    void put(const QByteArray& bytes)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
    }

    void restart()
    {
        pasteboard.copy({});
        watcher = makeWatcher();
        watcher->start();
    }
};
} // namespace

TEST_F(ClipboardPersistenceTest, ChangesBeforeTheFirstStartLeaveTheFile)
{
    put("[]");
    watcher->addBoard(a);
    watcher->setMaxItems(10);
    watcher->clear();
    watcher->save();
    EXPECT_EQ(SavedFolder::read(path), "[]");
    EXPECT_EQ(watcher->boards().size(), 1);
}

TEST_F(ClipboardPersistenceTest, ARestartBringsBackClipsAndBoards)
{
    watcher->start();
    copied(a);
    copied(image("png"));
    const auto board = watcher->addBoard(b);
    watcher->addClip(watcher->clips()[1].uuid, board.id);
    watcher->togglePin(watcher->clips()[1]);
    const auto before = watcher->clips();
    restart();
    ASSERT_EQ(watcher->clips().size(), 2);
    for (qsizetype i = 0; i < 2; ++i) {
        auto expected = before[i];
        expected.date = QDateTime::fromSecsSinceEpoch(expected.date.toSecsSinceEpoch(), Qt::UTC);
        EXPECT_EQ(watcher->clips()[i], expected);
    }
    EXPECT_EQ(watcher->clips(board.id).size(), 1);
}

TEST_F(ClipboardPersistenceTest, ALoadTrimsSortsAndWritesNothing)
{
    const QByteArray bytes = R"([{"id":"1","text":"old","date":"2024-01-01T00:00:00Z"},)"
                             R"({"id":"2","text":"new","date":"2024-01-02T00:00:00Z"},)"
                             R"({"id":"3","text":"pinned","date":"2023-01-02T00:00:00Z","pinned":true}])";
    put(bytes);
    watcher->setMaxItems(1);
    watcher->start();
    EXPECT_THAT(texts(), ElementsAre(QStringLiteral("pinned"), QStringLiteral("new")));
    EXPECT_TRUE(watcher->boards().isEmpty());
    EXPECT_EQ(SavedFolder::read(path), bytes);
    watcher->save();
    EXPECT_TRUE(SavedFolder::read(path).startsWith(R"({"schemaVersion":2,"clips":[)"));
}

TEST_F(ClipboardPersistenceTest, WhoHearsOfALoadFindsAllOfIt)
{
    watcher->start();
    copied(a);
    const auto board = watcher->addBoard(b);
    watcher->addClip(watcher->clips().first().uuid, board.id);
    pasteboard.copy({});
    watcher = makeWatcher();
    QList<qsizetype> found;
    const auto look = [&] { found.append(watcher->clips(board.id).size()); };
    QObject::connect(watcher.get(), &ClipboardWatcher::boardsChanged, look);
    QObject::connect(watcher.get(), &ClipboardWatcher::clipsChanged, look);
    watcher->start();
    EXPECT_THAT(found, ElementsAre(1, 1));
}

TEST_F(ClipboardPersistenceTest, AFileThatCannotBeReadGivesWayToTheNextSave)
{
    put(R"({"schemaVersion":2,"clips":[]})");
    watcher->start();
    EXPECT_TRUE(watcher->clips().isEmpty());
    EXPECT_EQ(SavedFolder::read(path), R"({"schemaVersion":2,"clips":[]})");
    copied(a);
    expectSaved();
}

TEST_F(ClipboardPersistenceTest, AReloadOfAFileThatCannotBeReadKeepsWhatIsThere)
{
    watcher->start();
    copied(a);
    put("junk");
    watcher->start();
    EXPECT_THAT(texts(), ElementsAre(a));
}

TEST_F(ClipboardPersistenceTest, LargeImagesLiveInMemoryOnly)
{
    watcher->start();
    copied(image(QByteArray(3'145'728, 'x')));
    copied(image(QByteArray(3'145'729, 'x')));
    EXPECT_EQ(watcher->clips().size(), 2);
    const auto store = saved();
    ASSERT_EQ(store->clips.size(), 1);
    EXPECT_EQ(store->clips.first().imageData->size(), 3'145'728);
}

TEST_F(ClipboardPersistenceTest, IsForNobodyElse)
{
    put("[]");
    const auto parent = QFileInfo(path).path();
    QFile::setPermissions(path, QFile::Permissions(0x7777));
    QFile::setPermissions(parent, QFile::Permissions(0x7777));
    watcher->start();
    EXPECT_EQ(SavedFolder::mode(path), 0700u) << "narrowed by the read";
    copied(a);
    EXPECT_EQ(SavedFolder::mode(path), 0600u);
    EXPECT_EQ(SavedFolder::mode(parent), 0700u);
}

TEST_F(ClipboardPersistenceTest, AFolderThatIsGoneComesBackWithTheNextSave)
{
    watcher->start();
    copied(a);
    ASSERT_TRUE(QDir(QFileInfo(path).path()).removeRecursively());
    copied(b);
    expectSaved();
}

TEST_F(ClipboardPersistenceTest, LivesOnInMemoryWhereNothingCanBeWritten)
{
    watcher->start();
    copied(a);
    const auto parent = QFileInfo(path).path();
    ASSERT_TRUE(QDir(parent).removeRecursively());
    // A file in the folder's place stops root too.
    QFile inTheWay(parent);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    copied(b);
    EXPECT_THAT(texts(), ElementsAre(b, a));
    ASSERT_TRUE(inTheWay.remove());
    watcher->save();
    expectSaved();
}
