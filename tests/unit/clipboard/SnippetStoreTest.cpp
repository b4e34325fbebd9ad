#include "clipboard/snippets/SnippetStore.h"

#include "clipboard/snippets/SnippetFile.h"
#include "fakes/ManualClock.h"
#include "unit/support/SavedFolder.h"

#include <gtest/gtest.h>

namespace {
class SnippetStoreTest : public testing::Test
{
protected:
    SnippetStoreTest()
    {
        QObject::connect(&store, &SnippetStore::snippetsChanged, &store, [this] { ++published; });
    }

    /// Five snippets, "e" in front and "a" last.
    void addFive()
    {
        for (const char* const title : {"a", "b", "c", "d", "e"})
            store.add(QString::fromUtf8(title), QStringLiteral("text"));
    }

    QString titles() const
    {
        QString titles;
        for (const Snippet& snippet : store.snippets())
            titles += snippet.title;
        return titles;
    }

    /// Whether the file holds what the list holds, and was written since the last look.
    bool wasSaved()
    {
        const QByteArray bytes = folder.read();
        QFile::remove(folder.file());
        return bytes == QByteArrayList(SnippetFile::write(store.snippets())).join();
    }

    SavedFolder folder;
    ManualClock clock;
    SnippetStore store{folder.file(), clock};
    int published = 0;
};
} // namespace

TEST_F(SnippetStoreTest, BeginsEmptyAndReadsNothing)
{
    folder.put(QStringLiteral("store.json"), "[]");
    EXPECT_TRUE(store.snippets().isEmpty());
    EXPECT_EQ(published, 0);
    EXPECT_EQ(folder.read(), "[]");
}

TEST_F(SnippetStoreTest, AddPutsANewSnippetInFront)
{
    const Snippet first = store.add(QStringLiteral("t"), QStringLiteral("x"));
    EXPECT_EQ(first.title, u"t");
    EXPECT_EQ(first.text, u"x");
    EXPECT_EQ(first.date, clock.now());
    EXPECT_FALSE(first.id.isNull());
    EXPECT_TRUE(wasSaved());
    clock.advance(5);
    const Snippet second = store.add(QStringLiteral("t"), QStringLiteral("x"));
    EXPECT_NE(second.id, first.id);
    EXPECT_EQ(store.snippets(), (QList<Snippet>{second, first}));
    EXPECT_TRUE(wasSaved());
    EXPECT_EQ(published, 2);
}

TEST_F(SnippetStoreTest, LoadTakesWhatAnEarlierStoreSaved)
{
    addFive();
    SnippetStore later(folder.file(), clock);
    later.load();
    EXPECT_EQ(later.snippets(), store.snippets());
}

TEST_F(SnippetStoreTest, LoadWritesNothing)
{
    folder.put(QStringLiteral("store.json"), " [ ] ");
    store.load();
    EXPECT_EQ(published, 1);
    EXPECT_EQ(folder.read(), " [ ] ");
}

TEST_F(SnippetStoreTest, ACorruptFileLeavesTheListAndTheNextSaveReplacesIt)
{
    folder.put(QStringLiteral("store.json"), "[{\"id\":");
    store.load();
    EXPECT_TRUE(store.snippets().isEmpty());
    EXPECT_EQ(published, 0);
    store.add(QStringLiteral("a"), {});
    EXPECT_TRUE(wasSaved());
    folder.put(QStringLiteral("store.json"), "junk");
    store.load();
    EXPECT_EQ(titles(), u"a");
}

TEST_F(SnippetStoreTest, AMissingFileChangesNothing)
{
    store.load();
    EXPECT_TRUE(store.snippets().isEmpty());
    EXPECT_EQ(published, 0);
    EXPECT_TRUE(folder.entries().isEmpty());
}

TEST_F(SnippetStoreTest, AnUpdateMovesASnippetToTheFront)
{
    addFive();
    const Snippet last = store.snippets().last();
    clock.advance(60);
    store.update(last, QStringLiteral("A"), QStringLiteral("new"));
    EXPECT_EQ(titles(), u"Aedcb");
    EXPECT_EQ(store.snippets().front(),
              (Snippet{last.id, QStringLiteral("A"), QStringLiteral("new"), clock.now()}));
    EXPECT_EQ(published, 6);
    EXPECT_TRUE(wasSaved());
}

