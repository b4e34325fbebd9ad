#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <algorithm>

using testing::ElementsAre;

namespace {
const auto a = QStringLiteral("a");
const auto b = QStringLiteral("b");
const auto c = QStringLiteral("c");

/// Started, with the texts c, b, a in its history.
class ClipboardWatcherTest : public ClipboardWatcherFixture
{
protected:
    ClipboardWatcherTest()
    {
        watcher->start();
        for (const auto& each : {a, b, c})
            copied(each);
        QObject::connect(watcher.get(), &ClipboardWatcher::clipsChanged, [this] { ++clipsPublished; });
        QObject::connect(watcher.get(), &ClipboardWatcher::boardsChanged, [this] { ++boardsPublished; });
    }

    /// Whether the operation writes the file.
    template <typename Operation>
    bool writes(Operation operation)
    {
        QFile::remove(path);
        operation();
        return QFile::exists(path);
    }

    int clipsPublished = 0;
    int boardsPublished = 0;
};
} // namespace

TEST_F(ClipboardWatcherTest, AddsABoardAtTheEnd)
{
    const auto first = watcher->addBoard(QStringLiteral("Work"));
    const auto second = watcher->addBoard(QStringLiteral("Work"));
    EXPECT_THAT(watcher->boards(), ElementsAre(first, second));
    EXPECT_NE(first.id, second.id);
    EXPECT_EQ(first.name, QStringLiteral("Work"));
    EXPECT_TRUE(first.clipUUIDs.isEmpty());
    EXPECT_EQ(first.createdAt, clock.now());
    EXPECT_EQ(boardsPublished, 2);
    expectSaved();
}

TEST_F(ClipboardWatcherTest, RenamesABoard)
{
    const auto board = watcher->addBoard(QStringLiteral("Work"));
    watcher->renameBoard(board.id, QStringLiteral("Play"));
    EXPECT_EQ(watcher->boards().first().name, QStringLiteral("Play"));
    EXPECT_EQ(saved()->boards.first().name, QStringLiteral("Play"));
    EXPECT_FALSE(writes([&] { watcher->renameBoard(QUuid::createUuid(), a); }));
}

TEST_F(ClipboardWatcherTest, DeletesABoardAndLeavesItsClips)
{
    const auto board = watcher->addBoard(a);
    watcher->addClip(clip(a).uuid, board.id);
    watcher->deleteBoard(board.id);
    EXPECT_TRUE(watcher->boards().isEmpty());
    EXPECT_EQ(watcher->clips().size(), 3);
    expectSaved();
    EXPECT_TRUE(writes([&] { watcher->deleteBoard(board.id); })) << "also when there was none";
}

TEST_F(ClipboardWatcherTest, ABoardHoldsAClipOnce)
{
    const auto board = watcher->addBoard(a);
    watcher->addClip(clip(a).uuid, board.id);
    watcher->addClip(clip(b).uuid, board.id);
    EXPECT_FALSE(writes([&] { watcher->addClip(clip(a).uuid, board.id); }));
    EXPECT_FALSE(writes([&] { watcher->addClip(clip(c).uuid, QUuid::createUuid()); }));
    EXPECT_THAT(watcher->boards().first().clipUUIDs, ElementsAre(clip(a).uuid, clip(b).uuid));
}

TEST_F(ClipboardWatcherTest, TakesAClipOffABoardWhereverItStands)
{
    auto board = watcher->addBoard(a);
    board.clipUUIDs = {clip(a).uuid, clip(b).uuid, clip(a).uuid};
    watcher->replaceForSync(QList{board});
    watcher->removeClip(clip(a).uuid, board.id);
    EXPECT_THAT(watcher->boards().first().clipUUIDs, ElementsAre(clip(b).uuid));
    expectSaved();
    EXPECT_FALSE(writes([&] { watcher->removeClip(clip(a).uuid, QUuid::createUuid()); }));
}

