#include "shell/MouseTracker.h"

#include "fakes/FakePointerMonitor.h"
#include "fakes/FakeScreens.h"
#include "fakes/ManualMainQueue.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class MouseTrackerTest : public testing::Test
{
protected:
    MouseTrackerTest()
    {
        tracker.screenFrame = frame;
        tracker.triggerWidthHidden = 220;
        tracker.triggerHeightHidden = 24;
        tracker.triggerWidthShown = 616;
        tracker.triggerHeightShown = 254;
        tracker.onChange = [this](bool inside) { changes.push_back(inside); };
    }

    void moveTo(double x, double y)
    {
        pointer.moveOverOthers(ScreenPoint{x, y});
        queue.runUntilIdle();
    }

    const ScreenRect frame{0, 0, 1280, 800};
    FakePointerMonitor pointer;
    FakeScreens screens;
    ManualMainQueue queue;
    MouseTracker tracker{pointer, screens, queue};
    std::vector<bool> changes;
};
} // namespace

TEST_F(MouseTrackerTest, HasItsOwnZonesUntilToldOthers)
{
    const MouseTracker fresh(pointer, screens, queue);
    EXPECT_EQ(fresh.screenFrame, std::nullopt);
    EXPECT_EQ(fresh.triggerWidthHidden, 220.0);
    EXPECT_EQ(fresh.triggerWidthShown, 620.0);
    EXPECT_EQ(fresh.triggerHeightHidden, 32.0);
    EXPECT_EQ(fresh.triggerHeightShown, 160.0);
    EXPECT_FALSE(fresh.isInside());
}

TEST_F(MouseTrackerTest, TheZonesEdgesCountAsInside)
{
    tracker.start();
    for (const auto& [x, y] : {ScreenPoint{640, 776}, ScreenPoint{530, 790}, ScreenPoint{750, 790},
                               ScreenPoint{530, 776}, ScreenPoint{750, 800}}) {
        moveTo(x, y);
        EXPECT_TRUE(tracker.isInside()) << x << "," << y;
        moveTo(0, 0);
        EXPECT_FALSE(tracker.isInside());
    }
    for (const auto& [x, y] : {ScreenPoint{640, 775.9}, ScreenPoint{529.9, 790}, ScreenPoint{750.1, 790}}) {
        moveTo(x, y);
        EXPECT_FALSE(tracker.isInside()) << x << "," << y;
    }
}

