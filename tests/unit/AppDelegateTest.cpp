#include "AppDelegate.h"

#include "fakes/FakePlatform.h"
#include "fakes/TestModule.h"
#include "shell/NotchPanel.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QQuickItem>
#include <QTimer>

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
        finishLaunching(delegate);
        return delegate;
    }

    void finishLaunching(AppDelegate& launched)
    {
        launched.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
        m_beats = platform.mainQueue.pendingCount();
    }

    /// What is to come of the panel: the services' own beats left out.
    std::size_t pendingHides() const { return platform.mainQueue.pendingCount() - m_beats; }

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

    static std::vector<std::unique_ptr<NotchModule>> tallModule()
    {
        std::vector<std::unique_ptr<NotchModule>> modules;
        auto tall = std::make_unique<TestModule>(u"mirror"_qs);
        tall->height = 420.0;
        modules.push_back(std::move(tall));
        return modules;
    }

    void select(const QString& id)
    {
        delegate.panelState().setActiveModuleID(id);
        platform.mainQueue.runUntilIdle();
    }

    /// Lets the animation towards that height run in real time. The top left corner must stay at `corner`
    /// on the whole way. False when the frame never gets there.
    bool reachesHeight(double height, const ScreenPoint& corner)
    {
        const QDeadlineTimer deadline(10'000);
        // So that the wait ends where no animation runs.
        QTimer wakeUp;
        wakeUp.start(20);
        while (window.frame.height != height && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            EXPECT_EQ(window.frame.x, corner.x);
            EXPECT_NEAR(window.frame.maxY(), corner.y, 1e-9);
        }
        return window.frame.height == height;
    }

    bool isOpen() { return delegate.panelState().isOpen(); }

    FakePlatform platform;
    AppDelegate delegate{platform.ports(), tallModule()};
    const FakeWindowServer& window = platform.windowServer;

private:
    std::size_t m_beats = 0;
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
    EXPECT_EQ(pendingHides(), 0U);
    platform.mainQueue.advance(10);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AnOverwrittenHideStillRunsButCannotCloseAPanelUnderThePointer)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    // Composing swallows the entering that would have cancelled the hide, so the next leaving puts another in
    // its place, and the first is held by nobody any more.
    delegate.panelState().setComposingEvent(true);
    movePointer(atNotch);
    delegate.panelState().setComposingEvent(false);
    movePointer(away);
    EXPECT_EQ(pendingHides(), 2U);
    movePointer(atNotch);
    EXPECT_EQ(pendingHides(), 1U);
    platform.mainQueue.advance(1);
    EXPECT_EQ(pendingHides(), 0U);
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
    EXPECT_EQ(pendingHides(), 1U);
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
    EXPECT_EQ(pendingHides(), 0U);
    platform.mainQueue.advance(10);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, PinningCancelsAHideOnItsWay)
{
    launch();
    movePointer(atNotch);
    movePointer(away);
    delegate.setPinned(true);
    EXPECT_EQ(pendingHides(), 0U);
}

TEST_F(AppDelegateTest, UnpinningWithThePointerOutsideClosesAtOnce)
{
    launch();
    delegate.setPinned(true);
    delegate.setPinned(false);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(pendingHides(), 0U);
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
    EXPECT_EQ(pendingHides(), 0U);
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

TEST_F(AppDelegateTest, AModuleOfAnotherHeightStretchesTheDrawerDownward)
{
    launch();
    select(u"mirror"_qs);
    // The view and the zone run ahead of the window, which takes its time.
    EXPECT_EQ(delegate.panelState().contentHeight(), 420.0);
    EXPECT_EQ(delegate.tracker().triggerHeightShown, 24 + 420 + 14.0);
    EXPECT_EQ(delegate.window()->contentView()->size(), QSizeF(600, 444));
    EXPECT_EQ(window.frame, (ScreenRect{340, 560, 600, 240}));
    EXPECT_TRUE(reachesHeight(444, {340, 800}));
    EXPECT_EQ(window.frame, (ScreenRect{340, 356, 600, 444}));

    select(u"media"_qs);
    EXPECT_EQ(delegate.panelState().contentHeight(), 216.0);
    EXPECT_EQ(delegate.tracker().triggerHeightShown, 24 + 216 + 14.0);
    EXPECT_EQ(delegate.window()->contentView()->size(), QSizeF(600, 240));
    EXPECT_TRUE(reachesHeight(240, {340, 800}));
    EXPECT_EQ(window.frame, (ScreenRect{340, 560, 600, 240}));
}

TEST_F(AppDelegateTest, AnUnknownModuleHasTheUsualHeight)
{
    launch();
    select(u"mirror"_qs);
    select(u"nothing"_qs);
    EXPECT_EQ(delegate.panelState().contentHeight(), 216.0);
    EXPECT_EQ(delegate.window()->contentView()->size(), QSizeF(600, 240));
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
    EXPECT_EQ(delegate.window()->contentView()->property("notchWidth").toDouble(), 200.0);
    rearrange({0, 0, 1280, 800}, 24);
    EXPECT_EQ(window.frame, (ScreenRect{340, 560, 600, 240}));
}

TEST_F(AppDelegateTest, AfterTheEndNothingIsWatchedAnyMore)
{
    launch();
    delegate.applicationWillTerminate();
    EXPECT_EQ(platform.pointer.globalMonitors(), 0U);
    EXPECT_EQ(platform.pointer.localMonitors(), 0U);
    EXPECT_TRUE(platform.scriptRunner.isCancelled);
    const auto before = window.frame;
    rearrange({0, 0, 1920, 1080}, 24);
    EXPECT_EQ(window.frame, before);
}

TEST_F(AppDelegateTest, AHideOnItsWayIsHarmlessOnceTheControllerIsGone)
{
    auto other = std::make_unique<AppDelegate>(platform.ports());
    finishLaunching(*other);
    movePointer(atNotch);
    movePointer(away);
    EXPECT_EQ(pendingHides(), 1U);
    EXPECT_FALSE(window.ignoresMouseEvents);
    other.reset();
    platform.mainQueue.advance(1);
    EXPECT_FALSE(window.ignoresMouseEvents);
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
    EXPECT_DEATH(delegate.beginComposeEvent(), "beginComposeEvent");
    EXPECT_DEATH(delegate.endComposeEvent(), "endComposeEvent");
}
