#include "unit/clipboard/ClipboardPanelControllerFixture.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPointer>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class ClipboardPanelControllerTest : public ClipboardPanelControllerFixture
{};
} // namespace

// Opening

TEST_F(ClipboardPanelControllerTest, ItOpensAboveItsPlaceUnseenWithTheKeyboard)
{
    copyThree();
    controller.show({});
    EXPECT_TRUE(controller.isOpen());
    EXPECT_EQ(windowServer.frame, (ScreenRect{450, 328, 380, 500}));
    EXPECT_EQ(view->size(), QSizeF(380, 500));
    EXPECT_TRUE(windowServer.isKey);
    EXPECT_EQ(windowServer.traits.level, 101);
    EXPECT_TRUE(windowServer.traits.joinsAllSpaces);
    EXPECT_FALSE(windowServer.traits.isNonActivating);
    EXPECT_EQ(view->searchFocusings, 1);
    EXPECT_EQ(controller.model()->rows()->count(), 3);
}

TEST_F(ClipboardPanelControllerTest, AnEmptyHistoryMakesItLower)
{
    controller.show(ScreenRect{1000, 776, 24, 24});
    EXPECT_EQ(windowServer.frame, (ScreenRect{644, 350 + 28, 380, 420}));
}

TEST_F(ClipboardPanelControllerTest, WithoutADisplayNothingIsShown)
{
    screens.main.reset();
    controller.show({});
    EXPECT_EQ(controller.window(), nullptr);
    EXPECT_EQ(controller.model(), nullptr);
}

TEST_F(ClipboardPanelControllerTest, EachShowingBeginsAnew)
{
    open();
    controller.model()->setQuery(u"find"_qs);
    controller.model()->setStackModeEnabled(true);
    controller.animateOutAndClose();
    finishClosing();
    open();
    EXPECT_EQ(controller.model()->query(), QString());
    EXPECT_FALSE(controller.model()->stackModeEnabled());
}

TEST_F(ClipboardPanelControllerTest, WhereNothingCompositesTheCornersAreCutOff)
{
    windowServer.compositing = false;
    controller.show({});
    ASSERT_TRUE(windowServer.outline);
    EXPECT_FALSE(windowServer.outline->contains(QPoint(1, 1)));
    EXPECT_TRUE(windowServer.outline->contains(QPoint(22, 1)));
    EXPECT_FALSE(view->blended);
    windowServer.setCompositing(true);
    EXPECT_FALSE(windowServer.outline);
    EXPECT_TRUE(view->blended);
}

// Motion. The toolkit's animation runs in real time; a test puts it at a moment of its own.

TEST_F(ClipboardPanelControllerTest, ItComesDownFromTwentyEightPointsAboveAndUnseen)
{
    controller.show({});
    auto& motion = controller.window()->motion();
    EXPECT_EQ(motion.duration(), 280);
    const ScreenRect end{450, 380, 380, 420};
    EXPECT_EQ(windowServer.frame, (ScreenRect{450, 408, 380, 420}));
    EXPECT_EQ(controller.window()->opacity(), 0);
    // Ease-out: more than half of it is done in the first half of the time.
    motion.setCurrentTime(140);
    EXPECT_NEAR(windowServer.frame.y, end.y + 28 * (1 - 0.6846), 0.1);
    EXPECT_NEAR(controller.window()->opacity(), 0.6846, 0.01);
    motion.setCurrentTime(280);
    EXPECT_EQ(windowServer.frame, end);
    EXPECT_EQ(controller.window()->opacity(), 1);
}

TEST_F(ClipboardPanelControllerTest, ItGoesUpBySixteenPointsAndFades)
{
    open();
    controller.window()->motion().setCurrentTime(280);
    controller.animateOutAndClose();
    auto& motion = controller.window()->motion();
    EXPECT_EQ(motion.duration(), 220);
    // Ease-in: the other way round.
    motion.setCurrentTime(110);
    EXPECT_NEAR(windowServer.frame.y, 380 + 16 * (1 - 0.6846), 0.1);
    EXPECT_NEAR(controller.window()->opacity(), 0.6846, 0.01);
    motion.setCurrentTime(220);
    EXPECT_EQ(windowServer.frame, (ScreenRect{450, 396, 380, 420}));
    EXPECT_EQ(controller.window()->opacity(), 0);
}

TEST_F(ClipboardPanelControllerTest, OneThatIsClosedHalfwayGoesFromWhereItIs)
{
    controller.show({});
    controller.window()->motion().setCurrentTime(140);
    const auto halfway = windowServer.frame;
    controller.animateOutAndClose();
    controller.window()->motion().setCurrentTime(220);
    EXPECT_DOUBLE_EQ(windowServer.frame.y, halfway.y + 16);
}

// Closing

