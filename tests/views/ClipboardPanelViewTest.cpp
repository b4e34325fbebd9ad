#include "ClipboardPanelViewFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using ClipboardPanelViewTest = ClipboardPanelViewFixture;

TEST_F(ClipboardPanelViewTest, AnEmptyHistorySaysSo)
{
    show(420);
    EXPECT_THAT(texts(), Contains(u"0 items"_qs));
    EXPECT_THAT(texts(), Contains(u"Nothing copied yet"_qs));
    EXPECT_THAT(texts(), Contains(u"Copied text shows up here, ready to paste again."_qs));
    EXPECT_THAT(clipRows(), IsEmpty());
}

TEST_F(ClipboardPanelViewTest, ASearchForBlanksInAnEmptyHistoryFindsNothing)
{
    show(420);
    type(u"  "_qs);
    EXPECT_THAT(texts(), Contains(u"Nothing here yet"_qs));
    EXPECT_THAT(texts(), Not(Contains(u"Nothing copied yet"_qs)));
    tap(u"Pinned"_qs);
    EXPECT_THAT(texts(), Contains(u"No pinned clips yet"_qs));
}

TEST_F(ClipboardPanelViewTest, TheHeaderCountsWithThePluralAlsoForOne)
{
    copiedAll({u"only"_qs});
    show();
    EXPECT_THAT(texts(), Contains(u"1 items"_qs));
}

TEST_F(ClipboardPanelViewTest, WhatIsTypedAtOnceIsSearchedFor)
{
    copiedAll({u"apple"_qs, u"pear"_qs});
    show();
    type(u"app"_qs);
    EXPECT_EQ(model.query(), u"app"_qs);
    EXPECT_EQ(clipRows().size(), 1);
    type(u"zz"_qs);
    EXPECT_THAT(texts(), Contains(u"No matches for “appzz”"_qs));
    tap(u"Clear search"_qs);
    EXPECT_EQ(model.query(), QString());
    EXPECT_EQ(clipRows().size(), 2);
    EXPECT_TRUE(view->property("searchFocused").toBool());
}

TEST_F(ClipboardPanelViewTest, ReturnInTheSearchIsLeftToTheWindow)
{
    copiedAll({u"a"_qs});
    show();
    // The window has no monitor here, as one that is closing.
    QTest::keyClick(&window, Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_Enter);
    settle();
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(ClipboardPanelViewTest, AnImageWhoseHeaderCannotBeReadIsCalledImageAndStillPasted)
{
    copied(image("broken"));
    imageCodec.size = QSize(0, 0);
    show();
    EXPECT_THAT(texts(), Contains(u"Image"_qs));
    int pasted = 0;
    model.onActivate = [&](const Clip& clip, bool) { pasted += clip.kind == Clip::Kind::Image ? 1 : 0; };
    tap(clipRows().at(0));
    EXPECT_EQ(pasted, 1);
}

TEST_F(ClipboardPanelViewTest, ATapActivatesAndTheButtonsOfARowDoTheirOwn)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    tap(clipRows().at(1));
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.first().first, u"a"_qs);
    hover(clipRows().at(0));
    tap(u"Pin"_qs);
    EXPECT_TRUE(clip(u"b"_qs).pinned);
    EXPECT_EQ(activated.size(), 1);
    hover(clipRows().at(0));
    tap(u"Copy"_qs);
    EXPECT_EQ(activated.size(), 2);
    hover(clipRows().at(0));
    tap(u"Delete"_qs);
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs));
    EXPECT_EQ(activated.size(), 2);
}

