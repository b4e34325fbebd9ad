#include "fakes/ManualMainQueue.h"

#include <gmock/gmock.h>

#include <string>

class ManualMainQueueTest : public testing::Test
{
protected:
    std::function<void()> add(char letter)
    {
        return [this, letter] { order += letter; };
    }

    ManualMainQueue queue;
    std::string order;
};

TEST_F(ManualMainQueueTest, WorkPutInByATurnWaitsForTheNext)
{
    queue.async([this] {
        order += 'a';
        queue.async(add('c'));
    });
    queue.async(add('b'));
    EXPECT_TRUE(queue.runOneTurn());
    EXPECT_EQ(order, "ab");
    EXPECT_TRUE(queue.runOneTurn());
    EXPECT_EQ(order, "abc");
    EXPECT_FALSE(queue.runOneTurn());
}

TEST_F(ManualMainQueueTest, ItemsRunByDeadlineAndThenInCallOrder)
{
    queue.asyncAfter(0.2, WorkItem::make(add('c')));
    queue.asyncAfter(0.1, WorkItem::make(add('a')));
    queue.asyncAfter(0.1, WorkItem::make(add('b')));
    queue.advance(0.1);
    EXPECT_EQ(order, "ab");
    queue.advance(0.1);
    EXPECT_EQ(order, "abc");
}

TEST_F(ManualMainQueueTest, WorkOfADeadlineRunsBeforeTheNextDeadline)
{
    queue.asyncAfter(0.1, WorkItem::make([this] { queue.async(add('a')); }));
    queue.asyncAfter(0.2, WorkItem::make(add('b')));
    queue.advance(1);
    EXPECT_EQ(order, "ab");
    EXPECT_DOUBLE_EQ(queue.monotonicSeconds(), 1.0);
}

TEST_F(ManualMainQueueTest, AnItemDueWithinTheAdvanceRunsAtItsOwnMoment)
{
    std::vector<double> moments;
    queue.asyncAfter(0.4, WorkItem::make([&] {
                         moments.push_back(queue.monotonicSeconds());
                         queue.asyncAfter(
                             0.4, WorkItem::make([&] { moments.push_back(queue.monotonicSeconds()); }));
                     }));
    queue.advance(0.8);
    EXPECT_THAT(moments, testing::ElementsAre(0.4, 0.8));
}

TEST_F(ManualMainQueueTest, ACancelledItemDoesNotRun)
{
    const auto item = WorkItem::make(add('a'));
    queue.asyncAfter(0.4, item);
    EXPECT_EQ(queue.pendingCount(), 1u);
    item->cancel();
    EXPECT_EQ(queue.pendingCount(), 0u);
    queue.advance(1);
    EXPECT_EQ(order, "");
}

TEST_F(ManualMainQueueTest, CancellingAfterTheRunChangesNothing)
{
    const auto item = WorkItem::make(add('a'));
    queue.asyncAfter(0, item);
    queue.runUntilIdle();
    item->cancel();
    EXPECT_EQ(order, "a");
}

TEST_F(ManualMainQueueTest, TenthsOfASecondAddUpExactly)
{
    queue.asyncAfter(0.8, WorkItem::make(add('a')));
    for (int step = 0; step < 8; ++step)
        queue.advance(0.1);
    EXPECT_EQ(order, "a");
}

TEST_F(ManualMainQueueTest, AdvancingMovesTheSharedClock)
{
    ManualClock clock;
    ManualMainQueue shared(clock);
    const auto before = clock.now();
    shared.advance(1.5);
    EXPECT_DOUBLE_EQ(clock.monotonicSeconds(), 1.5);
    EXPECT_EQ(before.msecsTo(clock.now()), 1500);
    clock.setNow(before);
    EXPECT_DOUBLE_EQ(shared.monotonicSeconds(), 1.5);
}