TEST_F(ClipboardWatcherTest, ABoardsClipsComeInTheBoardsOrderWithoutThoseThatAreGone)
{
    const auto board = watcher->addBoard(a);
    const auto gone = QUuid::createUuid();
    for (const auto& uuid : {clip(a).uuid, gone, clip(c).uuid, clip(b).uuid})
        watcher->addClip(uuid, board.id);
    QStringList members;
    for (const auto& each : watcher->clips(board.id))
        members.append(each.text);
    EXPECT_THAT(members, ElementsAre(a, c, b));
    EXPECT_TRUE(watcher->boards().first().clipUUIDs.contains(gone));
    EXPECT_TRUE(watcher->clips(QUuid::createUuid()).isEmpty());
}

TEST_F(ClipboardWatcherTest, DeletesAClipFromHistoryAndBoards)
{
    const auto board = watcher->addBoard(a);
    watcher->addClip(clip(b).uuid, board.id);
    watcher->deleteClip(clip(b));
    EXPECT_THAT(texts(), ElementsAre(c, a));
    EXPECT_TRUE(watcher->boards().first().clipUUIDs.isEmpty());
    expectSaved();
}

TEST_F(ClipboardWatcherTest, PinsAndUnpins)
{
    watcher->togglePin(clip(a));
    EXPECT_THAT(texts(), ElementsAre(a, c, b));
    EXPECT_TRUE(saved()->clips.first().pinned);
    watcher->togglePin(clip(a));
    EXPECT_THAT(texts(), ElementsAre(c, b, a));
    Clip unknown;
    unknown.id = QStringLiteral("unknown");
    EXPECT_FALSE(writes([&] { watcher->togglePin(unknown); }));
}

TEST_F(ClipboardWatcherTest, ClearsWhatIsNotPinned)
{
    const auto board = watcher->addBoard(a);
    watcher->addClip(clip(b).uuid, board.id);
    watcher->togglePin(clip(c));
    watcher->clearUnpinned();
    EXPECT_THAT(texts(), ElementsAre(c));
    EXPECT_EQ(watcher->boards().first().clipUUIDs.size(), 1) << "boards keep what they name";
    expectSaved();
}

TEST_F(ClipboardWatcherTest, ClearsAllAndLeavesTheBoards)
{
    const auto board = watcher->addBoard(a);
    watcher->addClip(clip(b).uuid, board.id);
    watcher->clear();
    copied(b);
    EXPECT_TRUE(watcher->clips(board.id).isEmpty()) << "the new clip is another";
    EXPECT_EQ(watcher->boards().size(), 1);
    expectSaved();
}

TEST_F(ClipboardWatcherTest, EditsTheTextOfAClip)
{
    auto contents = text(QStringLiteral("rich"));
    contents.data[PasteboardType::html] = "<b>rich</b>";
    copied(contents);
    copied(QStringLiteral("last"));
    const auto before = clip(QStringLiteral("rich"));
    clock.advance(1);
    watcher->updateText(before, QStringLiteral("https://example.com"));
    const auto& after = watcher->clips().first();
    EXPECT_EQ(after.text, QStringLiteral("https://example.com"));
    EXPECT_EQ(after.detectedKind, DetectedKind::link(QStringLiteral("https://example.com")));
    EXPECT_TRUE(after.richData.empty());
    EXPECT_EQ(after.date, clock.now());
    EXPECT_EQ(after.id, before.id);
    EXPECT_EQ(after.uuid, before.uuid);
    expectSaved();
}

TEST_F(ClipboardWatcherTest, EditsNoImageAndNoUnknownClip)
{
    copied(image("png"));
    EXPECT_FALSE(writes([&] { watcher->updateText(watcher->clips().first(), a); }));
    auto unknown = clip(a);
    unknown.uuid = QUuid::createUuid();
    EXPECT_FALSE(writes([&] { watcher->updateText(unknown, b); }));
}

