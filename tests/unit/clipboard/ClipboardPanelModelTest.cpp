#include "unit/clipboard/ClipboardPanelModelFixture.h"

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

using ClipboardPanelModelTest = ClipboardPanelModelFixture;

TEST_F(ClipboardPanelModelTest, BeginsWithEverythingAndTheFirstRow)
{
    EXPECT_TRUE(model.query().isEmpty());
    EXPECT_EQ(model.selection(), 0);
    EXPECT_EQ(model.boardFilter(), BoardFilter::all());
    EXPECT_FALSE(model.isEditingAnyClip());
    EXPECT_FALSE(model.stackModeEnabled());
    EXPECT_TRUE(model.stack().isEmpty());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelModelTest, ShowsTheHistoryThatIsThereWhenItIsMade)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    ClipboardPanelModel later({*watcher, snippets, settings, thumbnails, queue},
                              {[] { return false; }, [] { return false; }},
                              [](const QUrl&) -> QCoro::Task<LinkPreview> { co_return LinkPreview(); });
    EXPECT_EQ(later.rows()->count(), 2);
}

TEST_F(ClipboardPanelModelTest, ShowsAllClips)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_THAT(shown(), ElementsAre(u"b", u"a"));
    EXPECT_THAT(rowsShown(), ElementsAre(u"b", u"a"));
}

TEST_F(ClipboardPanelModelTest, ShowsPinnedClipsInTheOrderOfTheHistory)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    watcher->togglePin(clip(QStringLiteral("a")));
    watcher->togglePin(clip(QStringLiteral("c")));
    model.setBoardFilter(BoardFilter::pinned());
    EXPECT_THAT(shown(), ElementsAre(u"c", u"a"));
}

TEST_F(ClipboardPanelModelTest, ShowsABoardInItsOwnOrder)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    const auto board = boardOf(QStringLiteral("work"), {QStringLiteral("a"), QStringLiteral("c")});
    model.setBoardFilter(BoardFilter::board(board));
    EXPECT_THAT(shown(), ElementsAre(u"a", u"c"));
    EXPECT_EQ(model.selectedBoardID(), board);
}

TEST_F(ClipboardPanelModelTest, ShowsEverythingForABoardThatIsNotThere)
{
    copiedAll({QStringLiteral("a")});
    model.setBoardFilter(BoardFilter::board(QUuid::createUuid()));
    EXPECT_THAT(shown(), ElementsAre(u"a"));
}

TEST_F(ClipboardPanelModelTest, ShowsNoClipsBesideTheSnippetsWhateverIsSearched)
{
    copiedAll({QStringLiteral("a")});
    model.setBoardFilter(BoardFilter::snippets());
    EXPECT_THAT(shown(), IsEmpty());
    model.setQuery(QStringLiteral("a"));
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_EQ(model.selectedBoardID(), std::nullopt);
}

TEST_F(ClipboardPanelModelTest, FindsTextWhateverTheCase)
{
    copiedAll({QStringLiteral("Grocery list"), QStringLiteral("Invoice"), QStringLiteral("LISTEN")});
    model.setQuery(QStringLiteral("list"));
    EXPECT_THAT(shown(), ElementsAre(u"LISTEN", u"Grocery list"));
    EXPECT_THAT(rowsShown(), ElementsAre(u"LISTEN", u"Grocery list"));
}

TEST_F(ClipboardPanelModelTest, TrimsTheQuery)
{
    copiedAll({QStringLiteral("Grocery list"), QStringLiteral("Invoice")});
    model.setQuery(QStringLiteral(" \n invoice\t"));
    EXPECT_THAT(shown(), ElementsAre(u"Invoice"));
}

TEST_F(ClipboardPanelModelTest, ShowsAllRowsOfTheFilterForAQueryOfBlanks)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    watcher->togglePin(clip(QStringLiteral("a")));
    model.setBoardFilter(BoardFilter::pinned());
    model.setQuery(QStringLiteral(" \t\n"));
    EXPECT_THAT(shown(), ElementsAre(u"a"));
}

TEST_F(ClipboardPanelModelTest, FindsImagesByTheirLabelAndSize)
{
    copied(QStringLiteral("text"));
    copied(image(QByteArrayLiteral("png")));
    model.setQuery(QStringLiteral("IMAGE"));
    ASSERT_EQ(model.filtered().size(), 1);
    EXPECT_EQ(model.filtered()[0].kind, Clip::Kind::Image);
    model.setQuery(QStringLiteral("1920"));
    EXPECT_EQ(model.filtered().size(), 1);
    model.setQuery(QStringLiteral("1921"));
    EXPECT_THAT(model.filtered(), IsEmpty());
}

