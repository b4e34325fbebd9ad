#include "AppDelegate.h"

#include "fakes/FakePlatform.h"
#include "fakes/TestModule.h"
#include "shell/NotchPanel.h"

#include <QQuickItem>

#include <gmock/gmock.h>

namespace {
constexpr ScreenPoint atNotch{640, 799};
constexpr ScreenPoint away{100, 100};

class AppDelegateTest : public testing::Test
{
protected:
    AppDelegateTest() { platform.screens.setSingle({0, 0, 1280, 800}); }

    AppDelegate& launch()
    {
        delegate.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
        return delegate;
    }

    void movePointer(const ScreenPoint& to)
    {
        platform.pointer.moveOverOthers(to);
        platform.mainQueue.runUntilIdle();
    }

    /// A display arrangement in which the menu bar is `thickness` high.
    void rearrange(const ScreenRect& frame, double thickness)
    {
        platform.screens.setSingle(frame);
        platform.screens.barThickness = thickness;
        Q_EMIT platform.screens.changed();
    }

    static std::vector<std::unique_ptr<NotchModule>> twoModules()
    {
        std::vector<std::unique_ptr<NotchModule>> modules;
        modules.push_back(std::make_unique<TestModule>(u"media"_qs));
        auto tall = std::make_unique<TestModule>(u"mirror"_qs);
        tall->height = 420.0;
        modules.push_back(std::move(tall));
        return modules;
    }

    bool isOpen() { return delegate.panelState().isOpen(); }

    FakePlatform platform;
    AppDelegate delegate{platform.ports(), twoModules()};
    const FakeWindowServer& window = platform.windowServer;
};
} // namespace

TEST_F(AppDelegateTest, LaunchPutsTheClosedPanelAtTheTopCentre)
{
    launch();
    EXPECT_EQ(window.frame, (ScreenRect{340, 560, 600, 240}));
    EXPECT_TRUE(window.ignoresMouseEvents);
    EXPECT_EQ(window.ordersFront, 1);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, ThePanelIsAboveEverythingOnEveryWorkspaceAndActivatesNothing)
{
    launch();
    EXPECT_EQ(window.traits.level, 25);
    EXPECT_TRUE(window.traits.joinsAllSpaces);
    EXPECT_TRUE(window.traits.isStationary);
    EXPECT_TRUE(window.traits.ignoresCycle);
    EXPECT_TRUE(window.traits.isFullScreenAuxiliary);
    EXPECT_TRUE(window.traits.isNonActivating);
    EXPECT_FALSE(window.traits.isOpaque);
    EXPECT_FALSE(window.traits.hasShadow);
    EXPECT_TRUE(delegate.window()->canBecomeKey());
}

TEST_F(AppDelegateTest, ThePanelStateStartsClosedOnTheMediaModule)
{
    EXPECT_FALSE(delegate.panelState().isOpen());
    EXPECT_EQ(delegate.panelState().activeModuleID(), u"media"_qs);
    EXPECT_FALSE(delegate.panelState().isPinned());
    EXPECT_FALSE(delegate.panelState().composingEvent());
    EXPECT_EQ(delegate.panelState().contentHeight(), 216.0);
}

TEST_F(AppDelegateTest, TheTrackersZonesFollowTheNotchAndTheDrawer)
{
    launch();
    const auto& tracker = delegate.tracker();
    EXPECT_EQ(tracker.screenFrame, (ScreenRect{0, 0, 1280, 800}));
    EXPECT_EQ(tracker.triggerWidthHidden, 220.0);
    EXPECT_EQ(tracker.triggerHeightHidden, 24.0);
    EXPECT_EQ(tracker.triggerWidthShown, 616.0);
    EXPECT_EQ(tracker.triggerHeightShown, 24 + 216 + 14.0);
    EXPECT_EQ(window.hoverZone, QRectF(190, 0, 220, 24));
}

TEST_F(AppDelegateTest, APointerAtTheNotchOpensAtOnceAndTheWindowTakesTheMouse)
{
    launch();
    movePointer(atNotch);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(window.ignoresMouseEvents);
    EXPECT_FALSE(window.isKey);
}

TEST_F(AppDelegateTest, APointerAlreadyAtTheNotchOpensAtLaunch)
{
    platform.pointer.location = atNotch;
    launch();
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, LeavingClosesAfterTheGraceAndNotBefore)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    platform.mainQueue.advance(0.399);
    EXPECT_TRUE(isOpen());
    platform.mainQueue.advance(0.001);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(window.ignoresMouseEvents);
}

