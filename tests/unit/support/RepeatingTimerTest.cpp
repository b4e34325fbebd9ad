#include "support/RepeatingTimer.h"

#include "fakes/ManualMainQueue.h"

#include <gmock/gmock.h>

#include <vector>

using testing::DoubleEq;
using testing::ElementsAre;

namespace {
class RepeatingTimerTest : public testing::Test
{
protected:
    std::function<void()> record()
    {
        return [this] { beats.push_back(queue.monotonicSeconds()); };
    }

    ManualMainQueue queue;
    std::vector<double> beats;
};
} // namespace

TEST_F(RepeatingTimerTest, FirstRunsOnePeriodAfterItsMaking)
{
    const RepeatingTimer timer(queue, 0.7, record());
    queue.advance(0.69);
    EXPECT_TRUE(beats.empty());
    queue.advance(0.01);
    EXPECT_THAT(beats, ElementsAre(DoubleEq(0.7)));
}

TEST_F(RepeatingTimerTest, DoesNotDrift)
{
    const RepeatingTimer timer(queue, 0.7, record());
    queue.advance(7000);
    ASSERT_EQ(beats.size(), 10'000u);
    EXPECT_NEAR(beats.back(), 7000, 1e-8);
}

TEST_F(RepeatingTimerTest, DoesNotDriftWhenEachTurnIsLate)
{
    const RepeatingTimer timer(queue, 1.0, record());
    queue.clock().advance(0.25);
    for (int second = 1; second <= 3; ++second) {
        queue.clock().advance(1.0); // The loop is busy and gets to the beat a quarter late.
        queue.runUntilIdle();
    }
    queue.advance(0.75);
    EXPECT_THAT(beats, ElementsAre(1.25, 2.25, 3.25, 4.0));
}

TEST_F(RepeatingTimerTest, LateTurnsDoNotPileUpAndTheBeatStays)
{
    const RepeatingTimer timer(queue, 1.0, record());
    queue.clock().advance(3.5);
    queue.runUntilIdle();
    EXPECT_THAT(beats, ElementsAre(3.5));
    queue.advance(1.0);
    EXPECT_THAT(beats, ElementsAre(3.5, 4.0));
}

TEST_F(RepeatingTimerTest, AHandlerSlowerThanThePeriodLeavesBeatsOut)
{
    const RepeatingTimer timer(queue, 1.0, [this] {
        beats.push_back(queue.monotonicSeconds());
        queue.clock().advance(1.25);
    });
    queue.advance(5.5);
    EXPECT_THAT(beats, ElementsAre(1.0, 3.0, 5.0));
}

TEST_F(RepeatingTimerTest, StopsWhenDestroyed)
{
    {
        const RepeatingTimer timer(queue, 1.0, record());
        queue.advance(1);
    }
    EXPECT_EQ(queue.pendingCount(), 0u);
    queue.advance(5);
    EXPECT_THAT(beats, ElementsAre(1.0));
}

TEST_F(RepeatingTimerTest, TheHandlerMayDestroyTheTimer)
{
    std::unique_ptr<RepeatingTimer> timer;
    const auto held = std::make_shared<int>(0);
    timer = std::make_unique<RepeatingTimer>(queue, 1.0, [&, held] {
        timer.reset();
        ++*held; // What the handler holds outlives its run.
    });
    queue.advance(5);
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(queue.pendingCount(), 0u);
}

TEST_F(RepeatingTimerTest, TheHandlerMayReplaceTheTimer)
{
    std::unique_ptr<RepeatingTimer> timer;
    timer = std::make_unique<RepeatingTimer>(
        queue, 1.0, [&] { timer = std::make_unique<RepeatingTimer>(queue, 0.5, record()); });
    queue.advance(2);
    EXPECT_THAT(beats, ElementsAre(1.5, 2.0));
}

TEST_F(RepeatingTimerTest, DozingCostsNothingAndWakingKeepsTheBeat)
{
    RepeatingTimer timer(queue, 1.0, record());
    timer.doze();
    EXPECT_EQ(queue.pendingCount(), 0u);
    queue.advance(3.5);
    timer.wake();
    timer.wake();
    queue.advance(1.5);
    EXPECT_THAT(beats, ElementsAre(4.0, 5.0));
}

TEST_F(RepeatingTimerTest, TheHandlerMayDozeAndWake)
{
    std::unique_ptr<RepeatingTimer> timer;
    timer = std::make_unique<RepeatingTimer>(queue, 0.7, [&] {
        beats.push_back(queue.monotonicSeconds());
        timer->doze();
        if (beats.size() == 1)
            timer->wake();
    });
    queue.advance(7);
    EXPECT_THAT(beats, ElementsAre(DoubleEq(0.7), DoubleEq(1.4)));
    EXPECT_EQ(queue.pendingCount(), 0u);
}