TEST_F(ClipboardPanelControllerTest, ItIsThereUntilItHasFadedAndThenCallsBack)
{
    open();
    int calls = 0;
    controller.animateOutAndClose([&] { ++calls; });
    EXPECT_FALSE(controller.isOpen());
    EXPECT_FALSE(windowServer.isKey);
    queue.advance(0.21);
    EXPECT_NE(controller.window(), nullptr);
    EXPECT_EQ(calls, 0);
    queue.advance(0.01);
    EXPECT_EQ(controller.window(), nullptr);
    EXPECT_EQ(controller.model(), nullptr);
    EXPECT_EQ(calls, 1);
}

TEST_F(ClipboardPanelControllerTest, WhatIsAskedOfItWhileItClosesPastesNothingMore)
{
    copyThree();
    settings.setAutoPasteEnabled(true);
    open();
    // What a double click does: its second click comes to a window that is still there.
    auto* const model = controller.model();
    model->setStackModeEnabled(true);
    for (const auto& clip : watcher->clips())
        model->activate(clip);
    model->setStackModeEnabled(false);
    const auto clip = watcher->clips().last();
    model->activate(clip);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    model->activate(clip);
    model->onActivatePlain(clip);
    model->onActivateSnippet(snippets.add(u"title"_qs, u"snippet"_qs));
    model->pasteNext();
    model->pasteAll();
    queue.advance(5);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    EXPECT_EQ(keystrokes.pastes.size(), 1U);
}

