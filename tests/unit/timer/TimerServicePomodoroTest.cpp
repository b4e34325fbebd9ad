#include "TimerServiceFixture.h"

namespace {
class TimerServicePomodoroTest : public TimerServiceFixture
{
protected:
    TimerServicePomodoroTest() { service.setMode(TimerMode::Pomodoro); }

    void expectPhase(PomodoroPhase phase, int rounds, double seconds)
    {
        EXPECT_EQ(service.phase(), phase);
        EXPECT_EQ(service.completedFocusRounds(), rounds);
        EXPECT_DOUBLE_EQ(service.remaining(), seconds);
        EXPECT_DOUBLE_EQ(service.displaySeconds(), seconds);
    }
};
} // namespace

TEST_F(TimerServicePomodoroTest, IsLoadedWithAFocusPhase)
{
    expectLoaded(1500);
    expectPhase(PomodoroPhase::Focus, 0, 1500);
}

TEST_F(TimerServicePomodoroTest, RunsOnFromPhaseToPhaseWithTheAlertAtEachEnd)
{
    service.start();
    queue.advance(1499.9);
    EXPECT_EQ(service.phase(), PomodoroPhase::Focus);
    queue.advance(0.1);
    expectPhase(PomodoroPhase::Rest, 1, 300);
    EXPECT_EQ(alertSound.beeps, 1);
    queue.advance(300);
    expectPhase(PomodoroPhase::Focus, 1, 1500);
    EXPECT_EQ(alertSound.beeps, 2);
    queue.advance(1500);
    expectPhase(PomodoroPhase::Rest, 2, 300);
    EXPECT_EQ(alertSound.beeps, 3);
    EXPECT_TRUE(service.isRunning());
}

TEST_F(TimerServicePomodoroTest, IsSilentWithoutSoundEnabled)
{
    service.setSoundEnabled(false);
    service.start();
    queue.advance(1500);
    expectPhase(PomodoroPhase::Rest, 1, 300);
    EXPECT_EQ(alertSound.beeps, 0);
}

TEST_F(TimerServicePomodoroTest, AMachineAsleepPastTheEndAdvancesOnePhaseWhichStartsFromThatMoment)
{
    service.start();
    sleep(8 * 60 * 60);
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 300);
    EXPECT_EQ(alertSound.beeps, 1);
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 299.8);
}

TEST_F(TimerServicePomodoroTest, WorkMinutesOfZeroGiveAFocusPhaseOfSixtySeconds)
{
    service.setWorkMinutes(0);
    service.reset();
    expectLoaded(60);
}

TEST_F(TimerServicePomodoroTest, BreakMinutesBelowOneGiveARestPhaseOfSixtySeconds)
{
    service.setBreakMinutes(-3);
    service.skip();
    expectPhase(PomodoroPhase::Rest, 1, 60);
}

TEST_F(TimerServicePomodoroTest, NewLengthsTakeEffectWhenAPhaseNextBegins)
{
    service.start();
    queue.advance(500);
    service.setWorkMinutes(50);
    service.setBreakMinutes(10);
    EXPECT_DOUBLE_EQ(service.remaining(), 1000);
    queue.advance(1000);
    expectPhase(PomodoroPhase::Rest, 1, 600);
    queue.advance(600);
    expectPhase(PomodoroPhase::Focus, 1, 3000);
}

TEST_F(TimerServicePomodoroTest, SkipOutOfFocusCountsAsARoundAndGoesOnRunning)
{
    service.start();
    queue.advance(10);
    service.skip();
    expectPhase(PomodoroPhase::Rest, 1, 300);
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(alertSound.beeps, 0);
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 299.8);
}

TEST_F(TimerServicePomodoroTest, SkipTwiceFromFocusIsOneRoundAndFocusAgain)
{
    service.skip();
    service.skip();
    expectPhase(PomodoroPhase::Focus, 1, 1500);
}

TEST_F(TimerServicePomodoroTest, SkipWhilePausedLoadsThePhaseAndStaysPaused)
{
    service.start();
    queue.advance(10);
    service.pause();
    service.skip();
    expectLoaded(300);
    expectPhase(PomodoroPhase::Rest, 1, 300);
    queue.advance(100);
    expectLoaded(300);
    service.start();
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 299.8);
}

TEST_F(TimerServicePomodoroTest, SkipWhilePausedLeavesTheEndOfTheRunUntouched)
{
    service.start();
    queue.advance(10);
    service.pause();
    service.skip();
    // Nobody pauses what is paused; done all the same, it shows which end is still noted.
    service.pause();
    EXPECT_DOUBLE_EQ(service.remaining(), 1490);
}

TEST_F(TimerServicePomodoroTest, PauseWaitStartGoesOnWithinThePhase)
{
    service.start();
    queue.advance(1600);
    service.pause();
    expectLoaded(200);
    queue.advance(1000);
    service.start();
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 199.8);
}

TEST_F(TimerServicePomodoroTest, StartAtNothingLeftReloadsThePresentPhase)
{
    service.skip();
    service.add(-600);
    expectLoaded(0);
    service.start();
    EXPECT_TRUE(service.isRunning());
    EXPECT_DOUBLE_EQ(service.remaining(), 300);
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 299.8);
}

TEST_F(TimerServicePomodoroTest, AddMovesTheEndOfThePhase)
{
    service.start();
    queue.advance(10);
    service.add(60);
    EXPECT_DOUBLE_EQ(service.remaining(), 1550);
    service.add(-6000);
    EXPECT_DOUBLE_EQ(service.remaining(), 0);
    nextTick();
    expectPhase(PomodoroPhase::Rest, 1, 300);
    EXPECT_EQ(alertSound.beeps, 1);
}

TEST_F(TimerServicePomodoroTest, ResetGoesBackToTheFirstFocusPhase)
{
    service.start();
    queue.advance(3400);
    expectPhase(PomodoroPhase::Rest, 2, 200);
    service.reset();
    expectLoaded(1500);
    expectPhase(PomodoroPhase::Focus, 0, 1500);
}

TEST_F(TimerServicePomodoroTest, SwitchingAwayAndBackAbandonsTheRun)
{
    service.start();
    queue.advance(1600);
    service.setMode(TimerMode::Timer);
    expectLoaded(300);
    service.setMode(TimerMode::Pomodoro);
    expectLoaded(1500);
    expectPhase(PomodoroPhase::Focus, 0, 1500);
}
