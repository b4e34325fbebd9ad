#include "ClipboardPanelViewFixture.h"

#include <QAccessible>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {
/// Where the keyboard is in the panel, and the buttons that are there before they are seen.
class ClipboardKeyboardTest : public ClipboardPanelViewFixture
{
protected:
    bool isHeld() { return view->property("keyboardIsHeld").toBool(); }

    void escape()
    {
        QTest::keyClick(&window, Qt::Key_Escape);
        settle();
    }
};
} // namespace

TEST_F(ClipboardKeyboardTest, TheSearchRowsAndButtonsDoNotHoldIt)
{
    copiedAll({u"a"_qs});
    show();
    ASSERT_TRUE(view->property("searchFocused").toBool());
    EXPECT_FALSE(isHeld());
    for (const auto& name : {u"All"_qs, u"1 a"_qs, u"Pin"_qs, u"Close"_qs}) {
        reach(name);
        EXPECT_FALSE(isHeld()) << name.toStdString();
    }
}

TEST_F(ClipboardKeyboardTest, EditorsMenusAndQuestionsHoldIt)
{
    copiedAll({u"a"_qs});
    show();
    hover(clipRows().at(0));
    tap(u"Edit"_qs);
    EXPECT_TRUE(isHeld());
    reach(u"Cancel (esc)"_qs);
    EXPECT_TRUE(isHeld()) << "with a button of the editor";
    escape();
    EXPECT_FALSE(isHeld());
    tap(clipRows().at(0), Qt::RightButton);
    EXPECT_TRUE(isHeld());
    tap(u"Add to board"_qs);
    EXPECT_TRUE(isHeld());
    tap(u"New board…"_qs);
    EXPECT_TRUE(isHeld());
    reach(u"Cancel"_qs);
    EXPECT_TRUE(isHeld());
    escape();
    EXPECT_FALSE(isHeld());
}

TEST_F(ClipboardKeyboardTest, NamesAndSnippetsThatAreTypedHoldIt)
{
    boardOf(u"Work"_qs, {});
    show();
    tap(u"New board"_qs);
    EXPECT_TRUE(isHeld());
    escape();
    EXPECT_FALSE(isHeld());
    tap(control(u"Work"_qs), Qt::RightButton);
    tap(u"Rename"_qs);
    EXPECT_TRUE(isHeld());
    escape();
    EXPECT_FALSE(isHeld());
    tap(u"Snippets"_qs);
    tap(u"New snippet"_qs);
    EXPECT_TRUE(isHeld());
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(isHeld());
    escape();
    EXPECT_FALSE(isHeld());
}

TEST_F(ClipboardKeyboardTest, ItGoesWithTheSelectionFromARowsButtonToTheNextRow)
{
    copiedAll({u"a"_qs, u"b"_qs, u"c"_qs});
    show();
    reach(u"Pin"_qs);
    model.moveDown();
    settle();
    EXPECT_EQ(focusedName(), u"2 b"_qs);
    model.moveDown();
    settle();
    EXPECT_EQ(focusedName(), u"3 a"_qs);
    model.moveUp();
    settle();
    EXPECT_EQ(focusedName(), u"2 b"_qs);
}

TEST_F(ClipboardKeyboardTest, ASelectionThatMovesLeavesItWithAnOpenEditor)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    hover(clipRows().at(0));
    tap(u"Edit"_qs);
    model.moveDown();
    type(u"!"_qs);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_THAT(shown(), UnorderedElementsAre(u"b!"_qs, u"a"_qs));
}

TEST_F(ClipboardKeyboardTest, TheSearchHasItWhenTheRowThatHadItIsGone)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    reach(u"Delete"_qs);
    QTest::keyClick(&window, Qt::Key_Space);
    settle();
    ASSERT_THAT(shown(), ElementsAre(u"a"_qs));
    EXPECT_TRUE(view->property("searchFocused").toBool());
    reach(u"1 a"_qs);
    model.deleteSelected();
    settle();
    EXPECT_TRUE(view->property("searchFocused").toBool());
}

TEST_F(ClipboardKeyboardTest, TheButtonsOfARowStayWhileThePointerIsOnOne)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    hover(clipRows().at(1));
    auto* pin = control(u"Pin"_qs);
    ASSERT_TRUE(pin);
    ASSERT_TRUE(clipRows().at(1)->isAncestorOf(pin));
    QTest::mouseMove(&window, ItemsInSight::middleOf(pin));
    settle();
    EXPECT_THAT(symbols(clipRows().at(1)), Contains(u"pin"_qs));
    EXPECT_TRUE(clipRows().at(1)->property("pointedAt").toBool());
    QTest::mouseMove(&window, QPoint(1, 1));
    settle();
    EXPECT_THAT(symbols(clipRows().at(1)), Not(Contains(u"pin"_qs)));
}

TEST_F(ClipboardKeyboardTest, AFingerTapsARow)
{
    copiedAll({u"a"_qs});
    snippets.add(u"Hi"_qs, u"Hello"_qs);
    boardOf(u"Work"_qs, {});
    int pasted = 0;
    model.onActivateSnippet = [&](const Snippet&) { ++pasted; };
    show();
    touch(ItemsInSight::middleOf(clipRows().at(0)));
    EXPECT_EQ(activated.size(), 1);
    touch(ItemsInSight::middleOf(control(u"Work"_qs)));
    EXPECT_EQ(model.boardFilter().kind(), BoardFilter::Kind::Board);
    touch(ItemsInSight::middleOf(control(u"Snippets"_qs)));
    touch(ItemsInSight::middleOf(control(u"Hi"_qs)));
    EXPECT_EQ(pasted, 1);
    EXPECT_THAT(menuEntries(), IsEmpty());
}

TEST_F(ClipboardKeyboardTest, AFingerDoesNotPressTheUnseenButtonsOfARow)
{
    copiedAll({u"a"_qs});
    show();
    auto* remove = control(u"Delete"_qs);
    ASSERT_TRUE(remove);
    touch(ItemsInSight::middleOf(remove));
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs));
    EXPECT_EQ(activated.size(), 1);
}

TEST_F(ClipboardKeyboardTest, AFingerDoesNotPressTheUnseenButtonsOfASnippet)
{
    snippets.add(u"Hi"_qs, u"Hello"_qs);
    int pasted = 0;
    model.onActivateSnippet = [&](const Snippet&) { ++pasted; };
    show();
    tap(u"Snippets"_qs);
    touch(ItemsInSight::middleOf(control(u"Delete"_qs)));
    EXPECT_EQ(snippets.snippets().size(), 1);
    EXPECT_EQ(pasted, 1);
}

TEST_F(ClipboardKeyboardTest, AFingerDoesNotPressTheUnseenButtonOfTheQueue)
{
    copiedAll({u"a"_qs});
    show();
    enqueue({u"a"_qs});
    settle();
    touch(ItemsInSight::middleOf(control(u"Remove from queue"_qs)));
    EXPECT_THAT(queued(), ElementsAre(u"a"_qs));
}

TEST_F(ClipboardKeyboardTest, KeyboardAndScreenReaderPressWhatThePointerHasNotBroughtUp)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    reach(u"Pin"_qs);
    QTest::keyClick(&window, Qt::Key_Space);
    settle();
    EXPECT_TRUE(clip(u"b"_qs).pinned);
    QMetaObject::invokeMethod(view.get(), "focusSearch");
    settle();
    auto* interface = QAccessible::queryAccessibleInterface(control(u"Delete"_qs));
    ASSERT_TRUE(interface);
    ASSERT_TRUE(interface->actionInterface());
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs));
    EXPECT_THAT(activated, IsEmpty());
}