TEST_F(ClipboardWatcherTest, TheLimitTrimsAndSavesAlsoWhenItIsTheSame)
{
    watcher->togglePin(clip(a));
    watcher->setMaxItems(1);
    EXPECT_THAT(texts(), ElementsAre(a, c));
    watcher->togglePin(clip(c));
    watcher->setMaxItems(0);
    EXPECT_THAT(texts(), ElementsAre(c, a)) << "pinned ones stay, however many";
    EXPECT_TRUE(writes([&] { watcher->setMaxItems(0); }));
}

TEST_F(ClipboardWatcherTest, SyncReplacesTheClips)
{
    watcher->setMaxItems(2);
    QList<Clip> clips;
    for (int i = 0; i < 4; ++i) {
        Clip clip;
        clip.id = clip.text = QString::number(i);
        clip.uuid = QUuid::createUuid();
        clip.date = clock.now().addSecs(i);
        clip.pinned = i == 0;
        clips.append(clip);
    }
    watcher->replaceForSync(clips);
    EXPECT_THAT(texts(), ElementsAre(QStringLiteral("0"), QStringLiteral("3"), QStringLiteral("2")));
    expectSaved();
}

TEST_F(ClipboardWatcherTest, PublishesEachChange)
{
    watcher->togglePin(clip(a));
    watcher->deleteClip(clip(a));
    watcher->clear();
    EXPECT_EQ(clipsPublished, 3);
}

TEST_F(ClipboardWatcherTest, CopiesEachKindBack)
{
    auto rich = text(QStringLiteral("rich"));
    rich.data[PasteboardType::rtf] = "{\\rtf1}";
    copied(rich);
    copied(image("png"));
    copied(files({QStringLiteral("/x"), QStringLiteral("/y")}));
    const auto clips = watcher->clips();

    watcher->copy(clips[2]);
    EXPECT_EQ(pasteboard.contents().string, QStringLiteral("rich"));
    EXPECT_EQ(pasteboard.contents().data.size(), 1u);
    watcher->copyPlain(clips[2]);
    EXPECT_EQ(pasteboard.contents().string, QStringLiteral("rich"));
    EXPECT_TRUE(pasteboard.contents().data.empty());
    EXPECT_EQ(clip(QStringLiteral("rich")).richData.size(), 1u) << "the clip stays rich";
    for (const bool plain : {false, true}) {
        const auto put = plain ? &ClipboardWatcher::copyPlain : &ClipboardWatcher::copy;
        (watcher.get()->*put)(clips[1]);
        decode();
        EXPECT_EQ(pasteboard.contents().png, QByteArray("png"));
        EXPECT_EQ(pasteboard.contents().string, std::nullopt);
        (watcher.get()->*put)(clips[0]);
        EXPECT_THAT(pasteboard.contents().filePaths, ElementsAre(QStringLiteral("/x"), QStringLiteral("/y")));
    }
}

TEST_F(ClipboardWatcherTest, ACopyBackMovesTheClipUpAndChangesNothingElse)
{
    const auto before = clip(a);
    clock.advance(1);
    watcher->copy(before);
    EXPECT_THAT(texts(), ElementsAre(a, c, b));
    auto expected = before;
    expected.date = clock.now();
    EXPECT_EQ(watcher->clips().first(), expected);
    Clip gone;
    gone.id = QStringLiteral("gone");
    gone.text = QStringLiteral("gone");
    EXPECT_FALSE(writes([&] { watcher->copy(gone); }));
    EXPECT_EQ(pasteboard.contents().string, QStringLiteral("gone")) << "it is copied all the same";
}

TEST_F(ClipboardWatcherTest, AnImageThatIsNoneLeavesThePasteboardEmpty)
{
    Clip image;
    image.kind = Clip::Kind::Image;
    for (const auto& data : {std::optional<ClipData>(), std::optional<ClipData>(QByteArray())}) {
        pasteboard.copyText(a);
        image.imageData = data;
        watcher->copy(image);
        decode();
        EXPECT_EQ(pasteboard.contents(), PasteboardContents());
    }
}
