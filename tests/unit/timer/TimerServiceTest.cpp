#include "TimerServiceFixture.h"

#include "support/Subscribe.h"

#include <memory>
#include <vector>

using testing::ElementsAre;

namespace {
class TimerServiceTest : public TimerServiceFixture
{
protected:
    /// How often `signal` has been emitted since.
    template <typename Signal>
    std::shared_ptr<int> count(Signal signal)
    {
        const auto times = std::make_shared<int>(0);
        QObject::connect(&service, signal, &service, [times] { ++*times; });
        return times;
    }
};
} // namespace

TEST_F(TimerServiceTest, EverySetPublishesAlsoAnEqualValue)
{
    const auto mode = count(&TimerService::modeChanged);
    const auto isRunning = count(&TimerService::isRunningChanged);
    const auto preset = count(&TimerService::presetSecondsChanged);
    const auto display = count(&TimerService::displaySecondsChanged);
    const auto remaining = count(&TimerService::remainingChanged);
    const auto phase = count(&TimerService::phaseChanged);
    const auto rounds = count(&TimerService::completedFocusRoundsChanged);
    const auto work = count(&TimerService::workMinutesChanged);
    const auto rest = count(&TimerService::breakMinutesChanged);

    service.setPreset(300);
    EXPECT_EQ(*preset, 1);
    EXPECT_EQ(*isRunning, 1);
    EXPECT_EQ(*display, 1);
    EXPECT_EQ(*remaining, 1);
    service.setWorkMinutes(25);
    EXPECT_EQ(*work, 1);
    service.setBreakMinutes(5);
    EXPECT_EQ(*rest, 1);
    service.setMode(TimerMode::Timer);
    EXPECT_EQ(*mode, 0) << "a reset sets no mode";
    service.setMode(TimerMode::Pomodoro);
    EXPECT_EQ(*mode, 1);
    EXPECT_EQ(*phase, 1);
    EXPECT_EQ(*rounds, 1);
}

TEST_F(TimerServiceTest, SubscribersGetTheCurrentValueAndEveryLaterOne)
{
    std::vector<bool> seen;
    const auto subscription =
        subscribe(queue, &service, &TimerService::isRunning, &TimerService::isRunningChanged)
            .then(&service, [&](bool isRunning) { seen.push_back(isRunning); });
    service.start();
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(false, true));
    queue.advance(300);
    EXPECT_THAT(seen, ElementsAre(false, true, false));
}

TEST_F(TimerServiceTest, TheTickerLivesOnlyDuringARun)
{
    for (const auto mode : TimerModes::allCases()) {
        service.setMode(mode);
        EXPECT_EQ(queue.pendingCount(), 0u);
        service.start();
        EXPECT_EQ(queue.pendingCount(), 1u);
        queue.advance(10);
        EXPECT_EQ(queue.pendingCount(), 1u);
        service.pause();
        EXPECT_EQ(queue.pendingCount(), 0u);
        service.start();
        service.reset();
        EXPECT_EQ(queue.pendingCount(), 0u);
        service.start();
    }
}

TEST_F(TimerServiceTest, ASecondStartKeepsOneTicker)
{
    service.start();
    queue.advance(0.1);
    service.start();
    EXPECT_EQ(queue.pendingCount(), 1u);
    const auto display = count(&TimerService::displaySecondsChanged);
    queue.advance(1);
    EXPECT_EQ(*display, 5);
}

TEST_F(TimerServiceTest, ATickTakesATurnOfItsOwn)
{
    service.start();
    clock.advance(0.2);
    queue.runOneTurn();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 300);
    queue.runOneTurn();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 299.8);
}

TEST_F(TimerServiceTest, ATickUnderWayWhenTheRunIsPausedChangesNothing)
{
    service.start();
    clock.advance(0.2);
    queue.runOneTurn();
    service.pause();
    const auto display = count(&TimerService::displaySecondsChanged);
    clock.advance(1);
    queue.runUntilIdle();
    EXPECT_EQ(*display, 0);
    expectLoaded(299.8);
}

TEST_F(TimerServiceTest, ATickUnderWayWhenTheModeChangesBelongsToTheNewRun)
{
    service.start();
    clock.advance(0.2);
    queue.runOneTurn();
    service.setMode(TimerMode::Stopwatch);
    service.start();
    clock.advance(0.1);
    queue.runUntilIdle();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 0.1);
}

TEST_F(TimerServiceTest, TicksBehindABusyMainThreadJustReadTheClock)
{
    service.start();
    clock.advance(7.7);
    queue.runUntilIdle();
    EXPECT_DOUBLE_EQ(service.displaySeconds(), 292.3);
}

TEST_F(TimerServiceTest, DestructionEndsTheTicker)
{
    auto other = std::make_unique<TimerService>(300.0, clock, queue, alertSound);
    other->start();
    queue.advance(1);
    other.reset();
    EXPECT_EQ(queue.pendingCount(), 0u);
}

TEST_F(TimerServiceTest, ATickUnderWayOutlivesTheService)
{
    auto other = std::make_unique<TimerService>(0.2, clock, queue, alertSound);
    other->start();
    clock.advance(0.2);
    queue.runOneTurn();
    EXPECT_EQ(queue.pendingCount(), 2u) << "the tick and the next beat";
    other.reset();
    queue.runUntilIdle();
    EXPECT_EQ(queue.pendingCount(), 0u);
    EXPECT_EQ(alertSound.beeps, 0);
}

TEST_F(TimerServiceTest, SetModeLoadsEachFace)
{
    service.setMode(TimerMode::Pomodoro);
    EXPECT_EQ(service.mode(), TimerMode::Pomodoro);
    expectLoaded(1500);
    service.setMode(TimerMode::Stopwatch);
    EXPECT_EQ(service.mode(), TimerMode::Stopwatch);
    expectLoaded(0);
    service.setMode(TimerMode::Timer);
    EXPECT_EQ(service.mode(), TimerMode::Timer);
    expectLoaded(300);
}

TEST_F(TimerServiceTest, SetModeStopsARun)
{
    service.start();
    queue.advance(10);
    service.setMode(TimerMode::Pomodoro);
    expectLoaded(1500);
    service.start();
    queue.advance(10);
    service.setMode(TimerMode::Stopwatch);
    expectLoaded(0);
    service.start();
    queue.advance(10);
    service.setMode(TimerMode::Timer);
    expectLoaded(300);
}