TEST_F(SnippetStoreTest, AnUpdateOfAnUnknownSnippetDoesNothing)
{
    addFive();
    QFile::remove(folder.file());
    Snippet unknown = store.snippets().front();
    unknown.id = QUuid::createUuid();
    store.update(unknown, QStringLiteral("x"), QStringLiteral("x"));
    EXPECT_EQ(titles(), u"edcba");
    EXPECT_EQ(published, 5);
    EXPECT_TRUE(folder.entries().isEmpty());
}

TEST_F(SnippetStoreTest, RemoveGoesByTheId)
{
    addFive();
    Snippet third = store.snippets()[2];
    third.title = QStringLiteral("stale");
    store.remove(third);
    EXPECT_EQ(titles(), u"edba");
    EXPECT_TRUE(wasSaved());
}

TEST_F(SnippetStoreTest, RemoveTakesEverySnippetOfTheId)
{
    const QByteArray one =
        R"({"id":"0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50","title":"a","text":"","date":"2024-01-01T00:00:00Z"})";
    folder.put(QStringLiteral("store.json"), "[" + one + "," + one + "]");
    store.load();
    ASSERT_EQ(titles(), u"aa");
    store.remove(store.snippets().front());
    EXPECT_EQ(folder.read(), "[]");
}

TEST_F(SnippetStoreTest, RemoveOfAnUnknownSnippetStillSaves)
{
    addFive();
    QFile::remove(folder.file());
    store.remove({QUuid::createUuid(), {}, {}, clock.now()});
    EXPECT_EQ(titles(), u"edcba");
    EXPECT_TRUE(wasSaved());
}

TEST_F(SnippetStoreTest, MoveTakesOutAndPutsIn)
{
    addFive();
    const Snippet front = store.snippets().front();
    clock.advance(60);
    store.move(0, 3);
    EXPECT_EQ(titles(), u"dcbea");
    EXPECT_EQ(store.snippets()[3], front);
    EXPECT_TRUE(wasSaved());
    store.move(4, 0);
    EXPECT_EQ(titles(), u"adcbe");
    EXPECT_TRUE(wasSaved());
}

TEST_F(SnippetStoreTest, MoveToTheSamePlaceOnlyRewritesTheFile)
{
    addFive();
    QFile::remove(folder.file());
    const QList<Snippet> before = store.snippets();
    store.move(0, 0);
    EXPECT_EQ(store.snippets(), before);
    EXPECT_TRUE(wasSaved());
}

TEST_F(SnippetStoreTest, MoveOutsideTheListDoesNothing)
{
    store.move(0, 0);
    addFive();
    QFile::remove(folder.file());
    for (const auto& [from, to] :
         std::initializer_list<std::pair<int, int>>{{-1, 0}, {0, -1}, {5, 0}, {0, 5}})
        store.move(from, to);
    EXPECT_EQ(titles(), u"edcba");
    EXPECT_EQ(published, 5);
    EXPECT_TRUE(folder.entries().isEmpty());
}

TEST_F(SnippetStoreTest, SaveMakesTheFoldersForTheOwnerAlone)
{
    SnippetStore deep(folder.path(QStringLiteral("a/b/snippets.json")), clock);
    deep.add(QStringLiteral("t"), {});
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("a"))), 0700U);
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("a/b"))), 0700U);
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("a/b/snippets.json"))), 0600U);
}

TEST_F(SnippetStoreTest, AFailedSaveLeavesTheListAndALaterOneHasItAll)
{
    folder.put(QStringLiteral("a"), "in the way");
    SnippetStore blocked(folder.path(QStringLiteral("a/snippets.json")), clock);
    blocked.add(QStringLiteral("t"), {});
    EXPECT_EQ(blocked.snippets().size(), 1);
    QFile::remove(folder.path(QStringLiteral("a")));
    blocked.save();
    EXPECT_EQ(SavedFolder::read(folder.path(QStringLiteral("a/snippets.json"))),
              QByteArrayList(SnippetFile::write(blocked.snippets())).join());
}