TEST_F(ClipboardPanelViewTest, TheMenuOfARowOffersBoardsAlsoDuringASearch)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    type(u"a"_qs);
    tap(clipRows().at(0), Qt::RightButton);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Copy"_qs, u"Edit"_qs, u"Paste as plain text"_qs, u"Pin"_qs,
                                           u"Add to board"_qs, u"Delete"_qs));
    tap(u"Add to board"_qs);
    EXPECT_THAT(menuEntries(),
                ElementsAre(u"Copy"_qs, u"Edit"_qs, u"Paste as plain text"_qs, u"Pin"_qs, u"Add to board"_qs,
                            u"No boards yet"_qs, u"New board…"_qs, u"Delete"_qs));
    tap(u"New board…"_qs);
    EXPECT_THAT(texts(), Contains(u"Name the board to add this clip to."_qs));
    type(u"Work"_qs);
    tap(u"Add"_qs);
    ASSERT_EQ(watcher->boards().size(), 1);
    EXPECT_EQ(watcher->boards().first().name, u"Work"_qs);
    EXPECT_THAT(watcher->boards().first().clipUUIDs, ElementsAre(clip(u"a"_qs).uuid));
}

TEST_F(ClipboardPanelViewTest, AClipIsTakenFromTheBoardThatIsShown)
{
    copiedAll({u"a"_qs});
    boardOf(u"Work"_qs, {u"a"_qs});
    show();
    tap(u"Work"_qs);
    tap(clipRows().at(0), Qt::RightButton);
    tap(u"Remove from this board"_qs);
    EXPECT_THAT(texts(), Contains(u"This board is empty.\nRight-click a clip to add it."_qs));
}

TEST_F(ClipboardPanelViewTest, EscapeClosesThePanelButInAnEditorOnlyTheEditor)
{
    copiedAll({u"a"_qs});
    show();
    QSignalSpy spy(view.get(), SIGNAL(closeRequested()));
    tap(clipRows().at(0), Qt::RightButton);
    QTest::keyClick(&window, Qt::Key_Escape);
    settle();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_THAT(menuEntries(), IsEmpty());
    hover(clipRows().at(0));
    tap(u"Edit"_qs);
    ASSERT_TRUE(model.isEditingAnyClip());
    ASSERT_TRUE(view->property("keysAreTaken").toBool());
    QTest::keyClick(&window, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(model.isEditingAnyClip());
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(clip(u"a"_qs).text, u"a"_qs);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(ClipboardPanelViewTest, ControlReturnKeepsTheEditedText)
{
    copiedAll({u"a"_qs});
    show();
    hover(clipRows().at(0));
    tap(u"Edit"_qs);
    type(u"bc"_qs);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_THAT(shown(), ElementsAre(u"abc"_qs));
    EXPECT_FALSE(model.isEditingAnyClip());
    EXPECT_TRUE(view->property("searchFocused").toBool());
}

TEST_F(ClipboardPanelViewTest, TheQueueShowsItsClipsAndGivesThemUp)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    tap(u"Stack"_qs);
    EXPECT_THAT(texts(), Contains(u"Tap clips to queue them, then paste in order."_qs));
    tap(clipRows().at(0));
    tap(clipRows().at(0));
    tap(clipRows().at(1));
    EXPECT_THAT(texts(), Contains(u"Stack 3"_qs));
    EXPECT_THAT(queued(), ElementsAre(u"b"_qs, u"b"_qs, u"a"_qs));
    hover(clipRows().at(0));
    EXPECT_TRUE(control(u"Add to stack"_qs));
    tap(u"Remove from queue"_qs);
    EXPECT_THAT(queued(), ElementsAre(u"b"_qs, u"b"_qs));
    tap(u"Paste next"_qs);
    EXPECT_THAT(pastedNext, ElementsAre(u"b"_qs));
    tap(u"Clear queue"_qs);
    EXPECT_THAT(queued(), IsEmpty());
    tap(u"Stack"_qs);
    EXPECT_FALSE(model.stackModeEnabled());
}

TEST_F(ClipboardPanelViewTest, TheWholeQueueIsPastedInOrder)
{
    copiedAll({u"a"_qs, u"b"_qs});
    settings.setAutoPasteEnabled(true);
    isTrusted = true;
    show();
    enqueue({u"b"_qs, u"a"_qs});
    settle();
    tap(u"Paste all in order"_qs);
    EXPECT_THAT(pastedAll, ElementsAre(u"b"_qs, u"a"_qs));
    EXPECT_THAT(texts(), Contains(u"Tap clips to queue them, then paste in order."_qs));
}

TEST_F(ClipboardPanelViewTest, TheQueueIsNotEmptyForWhoseClipsAreGone)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    enqueue({u"a"_qs, u"b"_qs});
    watcher->deleteClip(clip(u"a"_qs));
    settle();
    EXPECT_THAT(texts(), Contains(u"Stack 2"_qs));
    EXPECT_EQ(controls(u"Remove from queue"_qs), 1);
    watcher->clear();
    settle();
    EXPECT_THAT(texts(), Contains(u"Stack 2"_qs));
    EXPECT_THAT(texts(), Not(Contains(u"Tap clips to queue them, then paste in order."_qs)));
    tap(u"Clear queue"_qs);
    EXPECT_THAT(texts(), Contains(u"Stack"_qs));
    EXPECT_THAT(texts(), Contains(u"Tap clips to queue them, then paste in order."_qs));
}

