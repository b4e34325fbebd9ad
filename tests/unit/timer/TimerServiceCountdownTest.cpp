#include "TimerServiceFixture.h"

#include <limits>

namespace {
using TimerServiceCountdownTest = TimerServiceFixture;
} // namespace

TEST_F(TimerServiceCountdownTest, IsIdleWithItsPresetAtCreation)
{
    EXPECT_EQ(service.mode(), TimerMode::Timer);
    EXPECT_EQ(service.phase(), PomodoroPhase::Focus);
    EXPECT_EQ(service.completedFocusRounds(), 0);
    EXPECT_EQ(service.workMinutes(), 25);
    EXPECT_EQ(service.breakMinutes(), 5);
    EXPECT_TRUE(service.soundEnabled());
    EXPECT_DOUBLE_EQ(service.presetSeconds(), 300);
    expectLoaded(300);
}

TEST_F(TimerServiceCountdownTest, ShowsTheTimeLeftEveryFifthOfASecond)
{
    service.start();
    EXPECT_TRUE(service.isRunning());
    queue.advance(0.19);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 300);
    queue.advance(0.01);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 299.8);
    EXPECT_DOUBLE_EQ(service.remaining(), 299.8);
    queue.advance(99.8);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 200);
}

TEST_F(TimerServiceCountdownTest, FinishesAtZeroWithTheAlertAndRestsThere)
{
    service.start();
    queue.advance(299.9);
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(alertSound.beeps, 0);
    queue.advance(0.1);
    EXPECT_EQ(alertSound.beeps, 1);
    expectLoaded(0);
    queue.advance(60);
    EXPECT_EQ(alertSound.beeps, 1);
}

TEST_F(TimerServiceCountdownTest, FinishesOnTheVeryTickWhateverTheMillisecondOfTheStart)
{
    for (int offset = 1; offset < 1000; offset += 37) {
        clock.setNow(clock.now().addMSecs(offset));
        service.setPreset(1.8);
        service.start();
        queue.advance(1.6);
        ASSERT_TRUE(service.isRunning());
        nextTick();
        ASSERT_FALSE(service.isRunning()) << offset;
    }
}

TEST_F(TimerServiceCountdownTest, IsSilentWithoutSoundEnabled)
{
    service.setSoundEnabled(false);
    service.start();
    queue.advance(300);
    expectLoaded(0);
    EXPECT_EQ(alertSound.beeps, 0);
}

TEST_F(TimerServiceCountdownTest, StartAfterTheFinishReloadsThePreset)
{
    service.start();
    queue.advance(300);
    service.startOrPause();
    EXPECT_TRUE(service.isRunning());
    EXPECT_DOUBLE_EQ(service.remaining(), 300);
    nextTick();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 299.8);
}

TEST_F(TimerServiceCountdownTest, AMachineAsleepPastTheEndFinishesOnTheNextTick)
{
    service.start();
    queue.advance(10);
    sleep(8 * 60 * 60);
    EXPECT_TRUE(service.isRunning());
    nextTick();
    expectLoaded(0);
    EXPECT_EQ(alertSound.beeps, 1);
}

TEST_F(TimerServiceCountdownTest, AClockSetBackLengthensWhatIsLeft)
{
    service.start();
    queue.advance(10);
    sleep(-60);
    nextTick();
    EXPECT_TRUE(service.isRunning());
    EXPECT_DOUBLE_EQ(service.remaining(), 349.8);
}

TEST_F(TimerServiceCountdownTest, StartWithAPresetOfZeroDoesNotStart)
{
    service.setPreset(0);
    service.start();
    expectLoaded(0);
}

TEST_F(TimerServiceCountdownTest, StartWithAPresetBelowZeroOrNoNumberDoesNotStart)
{
    for (const double seconds : {-5.0, std::numeric_limits<double>::quiet_NaN()}) {
        service.setPreset(seconds);
        service.start();
        EXPECT_FALSE(service.isRunning());
        EXPECT_EQ(queue.pendingCount(), 0u);
    }
}