TEST_F(ClipboardPanelModelTest, FindsFilesByTheirNamesAndNotTheirFolders)
{
    copied(files({QStringLiteral("/home/ada/Plans/engine.pdf"), QStringLiteral("/home/ada/notes.txt")}));
    model.setQuery(QStringLiteral("engine.pdf, notes"));
    EXPECT_EQ(model.filtered().size(), 1);
    model.setQuery(QStringLiteral("plans"));
    EXPECT_THAT(model.filtered(), IsEmpty());
}

TEST_F(ClipboardPanelModelTest, FindsAnEditedTextByWhatItIsNow)
{
    copiedAll({QStringLiteral("before")});
    model.setQuery(QStringLiteral("before"));
    EXPECT_EQ(model.filtered().size(), 1);
    watcher->updateText(clip(QStringLiteral("before")), QStringLiteral("after"));
    EXPECT_THAT(shown(), IsEmpty());
    model.setQuery(QStringLiteral("AFTER"));
    EXPECT_THAT(shown(), ElementsAre(u"after"));
}

TEST_F(ClipboardPanelModelTest, SeesAChangeOfTheHistoryAtOnceAndShowsItATurnLater)
{
    copiedAll({QStringLiteral("a")});
    int changes = 0;
    QObject::connect(&model, &ClipboardPanelModel::changed, &model, [&] { ++changes; });
    watcher->clear();
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(rowsShown(), ElementsAre(u"a"));
    EXPECT_EQ(changes, 0);
    queue.runUntilIdle();
    EXPECT_THAT(rowsShown(), IsEmpty());
    EXPECT_EQ(changes, 1);
}

TEST_F(ClipboardPanelModelTest, TellsAChangeOfTheSnippets)
{
    int changes = 0;
    QObject::connect(&model, &ClipboardPanelModel::changed, &model, [&] { ++changes; });
    snippets.add(QStringLiteral("title"), QStringLiteral("text"));
    EXPECT_EQ(changes, 0);
    queue.runUntilIdle();
    EXPECT_EQ(changes, 1);
}

TEST_F(ClipboardPanelModelTest, AChangeOnItsWayDoesNothingOnceTheModelIsGone)
{
    auto brief = std::make_unique<ClipboardPanelModel>(
        ClipboardPanelModel::Services{*watcher, snippets, settings, thumbnails, queue},
        ClipboardPanelModel::Questions{[] { return false; }, [] { return false; }},
        [](const QUrl&) -> QCoro::Task<LinkPreview> { co_return LinkPreview(); });
    watcher->addBoard(QStringLiteral("board"));
    snippets.add(QStringLiteral("title"), {});
    brief.reset();
    queue.runUntilIdle();
    EXPECT_EQ(watcher->boards().size(), 1);
}

TEST_F(ClipboardPanelModelTest, StaysAtBothEndsOfTheList)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    model.moveUp();
    EXPECT_EQ(model.selection(), 0);
    model.moveDown();
    EXPECT_EQ(model.selection(), 1);
    model.moveDown();
    EXPECT_EQ(model.selection(), 1);
    model.moveUp();
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, MovesNowhereInAnEmptyList)
{
    model.setSelection(3);
    model.moveUp();
    model.moveDown();
    EXPECT_EQ(model.selection(), 3);
    EXPECT_EQ(model.selectedClip(), std::nullopt);
}

TEST_F(ClipboardPanelModelTest, KeepsTheSelectionInSearchAsFarAsThereAreRows)
{
    copiedAll({QStringLiteral("aa"), QStringLiteral("ab"), QStringLiteral("ac"), QStringLiteral("b")});
    model.setSelection(3);
    model.setQuery(QStringLiteral("a"));
    EXPECT_EQ(model.selection(), 2);
    model.setQuery(QStringLiteral("aa"));
    EXPECT_EQ(model.selection(), 0);
    model.setSelection(2);
    model.setQuery(QStringLiteral("nothing"));
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, GoesToTheFirstRowOfAnotherFilter)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    model.setSelection(2);
    model.setBoardFilter(BoardFilter::pinned());
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, AnotherFilterClosesTheSnippetEditorUnlessItShowsTheSnippets)
{
    model.setSnippetEditing(SnippetEdit::newSnippet());
    model.setBoardFilter(BoardFilter::snippets());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::newSnippet());
    model.setBoardFilter(BoardFilter::all());
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}