TEST_F(ClipboardPanelViewTest, BoardsAreMadeRenamedAndDeleted)
{
    copiedAll({u"a"_qs});
    show();
    tap(u"New board"_qs);
    type(u"Work"_qs);
    QTest::keyClick(&window, Qt::Key_Return);
    settle();
    ASSERT_EQ(watcher->boards().size(), 1);
    EXPECT_EQ(model.selectedBoardID(), watcher->boards().first().id);
    tap(control(u"Work"_qs), Qt::RightButton);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Rename"_qs, u"Delete"_qs));
    tap(u"Rename"_qs);
    type(u"Home"_qs);
    QTest::keyClick(&window, Qt::Key_Return);
    settle();
    EXPECT_EQ(watcher->boards().first().name, u"Home"_qs);
    tap(control(u"Home"_qs), Qt::RightButton);
    tap(u"Rename"_qs);
    type(u"Lost"_qs);
    tap(u"All"_qs);
    QMetaObject::invokeMethod(view.get(), "focusSearch");
    settle();
    EXPECT_EQ(watcher->boards().first().name, u"Home"_qs);
    tap(control(u"Home"_qs), Qt::RightButton);
    tap(u"Delete"_qs);
    EXPECT_THAT(texts(), Contains(u"The board is removed. Your clips stay in the history."_qs));
    tap(u"Cancel"_qs);
    EXPECT_EQ(watcher->boards().size(), 1);
    tap(control(u"Home"_qs), Qt::RightButton);
    tap(u"Delete"_qs);
    tap(u"Delete"_qs);
    EXPECT_THAT(watcher->boards(), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs));
}

TEST_F(ClipboardPanelViewTest, ABlankBoardNameJustClosesTheField)
{
    show();
    tap(u"New board"_qs);
    type(u"  "_qs);
    QTest::keyClick(&window, Qt::Key_Return);
    settle();
    EXPECT_THAT(watcher->boards(), IsEmpty());
    EXPECT_TRUE(view->property("searchFocused").toBool());
}

TEST_F(ClipboardPanelViewTest, SnippetsAreWrittenChangedAndPasted)
{
    show();
    QStringList pasted;
    model.onActivateSnippet = [&](const Snippet& snippet) { pasted.append(snippet.text); };
    tap(u"Snippets"_qs);
    EXPECT_THAT(texts(),
                Contains(u"Save reusable text — signatures, replies, code — and paste it anytime."_qs));
    tap(u"New snippet"_qs);
    type(u"Hi"_qs);
    QTest::keyClick(&window, Qt::Key_Tab);
    type(u"Hello"_qs);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    settle();
    ASSERT_EQ(snippets.snippets().size(), 1);
    EXPECT_EQ(snippets.snippets().first().title, u"Hi"_qs);
    EXPECT_EQ(snippets.snippets().first().text, u"Hello"_qs);
    tap(u"Hi"_qs);
    EXPECT_THAT(pasted, ElementsAre(u"Hello"_qs));
    tap(control(u"Hi"_qs), Qt::RightButton);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Paste"_qs, u"Edit"_qs, u"Delete"_qs));
    tap(u"Edit"_qs);
    QTest::keyClick(&window, Qt::Key_End);
    type(u"!"_qs);
    tap(u"Save"_qs);
    EXPECT_EQ(snippets.snippets().first().title, u"Hi!"_qs);
}