TEST_F(AppDelegateTest, APointerBackWithinTheGraceKeepsThePanelOpenAndCancelsTheHide)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    platform.mainQueue.advance(0.3);
    movePointer(atNotch);
    EXPECT_EQ(platform.mainQueue.pendingCount(), 0U);
    platform.mainQueue.advance(10);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AnOverwrittenHideStillRunsButCannotCloseAPanelUnderThePointer)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    platform.mainQueue.advance(0.1);
    // The state of another hide on its way that nobody holds any more: pinning and unpinning in between
    // would cancel only the one that is held.
    movePointer(atNotch);
    movePointer(away);
    platform.mainQueue.advance(0.35);
    movePointer(atNotch);
    platform.mainQueue.advance(0.05);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AHideThatRunsLooksAtThePointerOnceMore)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    // Composing swallows the entering that would have cancelled the hide.
    delegate.panelState().setComposingEvent(true);
    movePointer(atNotch);
    EXPECT_EQ(platform.mainQueue.pendingCount(), 1U);
    platform.mainQueue.advance(1);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AHideThatRunsDoesNotLookAtComposing)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    delegate.panelState().setComposingEvent(true);
    platform.mainQueue.advance(1);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, PinningOpensAndHoldsThePanel)
{
    launch();
    delegate.setPinned(true);
    EXPECT_TRUE(isOpen());
    movePointer(atNotch);
    movePointer(away);
    EXPECT_EQ(platform.mainQueue.pendingCount(), 0U);
    platform.mainQueue.advance(10);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, PinningCancelsAHideOnItsWay)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    delegate.setPinned(true);
    EXPECT_EQ(platform.mainQueue.pendingCount(), 0U);
}

TEST_F(AppDelegateTest, UnpinningWithThePointerOutsideClosesAtOnce)
{
    launch();
    delegate.setPinned(true);
    delegate.setPinned(false);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(platform.mainQueue.pendingCount(), 0U);
}

TEST_F(AppDelegateTest, UnpinningWithThePointerInsideStaysOpen)
{
    launch();
    delegate.setPinned(true);
    movePointer(atNotch);
    delegate.setPinned(false);
    EXPECT_TRUE(isOpen());
    movePointer(away);
    platform.mainQueue.advance(0.4);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, ComposingOpensThePanelTakesTheKeyboardAndIgnoresHovers)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    delegate.beginComposeEvent();
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(delegate.panelState().composingEvent());
    EXPECT_TRUE(window.isKey);
    EXPECT_EQ(platform.mainQueue.pendingCount(), 0U);
    movePointer(atNotch);
    movePointer(away);
    platform.mainQueue.advance(10);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, ComposingEndsWithAClosedPanelUnlessThePointerIsInsideOrItIsPinned)
{
    launch();
    delegate.beginComposeEvent();
    delegate.endComposeEvent();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(window.isKey);
    EXPECT_FALSE(delegate.panelState().composingEvent());

    delegate.beginComposeEvent();
    movePointer(atNotch);
    delegate.endComposeEvent();
    EXPECT_TRUE(isOpen());
    movePointer(away);
    platform.mainQueue.advance(1);

    delegate.setPinned(true);
    delegate.beginComposeEvent();
    delegate.endComposeEvent();
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AnotherArrangementOfDisplaysMovesThePanelAndKeepsTheContentHeight)
{
    launch();
    delegate.panelState().setContentHeight(300);
    rearrange({1000, 200, 1920, 1080}, 30);
    EXPECT_EQ(delegate.panelState().contentHeight(), 300.0);
    EXPECT_EQ(window.frame, (ScreenRect{1660, 950, 600, 330}));
    EXPECT_EQ(delegate.tracker().triggerHeightHidden, 30.0);
    EXPECT_EQ(delegate.tracker().triggerHeightShown, 30 + 300 + 14.0);
    EXPECT_EQ(delegate.window()->contentView()->size(), QSizeF(600, 330));
    EXPECT_EQ(delegate.window()->contentView()->property("notchInsetTop").toDouble(), 30.0);
}

TEST_F(AppDelegateTest, APointerUnderTheNewZoneIsNoticedAtItsNextMovement)
{
    launch();
    rearrange({0, 0, 1920, 1080}, 24);
    movePointer({960, 1079});
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, WithoutAnyDisplayTheProgramRunsOn)
{
    platform.screens.all.clear();
    platform.screens.main.reset();
    launch();
    EXPECT_EQ(window.frame, (ScreenRect{-300, -248, 600, 248}));
    rearrange({0, 0, 1280, 800}, 24);
    EXPECT_EQ(window.frame, (ScreenRect{340, 560, 600, 240}));
}

TEST_F(AppDelegateTest, AfterTheEndNothingIsWatchedAnyMore)
{
    launch();
    delegate.applicationWillTerminate();
    EXPECT_EQ(platform.pointer.globalMonitors(), 0U);
    EXPECT_EQ(platform.pointer.localMonitors(), 0U);
    const auto before = window.frame;
    rearrange({0, 0, 1920, 1080}, 24);
    EXPECT_EQ(window.frame, before);
}

TEST_F(AppDelegateTest, AHideOnItsWayIsHarmlessOnceTheControllerIsGone)
{
    auto other = std::make_unique<AppDelegate>(platform.ports());
    other->applicationDidFinishLaunching();
    movePointer(atNotch);
    movePointer(away);
    other.reset();
    platform.mainQueue.advance(1);
}

TEST_F(AppDelegateTest, AnotherStartBringsThePanelToTheFront)
{
    launch();
    delegate.applicationDidReactivate();
    EXPECT_EQ(window.ordersFront, 2);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, WithoutAPanelOpeningStopsTheProcess)
{
    EXPECT_DEATH(delegate.setPinned(true), "setPanelOpen");
    EXPECT_DEATH(delegate.beginComposeEvent(), "setPanelOpen");
    EXPECT_DEATH(delegate.endComposeEvent(), "endComposeEvent");
}