TEST_F(ClipboardPanelModelTest, KeepsTheSelectionWithinAHistoryThatShrank)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    model.setSelection(2);
    watcher->deleteClip(clip(QStringLiteral("b")));
    queue.runUntilIdle();
    EXPECT_EQ(model.selection(), 1);
    watcher->clear();
    queue.runUntilIdle();
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, DeletingTheLastRowSelectsTheOneAbove)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    model.setSelection(1);
    model.deleteSelected();
    EXPECT_THAT(texts(), ElementsAre(u"b"));
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, DeletingTheOnlyRowLeavesAnEmptyListAtItsBeginning)
{
    copiedAll({QStringLiteral("a")});
    model.deleteSelected();
    EXPECT_EQ(model.selection(), 0);
    EXPECT_THAT(shown(), IsEmpty());
    model.deleteSelected();
    EXPECT_EQ(model.selection(), 0);
}

TEST_F(ClipboardPanelModelTest, PinsTheSelectedClipAndStaysAtItsRow)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    model.setSelection(2);
    model.togglePinSelected();
    queue.runUntilIdle();
    EXPECT_THAT(shown(), ElementsAre(u"a", u"c", u"b"));
    EXPECT_EQ(model.selection(), 2);
    EXPECT_EQ(model.selectedClip()->text, u"b");
    model.setSelection(9);
    model.togglePinSelected();
    EXPECT_TRUE(clip(QStringLiteral("a")).pinned);
}

TEST_F(ClipboardPanelModelTest, ActivatesTheSelectedClip)
{
    copiedAll({QStringLiteral("a"), QStringLiteral("b")});
    model.setSelection(1);
    model.activateSelected();
    EXPECT_THAT(activated, ElementsAre(std::pair(QStringLiteral("a"), false)));
    model.setSelection(2);
    model.activateSelected();
    model.setSelection(-1);
    model.activateSelected();
    EXPECT_EQ(activated.size(), 1);
}

TEST_F(ClipboardPanelModelTest, OptionInvertsWhetherPastingIsPlain)
{
    copiedAll({QStringLiteral("a")});
    for (const bool plainByDefault : {false, true}) {
        for (const bool held : {false, true}) {
            settings.setPasteAsPlainByDefault(plainByDefault);
            isOptionHeld = held;
            activated.clear();
            model.activateSelected();
            EXPECT_THAT(activated, ElementsAre(std::pair(QStringLiteral("a"), plainByDefault != held)));
        }
    }
}

TEST_F(ClipboardPanelModelTest, EditsTextsAlone)
{
    copied(image(QByteArrayLiteral("png")));
    copied(QStringLiteral("text"));
    const Clip picture = watcher->clips()[1];
    model.beginEditing(picture);
    EXPECT_FALSE(model.isEditingAnyClip());
    const Clip text = clip(QStringLiteral("text"));
    model.beginEditing(text);
    EXPECT_TRUE(model.isEditing(text));
    EXPECT_FALSE(model.isEditing(picture));
    EXPECT_EQ(model.editingClipUUID(), text.uuid);
    model.endEditing();
    EXPECT_FALSE(model.isEditingAnyClip());
}

TEST_F(ClipboardPanelModelTest, EverySetPublishesAlsoOfAnEqualValue)
{
    int published = 0;
    const auto count = [&](auto signal) { QObject::connect(&model, signal, &model, [&] { ++published; }); };
    count(&ClipboardPanelModel::queryChanged);
    count(&ClipboardPanelModel::boardFilterChanged);
    count(&ClipboardPanelModel::editingClipUUIDChanged);
    count(&ClipboardPanelModel::stackModeEnabledChanged);
    count(&ClipboardPanelModel::stackChanged);
    model.setQuery({});
    model.setBoardFilter(BoardFilter::all());
    model.setEditingClipUUID({});
    model.setStackModeEnabled(false);
    model.setStack({});
    EXPECT_EQ(published, 5);
    count(&ClipboardPanelModel::selectionChanged);
    count(&ClipboardPanelModel::snippetEditingChanged);
    model.setSelection(0);
    model.setSnippetEditing({});
    EXPECT_EQ(published, 7);
}
} // namespace