TEST_F(MouseTrackerTest, APointerThatHoldsSomethingHasNotLeftUntilItLetsGo)
{
    bool holds = false;
    tracker.isHolding = [&holds] { return holds; };
    const auto press = [&](bool down) {
        holds = down;
        pointer.moveOverOurs(pointer.location);
        queue.runUntilIdle();
    };
    tracker.start();
    moveTo(640, 790);
    press(true);
    moveTo(100, 100);
    EXPECT_THAT(changes, ElementsAre(true));
    press(false);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(MouseTrackerTest, APressThatIsHeardOfAfterThePointerHasLeftBringsItBack)
{
    bool holds = false;
    tracker.isHolding = [&holds] { return holds; };
    tracker.start();
    moveTo(640, 790);
    moveTo(100, 100);
    holds = true;
    pointer.moveOverOurs(pointer.location);
    queue.runUntilIdle();
    EXPECT_THAT(changes, ElementsAre(true, false, true));
}

TEST_F(MouseTrackerTest, APointerAboveTheDisplaysTopEdgeIsOutside)
{
    tracker.start();
    moveTo(640, 800.5);
    EXPECT_FALSE(tracker.isInside());
    moveTo(640, 800);
    EXPECT_TRUE(tracker.isInside());
    moveTo(640, 800.5);
    EXPECT_FALSE(tracker.isInside());
}

TEST_F(MouseTrackerTest, EnteringNeedsTheHiddenZoneAndLeavingTheShownOne)
{
    tracker.start();
    moveTo(640 + 308, 700);
    EXPECT_THAT(changes, IsEmpty());
    moveTo(640, 799);
    EXPECT_THAT(changes, ElementsAre(true));
    moveTo(640 + 308, 800 - 254);
    moveTo(640 - 308, 800 - 254);
    EXPECT_THAT(changes, ElementsAre(true));
    moveTo(640 - 308.1, 700);
    EXPECT_THAT(changes, ElementsAre(true, false));
    // Back to where it was still inside: only the small zone counts now.
    moveTo(640 - 308, 700);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(MouseTrackerTest, RepeatedStartsInstallOnePairOfMonitors)
{
    tracker.start();
    tracker.start();
    EXPECT_EQ(pointer.globalMonitors(), 1U);
    EXPECT_EQ(pointer.localMonitors(), 1U);
    moveTo(640, 799);
    EXPECT_THAT(changes, ElementsAre(true));
}

TEST_F(MouseTrackerTest, MovementsOverOurOwnWindowsCountToo)
{
    tracker.start();
    pointer.moveOverOurs(ScreenPoint{640, 795});
    queue.runUntilIdle();
    EXPECT_THAT(changes, ElementsAre(true));
}

TEST_F(MouseTrackerTest, StartReportsAPointerThatAlreadyIsThere)
{
    pointer.location = ScreenPoint{640, 799};
    tracker.start();
    EXPECT_THAT(changes, ElementsAre(true));
}

TEST_F(MouseTrackerTest, StopRemovesTheMonitorsAndKeepsTheState)
{
    tracker.start();
    moveTo(640, 799);
    tracker.stop();
    EXPECT_EQ(pointer.globalMonitors(), 0U);
    EXPECT_EQ(pointer.localMonitors(), 0U);
    moveTo(0, 0);
    EXPECT_TRUE(tracker.isInside());
    EXPECT_THAT(changes, ElementsAre(true));
    tracker.start();
    EXPECT_EQ(pointer.globalMonitors(), 1U);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(MouseTrackerTest, AMovementOnItsWayIsDroppedAfterStop)
{
    tracker.start();
    pointer.moveOverOthers(ScreenPoint{640, 799});
    tracker.stop();
    queue.runUntilIdle();
    EXPECT_FALSE(tracker.isInside());
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(MouseTrackerTest, GoesOnWithTheLocalMonitorWhereTheGlobalOneIsRefused)
{
    pointer.offersGlobalMonitor = false;
    tracker.start();
    pointer.moveOverOurs(ScreenPoint{640, 799});
    queue.runUntilIdle();
    EXPECT_THAT(changes, ElementsAre(true));
}

TEST_F(MouseTrackerTest, GoesOnWithTheGlobalMonitorWhereTheLocalOneIsRefused)
{
    pointer.offersLocalMonitor = false;
    tracker.start();
    moveTo(640, 799);
    EXPECT_THAT(changes, ElementsAre(true));
    tracker.stop();
    EXPECT_EQ(pointer.globalMonitors(), 0U);
}

TEST_F(MouseTrackerTest, AMovementOnItsWayIsHarmlessOnceTheTrackerIsGone)
{
    auto other = std::make_unique<MouseTracker>(pointer, screens, queue);
    other->screenFrame = frame;
    other->onChange = [this](bool inside) { changes.push_back(inside); };
    other->start();
    pointer.moveOverOthers(ScreenPoint{640, 799});
    other.reset();
    queue.runUntilIdle();
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(MouseTrackerTest, APointerThatCannotBeSeenIsOutside)
{
    tracker.start();
    moveTo(640, 799);
    pointer.moveOverOurs(std::nullopt);
    queue.runUntilIdle();
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(MouseTrackerTest, WithoutADisplayToWatchItTakesTheOneUnderThePointer)
{
    tracker.screenFrame.reset();
    const Screen left{QStringLiteral("left"), {0, 0, 1000, 800}, 0, {}, {}};
    const Screen right{QStringLiteral("right"), {1000, 0, 2000, 1000}, 0, {}, {}};
    screens.all = {left, right};
    screens.main = left;
    tracker.start();
    moveTo(500, 800);
    EXPECT_TRUE(tracker.isInside());
    moveTo(900, 400);
    EXPECT_FALSE(tracker.isInside());
    moveTo(2000, 1000);
    EXPECT_TRUE(tracker.isInside());
}

TEST_F(MouseTrackerTest, LooksForDisplaysOnlyWithoutOneToWatch)
{
    screens.setSingle(frame);
    tracker.start();
    moveTo(640, 799);
    moveTo(0, 0);
    EXPECT_EQ(screens.enumerations, 0);
    tracker.screenFrame.reset();
    moveTo(640, 799);
    EXPECT_EQ(screens.enumerations, 1);
}

TEST_F(MouseTrackerTest, OffEveryDisplayTheMainOneIsTaken)
{
    tracker.screenFrame.reset();
    screens.setSingle({0, 0, 1000, 800});
    screens.all = {Screen{QStringLiteral("far"), {5000, 0, 10, 10}, 0, {}, {}}};
    tracker.start();
    moveTo(500, 800);
    EXPECT_TRUE(tracker.isInside());
}

TEST_F(MouseTrackerTest, WhenTheLastDisplayGoesThePointerIsOutsideOnce)
{
    tracker.screenFrame.reset();
    screens.setSingle({0, 0, 1000, 800});
    tracker.start();
    moveTo(500, 800);
    screens.all.clear();
    screens.main.reset();
    moveTo(500, 800);
    moveTo(500, 799);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(MouseTrackerTest, TellsHowFarThePointerIsFromTheZone)
{
    tracker.start();
    moveTo(640 + 110 + 300, 799);
    EXPECT_EQ(pointer.distanceOfInterest, 300);
    moveTo(640, 800 - 24 - 500);
    EXPECT_EQ(pointer.distanceOfInterest, 500);
    moveTo(640, 799);
    EXPECT_EQ(pointer.distanceOfInterest, 0);
    moveTo(640, 600);
    EXPECT_EQ(pointer.distanceOfInterest, 0);
}