TEST_F(ClipboardPanelControllerTest, WithNothingToCloseItCallsBackAtOnce)
{
    int calls = 0;
    controller.animateOutAndClose([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    open();
    controller.animateOutAndClose();
    controller.animateOutAndClose([&] { ++calls; });
    EXPECT_EQ(calls, 2);
    EXPECT_NE(controller.window(), nullptr);
}

TEST_F(ClipboardPanelControllerTest, OneThatIsOpenedWhileTheFormerClosesStays)
{
    open();
    controller.animateOutAndClose();
    queue.advance(0.1);
    controller.show({});
    queue.advance(1);
    EXPECT_TRUE(controller.isOpen());
    EXPECT_NE(controller.model(), nullptr);
}

TEST_F(ClipboardPanelControllerTest, OneThatIsClosedFromOutsideClosesAsByEscape)
{
    open();
    QCloseEvent close;
    QCoreApplication::sendEvent(controller.window(), &close);
    EXPECT_FALSE(controller.isOpen());
    ASSERT_NE(controller.window(), nullptr);
    finishClosing();
    EXPECT_EQ(controller.window(), nullptr);
}

TEST_F(ClipboardPanelControllerTest, ItsEndWhileItClosesHarmsNobody)
{
    auto doomed = makeController();
    doomed->show({});
    int calls = 0;
    doomed->animateOutAndClose([&] { ++calls; });
    doomed.reset();
    queue.advance(1);
    EXPECT_EQ(calls, 0);
}

TEST_F(ClipboardPanelControllerTest, WhatTheViewAsksForComesAfterTheClosing)
{
    QStringList calls;
    controller.onOpenSettings = [&] { calls.append(u"settings"_qs); };
    controller.onAbout = [&] { calls.append(u"about"_qs); };
    controller.onQuit = [&] { calls.append(u"quit"_qs); };
    for (const auto asked : {&FakePanelView::openSettingsRequested, &FakePanelView::aboutRequested,
                             &FakePanelView::quitRequested, &FakePanelView::closeRequested}) {
        open();
        const auto before = calls;
        Q_EMIT(view->*asked)();
        EXPECT_FALSE(controller.isOpen());
        EXPECT_EQ(calls, before);
        finishClosing();
    }
    EXPECT_THAT(calls, ElementsAre(u"settings"_qs, u"about"_qs, u"quit"_qs));
}

// The keyboard that goes

TEST_F(ClipboardPanelControllerTest, AClickElsewhereSoonAfterOpeningLeavesItUpAndALaterOneClosesIt)
{
    open(0.2);
    setKey(false);
    EXPECT_TRUE(controller.isOpen());
    queue.advance(0.15);
    setKey(false);
    EXPECT_TRUE(controller.isOpen());
    queue.advance(0.01);
    setKey(false);
    EXPECT_FALSE(controller.isOpen());
}

TEST_F(ClipboardPanelControllerTest, OneThatNeverHadTheKeyboardDoesNotCloseForTheLossOfIt)
{
    controller.show({});
    queue.advance(1);
    setKey(false);
    EXPECT_TRUE(controller.isOpen());
}

TEST_F(ClipboardPanelControllerTest, OnlyALossThatClosedItIsRemembered)
{
    EXPECT_GT(controller.secondsSinceResignClose(), 1e9);
    open();
    controller.animateOutAndClose();
    setKey(false);
    EXPECT_GT(controller.secondsSinceResignClose(), 1e9);
    finishClosing();
    open();
    setKey(false);
    queue.advance(0.2);
    EXPECT_NEAR(controller.secondsSinceResignClose(), 0.2, 1e-9);
}

TEST_F(ClipboardPanelControllerTest, TheKeyboardOfAnotherWindowIsNoConcern)
{
    open();
    QWindow other;
    Q_EMIT windowServer.isKeyChanged(&other, false);
    EXPECT_TRUE(controller.isOpen());
}

// Keys

TEST_F(ClipboardPanelControllerTest, CommandAndADigitPasteThatRow)
{
    copyThree();
    open();
    EXPECT_TRUE(press(Qt::Key_2, Qt::ControlModifier));
    EXPECT_THAT(onPasteboard(), ElementsAre(u"two"_qs));
    EXPECT_FALSE(controller.isOpen());
}

TEST_F(ClipboardPanelControllerTest, ADigitBeyondTheListIsSwallowedAndPastesNothing)
{
    copyThree();
    open();
    EXPECT_TRUE(press(Qt::Key_4, Qt::ControlModifier));
    EXPECT_THAT(pasteboard.written, IsEmpty());
    EXPECT_TRUE(controller.isOpen());
}

TEST_F(ClipboardPanelControllerTest, CommandAndOneInStackModeQueuesTheFirstRow)
{
    copyThree();
    open();
    controller.model()->setStackModeEnabled(true);
    EXPECT_TRUE(press(Qt::Key_1, Qt::ControlModifier));
    EXPECT_TRUE(controller.isOpen());
    ASSERT_EQ(controller.model()->stackClips().size(), 1);
    EXPECT_EQ(controller.model()->stackClips().first().text, u"three"_qs);
}

TEST_F(ClipboardPanelControllerTest, TheKeysMoveDeletePinAndPaste)
{
    copyThree();
    open();
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_EQ(controller.model()->selectedClip()->text, u"two"_qs);
    EXPECT_TRUE(press(Qt::Key_Backspace, Qt::ControlModifier));
    EXPECT_THAT(texts(), ElementsAre(u"three"_qs, u"one"_qs));
    queue.runUntilIdle();
    EXPECT_TRUE(press(Qt::Key_P, Qt::ControlModifier));
    EXPECT_THAT(texts(), ElementsAre(u"one"_qs, u"three"_qs));
    queue.runUntilIdle();
    EXPECT_TRUE(press(Qt::Key_Return));
    EXPECT_EQ(onPasteboard().size(), 1);
    EXPECT_FALSE(controller.isOpen());
}

TEST_F(ClipboardPanelControllerTest, OtherKeysPassOn)
{
    copyThree();
    open();
    EXPECT_FALSE(press(Qt::Key_A));
    EXPECT_FALSE(press(Qt::Key_Space));
    EXPECT_FALSE(press(Qt::Key_Escape));
    EXPECT_FALSE(press(Qt::Key_C, Qt::ControlModifier));
}

TEST_F(ClipboardPanelControllerTest, AButtonWithTheKeyboardHasReturnAndLeavesTheRestToTheList)
{
    copyThree();
    open();
    view->keysAreTaken = true;
    EXPECT_FALSE(press(Qt::Key_Return));
    EXPECT_FALSE(press(Qt::Key_Enter));
    EXPECT_FALSE(press(Qt::Key_Space));
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_EQ(controller.model()->selectedClip()->text, u"two"_qs);
    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_TRUE(press(Qt::Key_Backspace, Qt::ControlModifier));
    EXPECT_THAT(texts(), ElementsAre(u"two"_qs, u"one"_qs));
    EXPECT_TRUE(press(Qt::Key_1, Qt::ControlModifier));
}

TEST_F(ClipboardPanelControllerTest, WhoHoldsTheKeyboardHasEveryKey)
{
    copyThree();
    open();
    view->keysAreTaken = true;
    view->keyboardIsHeld = true;
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down, Qt::Key_Up, Qt::Key_Space})
        EXPECT_FALSE(press(key)) << key;
    for (const auto key : {Qt::Key_Backspace, Qt::Key_P, Qt::Key_1})
        EXPECT_FALSE(press(key, Qt::ControlModifier)) << key;
    EXPECT_THAT(texts(), ElementsAre(u"three"_qs, u"two"_qs, u"one"_qs));
    EXPECT_EQ(controller.model()->selection(), 0);
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(ClipboardPanelControllerTest, AClosingPanelHandlesNoKeys)
{
    copyThree();
    open();
    controller.animateOutAndClose();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(controller.window(), &event);
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(ClipboardPanelControllerTest, AKeyThatClosesThePanelMayTakeItsOwnHandlerAway)
{
    open();
    auto* const window = controller.window();
    const auto handled = std::make_shared<int>(0);
    window->keyMonitor = [window, handled](const QKeyEvent&) {
        window->keyMonitor = {};
        // Among what the handler holds.
        ++*handled;
        return true;
    };
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &event);
    EXPECT_EQ(*handled, 1);
}