TEST_F(ClipboardPanelViewTest, TheWholeHistoryOrWhatIsNotPinnedIsCleared)
{
    copiedAll({u"a"_qs, u"b"_qs});
    watcher->togglePin(clip(u"a"_qs));
    show();
    tap(u"Clear history"_qs);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Clear unpinned"_qs, u"Clear all"_qs));
    tap(u"Clear unpinned"_qs);
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs));
    tap(u"Clear history"_qs);
    tap(u"Clear all"_qs);
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(ClipboardPanelViewTest, TheFooterLeadsToTheRestAndTheSettingsAreNotThereYet)
{
    show();
    QSignalSpy about(view.get(), SIGNAL(aboutRequested()));
    QSignalSpy quit(view.get(), SIGNAL(quitRequested()));
    QSignalSpy settingsAsked(view.get(), SIGNAL(openSettingsRequested()));
    tap(u"About Quillbar"_qs);
    tap(u"Quit Quillbar"_qs);
    tap(u"Settings"_qs);
    EXPECT_EQ(about.count(), 1);
    EXPECT_EQ(quit.count(), 1);
    EXPECT_FALSE(control(u"Settings"_qs)->isEnabled());
    EXPECT_EQ(settingsAsked.count(), 0);
}

TEST_F(ClipboardPanelViewTest, TheListFollowsTheSelection)
{
    QStringList many;
    for (int i = 0; i < 20; ++i)
        many.append(QStringLiteral("clip %1").arg(i));
    copiedAll(many);
    show();
    for (int i = 0; i < 19; ++i)
        model.moveDown();
    settle();
    const auto rows = clipRows();
    const auto selected =
        std::ranges::find_if(rows, [](QQuickItem* row) { return row->property("selected").toBool(); });
    ASSERT_NE(selected, rows.end());
    EXPECT_LT((*selected)->mapToScene({0, (*selected)->height()}).y(), 442);
}

TEST_F(ClipboardPanelViewTest, TabReachesEveryControlAndTheButtonsOfTheSelectedRow)
{
    copiedAll({u"a"_qs, u"b"_qs});
    boardOf(u"Work"_qs, {});
    show();
    QStringList reached;
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(&window, Qt::Key_Tab);
        settle();
        ASSERT_TRUE(window.activeFocusItem());
        reached.append(window.activeFocusItem()->property("name").toString());
    }
    for (const auto& name : {u"All"_qs, u"Pinned"_qs, u"Snippets"_qs, u"Work"_qs, u"New board"_qs, u"1 b"_qs,
                             u"Copy"_qs, u"Edit"_qs, u"Pin"_qs, u"Delete"_qs, u"About Quillbar"_qs,
                             u"Quit Quillbar"_qs, u"Clear history"_qs, u"Close"_qs})
        EXPECT_THAT(reached, Contains(name));
    EXPECT_THAT(reached, Not(Contains(u"2 a"_qs)));
}

TEST_F(ClipboardPanelViewTest, TheKeyboardFollowsTheSelectionFromRowToRowAndSpacePressesNone)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    for (int i = 0; i < 10 && !view->property("rowFocused").toBool(); ++i) {
        QTest::keyClick(&window, Qt::Key_Tab);
        settle();
    }
    ASSERT_TRUE(view->property("rowFocused").toBool());
    EXPECT_FALSE(view->property("keysAreTaken").toBool());
    EXPECT_EQ(window.activeFocusItem()->property("name"), u"1 b"_qs);
    model.moveDown();
    settle();
    EXPECT_EQ(window.activeFocusItem()->property("name"), u"2 a"_qs);
    EXPECT_FALSE(view->property("keysAreTaken").toBool());
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_TRUE(activated.isEmpty());
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(activated.size(), 1);
}

TEST_F(ClipboardPanelViewTest, HelpIsToldWhereThePointerRests)
{
    show();
    hover(control(u"Quit Quillbar"_qs));
    EXPECT_TRUE(QTest::qWaitFor([this] { return texts().contains(u"Quit Quillbar"_qs); }));
    QTest::mouseMove(&window, QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !texts().contains(u"Quit Quillbar"_qs); }));
}
