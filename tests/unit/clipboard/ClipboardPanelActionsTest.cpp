#include "unit/clipboard/ClipboardPanelModelFixture.h"

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

class ClipboardPanelActionsTest : public ClipboardPanelModelFixture
{
protected:
    ClipboardPanelActionsTest() { copiedAll({c, b, a}); }

    void allowPasting()
    {
        settings.setAutoPasteEnabled(true);
        isTrusted = true;
    }
    QStringList boardNames() const
    {
        QStringList names;
        for (const auto& board : watcher->boards())
            names.append(board.name);
        return names;
    }
    /// "title=text" of each.
    QStringList snippetTexts() const
    {
        QStringList texts;
        for (const auto& snippet : snippets.snippets())
            texts.append(snippet.title + u'=' + snippet.text);
        return texts;
    }
};

TEST_F(ClipboardPanelActionsTest, StackModeQueuesInsteadOfActivating)
{
    model.setStackModeEnabled(true);
    model.setSelection(1);
    model.activateSelected();
    model.activateSelected();
    EXPECT_THAT(queued(), ElementsAre(b, b));
    EXPECT_THAT(activated, IsEmpty());
    EXPECT_EQ(model.stackRows()->count(), 2);
}

TEST_F(ClipboardPanelActionsTest, TheStackLeavesOutClipsThatAreGone)
{
    enqueue({a, b, c});
    watcher->deleteClip(clip(b));
    queue.runUntilIdle();
    EXPECT_THAT(queued(), ElementsAre(a, c));
    EXPECT_EQ(model.stack().count(), 3);
    EXPECT_EQ(model.stackRows()->count(), 2);
}

TEST_F(ClipboardPanelActionsTest, TakesTheRightClipOutOfTheStackWhereOthersAreGone)
{
    enqueue({a, b, c, b});
    watcher->deleteClip(clip(a));
    queue.runUntilIdle();
    model.removeStackRow(1);
    EXPECT_THAT(queued(), ElementsAre(b, b));
    model.removeStackRow(2);
    model.removeStackRow(-1);
    EXPECT_THAT(queued(), ElementsAre(b, b));
    model.clearStack();
    EXPECT_TRUE(model.stack().isEmpty());
}

TEST_F(ClipboardPanelActionsTest, PastesAllInTheOrderOfTheStack)
{
    allowPasting();
    enqueue({b, a, b});
    model.pasteAll();
    EXPECT_THAT(pastedAll, ElementsAre(b, a, b));
    EXPECT_THAT(pastedNext, IsEmpty());
    EXPECT_TRUE(model.stack().isEmpty());
}

TEST_F(ClipboardPanelActionsTest, PastesOneWhereKeystrokesAreNotWantedOrNotAllowed)
{
    for (const bool wanted : {false, true}) {
        settings.setAutoPasteEnabled(wanted);
        isTrusted = !wanted;
        model.clearStack();
        pastedNext.clear();
        enqueue({b, a});
        model.pasteAll();
        EXPECT_THAT(pastedNext, ElementsAre(b));
        EXPECT_THAT(queued(), ElementsAre(a));
    }
    EXPECT_THAT(pastedAll, IsEmpty());
}

TEST_F(ClipboardPanelActionsTest, PastingAllOfNothingKeepsWhatIsGone)
{
    allowPasting();
    enqueue({a});
    watcher->clear();
    model.pasteAll();
    EXPECT_THAT(pastedAll, IsEmpty());
    EXPECT_EQ(model.stack().count(), 1);
}

TEST_F(ClipboardPanelActionsTest, PasteNextPassesOverClipsThatAreGone)
{
    enqueue({a, b, c});
    watcher->deleteClip(clip(a));
    watcher->deleteClip(clip(b));
    model.pasteNext();
    EXPECT_THAT(pastedNext, ElementsAre(c));
    EXPECT_TRUE(model.stack().isEmpty());
}

TEST_F(ClipboardPanelActionsTest, PasteNextOfNothingPastesNothing)
{
    model.pasteNext();
    enqueue({a});
    watcher->clear();
    model.pasteNext();
    EXPECT_THAT(pastedNext, IsEmpty());
    EXPECT_TRUE(model.stack().isEmpty());
}

TEST_F(ClipboardPanelActionsTest, MakesABoardAndShowsIt)
{
    const auto board = model.createBoard(QStringLiteral("  Work \n"));
    ASSERT_TRUE(board);
    EXPECT_EQ(board->name, u"Work");
    EXPECT_THAT(boardNames(), ElementsAre(u"Work"));
    EXPECT_EQ(model.boardFilter(), BoardFilter::board(board->id));
}

TEST_F(ClipboardPanelActionsTest, MakesNoBoardOfBlanks)
{
    EXPECT_EQ(model.createBoard(QStringLiteral(" \n")), std::nullopt);
    EXPECT_THAT(boardNames(), IsEmpty());
    EXPECT_EQ(model.boardFilter(), BoardFilter::all());
}

