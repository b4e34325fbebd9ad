#include "TimerServiceFixture.h"

namespace {
class TimerServiceStopwatchTest : public TimerServiceFixture
{
protected:
    TimerServiceStopwatchTest() { service.setMode(TimerMode::Stopwatch); }
};
} // namespace

TEST_F(TimerServiceStopwatchTest, IsLoadedWithZero)
{
    expectLoaded(0);
}

TEST_F(TimerServiceStopwatchTest, ShowsTheTimeGoneBy)
{
    service.start();
    EXPECT_TRUE(service.isRunning());
    queue.advance(12.4);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 12.4);
    queue.advance(4000);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 4012.4);
    EXPECT_EQ(alertSound.beeps, 0);
}

TEST_F(TimerServiceStopwatchTest, CountsNoStretchTwiceAfterAPause)
{
    service.start();
    queue.advance(10);
    clock.advance(0.05);
    service.startOrPause();
    expectLoaded(10.05);
    queue.advance(100);
    expectLoaded(10.05);
    service.startOrPause();
    queue.advance(5);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 15.05);
    service.pause();
    expectLoaded(15.05);
    service.pause();
    expectLoaded(15.05);
}

TEST_F(TimerServiceStopwatchTest, TimeAsleepCounts)
{
    service.start();
    sleep(3600);
    nextTick();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 3600.2);
}

TEST_F(TimerServiceStopwatchTest, AddDoesNothing)
{
    service.start();
    queue.advance(10);
    const double remaining = service.remaining();
    service.add(60);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 10);
    EXPECT_DOUBLE_EQ(service.remaining(), remaining);
    nextTick();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 10.2);
}

TEST_F(TimerServiceStopwatchTest, SkipDoesNothing)
{
    service.start();
    queue.advance(10);
    service.skip();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 10);
    EXPECT_EQ(service.completedFocusRounds(), 0);
}

TEST_F(TimerServiceStopwatchTest, ResetGoesBackToZero)
{
    service.start();
    queue.advance(10);
    service.reset();
    expectLoaded(0);
    service.start();
    queue.advance(1);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 1);
}

TEST_F(TimerServiceStopwatchTest, SwitchingAwayAndBackAbandonsTheRun)
{
    service.start();
    queue.advance(10);
    service.pause();
    service.start();
    queue.advance(10);
    service.setMode(TimerMode::Timer);
    expectLoaded(300);
    queue.advance(10);
    service.setMode(TimerMode::Stopwatch);
    expectLoaded(0);
    service.start();
    queue.advance(1);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 1);
}