TEST_F(TimerServiceCountdownTest, APresetBeyondAnyDateRuns)
{
    service.setPreset(std::numeric_limits<double>::max());
    service.start();
    nextTick();
    EXPECT_TRUE(service.isRunning());
    EXPECT_GT(service.remaining(), 1e11);
}

TEST_F(TimerServiceCountdownTest, AddWhileRunningMovesTheEnd)
{
    service.start();
    queue.advance(100);
    clock.advance(0.05);
    service.add(60);
    EXPECT_DOUBLE_EQ(service.remaining(), 259.95);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 259.95);
    queue.advance(259.8);
    EXPECT_TRUE(service.isRunning());
    queue.advance(0.2);
    expectLoaded(0);
}

TEST_F(TimerServiceCountdownTest, AddOfMinusTenMinutesToAMinuteLeavesNothingAndTheNextTickFinishes)
{
    service.setPreset(60);
    service.start();
    service.add(-600);
    EXPECT_DOUBLE_EQ(service.remaining(), 0);
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 0);
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(alertSound.beeps, 0);
    nextTick();
    expectLoaded(0);
    EXPECT_EQ(alertSound.beeps, 1);
}

TEST_F(TimerServiceCountdownTest, AddWhilePausedGoesByWhatIsLeft)
{
    service.start();
    queue.advance(100);
    service.pause();
    queue.advance(50);
    service.add(60);
    expectLoaded(260);
    service.add(-600);
    expectLoaded(0);
}

TEST_F(TimerServiceCountdownTest, AddLeavesThePresetSoThatAResetDropsIt)
{
    service.add(60);
    expectLoaded(360);
    EXPECT_DOUBLE_EQ(service.presetSeconds(), 300);
    service.reset();
    expectLoaded(300);
}

TEST_F(TimerServiceCountdownTest, AddAfterTheFinishIsRunInsteadOfThePreset)
{
    service.start();
    queue.advance(300);
    service.add(60);
    service.start();
    nextTick();
    EXPECT_DOUBLE_EQ(service.remaining(), 59.8);
}

TEST_F(TimerServiceCountdownTest, PauseWaitStartGoesOnWithTheSameRemaining)
{
    service.start();
    queue.advance(100);
    clock.advance(0.05);
    service.startOrPause();
    expectLoaded(199.95);
    queue.advance(5000);
    expectLoaded(199.95);
    service.startOrPause();
    EXPECT_DOUBLE_EQ(service.remaining(), 199.95);
    nextTick();
    EXPECT_DOUBLE_EQ(service.remaining(), 199.75);
    queue.advance(199.8);
    expectLoaded(0);
}

TEST_F(TimerServiceCountdownTest, PausePastTheEndLeavesNothingAndDoesNotSound)
{
    service.start();
    sleep(1000);
    service.pause();
    expectLoaded(0);
    EXPECT_EQ(alertSound.beeps, 0);
}

TEST_F(TimerServiceCountdownTest, SetPresetStopsARunAndLoadsTheNewTime)
{
    service.start();
    queue.advance(10);
    service.setPreset(60);
    EXPECT_DOUBLE_EQ(service.presetSeconds(), 60);
    expectLoaded(60);
}

TEST_F(TimerServiceCountdownTest, ResetLoadsThePresetFromRunningPausedAndFinished)
{
    service.start();
    queue.advance(10);
    service.reset();
    expectLoaded(300);

    service.start();
    queue.advance(10);
    service.pause();
    service.reset();
    expectLoaded(300);

    service.start();
    queue.advance(300);
    service.reset();
    expectLoaded(300);
}

TEST_F(TimerServiceCountdownTest, SetModeToTimerWhileRunningIsAReset)
{
    service.start();
    queue.advance(10);
    service.setMode(TimerMode::Timer);
    EXPECT_EQ(service.mode(), TimerMode::Timer);
    expectLoaded(300);
}

TEST_F(TimerServiceCountdownTest, SkipDoesNothing)
{
    service.start();
    queue.advance(10);
    service.skip();
    EXPECT_TRUE(service.isRunning());
    EXPECT_DOUBLE_EQ(service.remaining(), 290);
    EXPECT_EQ(service.phase(), PomodoroPhase::Focus);
    EXPECT_EQ(service.completedFocusRounds(), 0);
}