TEST_F(ClipboardPanelActionsTest, RenamesABoardButNotToBlanks)
{
    const auto board = boardOf(QStringLiteral("Work"), {});
    model.renameBoard(board, QStringLiteral("  "));
    EXPECT_THAT(boardNames(), ElementsAre(u"Work"));
    model.renameBoard(board, QStringLiteral(" Home "));
    EXPECT_THAT(boardNames(), ElementsAre(u"Home"));
}

TEST_F(ClipboardPanelActionsTest, DeletingTheBoardThatIsShownShowsEverything)
{
    const auto board = boardOf(QStringLiteral("Work"), {a});
    model.setBoardFilter(BoardFilter::board(board));
    model.deleteBoard(board);
    EXPECT_EQ(model.boardFilter(), BoardFilter::all());
    EXPECT_THAT(boardNames(), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre(a, b, c));
}

TEST_F(ClipboardPanelActionsTest, DeletingAnotherBoardLeavesTheFilter)
{
    const auto shownBoard = boardOf(QStringLiteral("Work"), {a});
    const auto other = boardOf(QStringLiteral("Home"), {});
    model.setBoardFilter(BoardFilter::board(shownBoard));
    model.deleteBoard(other);
    queue.runUntilIdle();
    EXPECT_EQ(model.boardFilter(), BoardFilter::board(shownBoard));
}

TEST_F(ClipboardPanelActionsTest, ABoardThatAnotherDeviceRemovedIsShownNoLonger)
{
    const auto board = boardOf(QStringLiteral("Work"), {c});
    model.setBoardFilter(BoardFilter::board(board));
    model.setSnippetEditing(SnippetEdit::newSnippet());
    watcher->replaceForSync(QList<Pinboard>());
    EXPECT_EQ(model.boardFilter(), BoardFilter::board(board));
    queue.runUntilIdle();
    EXPECT_EQ(model.boardFilter(), BoardFilter::all());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
    EXPECT_EQ(model.rows()->count(), 3);
}

TEST_F(ClipboardPanelActionsTest, PutsAClipOnANewBoardAndStaysWhereItIs)
{
    model.addClip(clip(b), QStringLiteral(" Work "));
    EXPECT_THAT(boardNames(), ElementsAre(u"Work"));
    EXPECT_THAT(watcher->boards()[0].clipUUIDs, ElementsAre(clip(b).uuid));
    EXPECT_EQ(watcher->boards()[0].createdAt, clock.now());
    EXPECT_EQ(model.boardFilter(), BoardFilter::all());
    model.addClip(clip(b), QStringLiteral(" "));
    EXPECT_EQ(watcher->boards().size(), 1);
}

TEST_F(ClipboardPanelActionsTest, SavesANewSnippetInFront)
{
    snippets.add(QStringLiteral("old"), QStringLiteral("1"));
    model.setSnippetEditing(SnippetEdit::newSnippet());
    model.saveSnippet(QStringLiteral(" new "), QStringLiteral(" 2 "));
    EXPECT_THAT(snippetTexts(), ElementsAre(u"new= 2 ", u"old=1"));
    EXPECT_EQ(snippets.snippets()[0].date, clock.now());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelActionsTest, SavesOverTheSnippetThatIsEdited)
{
    const auto edited = snippets.add(QStringLiteral("one"), QStringLiteral("1"));
    snippets.add(QStringLiteral("two"), QStringLiteral("2"));
    model.setSnippetEditing(SnippetEdit::existing(edited.id));
    model.saveSnippet(QStringLiteral("uno"), QStringLiteral("I"));
    EXPECT_THAT(snippetTexts(), ElementsAre(u"uno=I", u"two=2"));
    EXPECT_EQ(snippets.snippets()[0].id, edited.id);
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelActionsTest, SavesNothingOverASnippetThatIsGone)
{
    model.setSnippetEditing(SnippetEdit::existing(QUuid::createUuid()));
    model.saveSnippet(QStringLiteral("title"), QStringLiteral("text"));
    EXPECT_THAT(snippetTexts(), IsEmpty());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelActionsTest, SavesNoBlankSnippetButClosesTheEditor)
{
    model.setSnippetEditing(SnippetEdit::newSnippet());
    model.saveSnippet(QStringLiteral(" "), QStringLiteral("\n\t"));
    EXPECT_THAT(snippetTexts(), IsEmpty());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelActionsTest, TitlesASnippetWithoutATitle)
{
    model.saveSnippet(QStringLiteral("  "), QStringLiteral("text"));
    EXPECT_THAT(snippetTexts(), ElementsAre(u"Untitled=text"));
}

TEST_F(ClipboardPanelActionsTest, SavesASnippetWithATitleAlone)
{
    model.saveSnippet(QStringLiteral("title"), QString());
    EXPECT_THAT(snippetTexts(), ElementsAre(u"title="));
}

TEST_F(ClipboardPanelActionsTest, DeletingTheSnippetThatIsEditedClosesTheEditor)
{
    const auto one = snippets.add(QStringLiteral("one"), {});
    const auto two = snippets.add(QStringLiteral("two"), {});
    model.setSnippetEditing(SnippetEdit::existing(two.id));
    model.deleteSnippet(one);
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::existing(two.id));
    model.deleteSnippet(two);
    EXPECT_THAT(snippetTexts(), IsEmpty());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}
} // namespace
