#include "support/QtMainQueue.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {
class QtMainQueueTest : public testing::Test
{
protected:
    std::function<void()> add(char letter)
    {
        return [this, letter] { order += letter; };
    }

    /// Turns the event loop until `done`; a test that never gets there ends by its time limit.
    template <typename Done>
    static void turnUntil(Done done)
    {
        while (!done())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    std::unique_ptr<QtMainQueue> queue = std::make_unique<QtMainQueue>();
    std::string order;
};
} // namespace

TEST_F(QtMainQueueTest, RunsWorkInCallOrderAndNeverInsideTheCall)
{
    queue->async([this] {
        order += 'a';
        queue->async(add('c'));
        order += 'b';
    });
    EXPECT_EQ(order, "");
    turnUntil([this] { return order.size() == 3; });
    EXPECT_EQ(order, "abc");
}

TEST_F(QtMainQueueTest, WorkThatPutsItselfInAgainDoesNotStarveTheRest)
{
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop)
            queue->async(again);
    };
    queue->async(again);
    queue->asyncAfter(0.01, WorkItem::make([&] { stop = true; }));
    turnUntil([&] { return stop; });
}

TEST_F(QtMainQueueTest, ANestedEventLoopCarriesOnInOrder)
{
    queue->async([this] {
        order += 'a';
        turnUntil([this] { return order.size() == 3; });
        order += 'd';
    });
    queue->async(add('b'));
    queue->async([this] {
        order += 'c';
        queue->async(add('e'));
    });
    turnUntil([this] { return order.size() == 5; });
    EXPECT_TRUE(order == "abcde" || order == "abced") << order;
    EXPECT_EQ(order.substr(0, 3), "abc");
}

TEST_F(QtMainQueueTest, RunsOnItsOwnThreadWhateverThreadPutsItIn)
{
    constexpr int threads = 4;
    constexpr int pieces = 500;
    const auto main = std::this_thread::get_id();
    std::vector<std::vector<int>> seen(threads);
    bool allOnMain = true;
    std::vector<std::jthread> workers;
    for (std::size_t worker = 0; worker < threads; ++worker) {
        workers.emplace_back([&, worker] {
            for (int piece = 0; piece < pieces; ++piece) {
                queue->async([&, worker, piece] {
                    seen[worker].push_back(piece);
                    allOnMain = allOnMain && std::this_thread::get_id() == main;
                });
            }
        });
    }
    turnUntil([&] {
        return std::all_of(seen.begin(), seen.end(), [](const auto& one) { return one.size() == pieces; });
    });
    EXPECT_TRUE(allOnMain);
    for (const auto& one : seen)
        EXPECT_TRUE(std::is_sorted(one.begin(), one.end()));
}

TEST_F(QtMainQueueTest, WorkFromAnotherThreadWakesAWaitingLoop)
{
    std::atomic<bool> waiting = false;
    bool ran = false;
    const std::jthread worker([&] {
        waiting.wait(false);
        queue->async([&] { ran = true; });
    });
    queue->async([&] {
        waiting = true;
        waiting.notify_one();
    });
    turnUntil([&] { return ran; });
}

TEST_F(QtMainQueueTest, ItemsRunByDeadlineAndThenInCallOrder)
{
    queue->asyncAfter(0.02, WorkItem::make(add('d')));
    queue->asyncAfter(0, WorkItem::make(add('a')));
    queue->asyncAfter(0, WorkItem::make(add('b')));
    queue->asyncAfter(0.01, WorkItem::make(add('c')));
    EXPECT_EQ(order, "");
    turnUntil([this] { return order.size() == 4; });
    EXPECT_EQ(order, "abcd");
}

TEST_F(QtMainQueueTest, NothingRunsBeforeItsTime)
{
    // One delay below and one above the bound between precise and coarse.
    for (const double seconds : {0.05, 1.0}) {
        const double deadline = queue->monotonicSeconds() + seconds;
        double ran = 0;
        queue->asyncAfter(seconds, WorkItem::make([&] { ran = queue->monotonicSeconds(); }));
        turnUntil([&] { return ran > 0; });
        EXPECT_GE(ran, deadline);
    }
}

TEST_F(QtMainQueueTest, LongDelaysThatLieCloseTogetherShareAWakeUp)
{
    // Were each woken for by itself, the work that the first puts in would run before the second.
    queue->asyncAfter(1.0, WorkItem::make([this] {
                          order += 'a';
                          queue->async(add('c'));
                      }));
    queue->asyncAfter(1.02, WorkItem::make(add('b')));
    turnUntil([this] { return order.size() == 3; });
    EXPECT_EQ(order, "abc");
}

TEST_F(QtMainQueueTest, ACancelledItemDoesNotRunAndReleasesItsWork)
{
    const auto token = std::make_shared<int>(0);
    const auto cancelled = WorkItem::make([token] { ++*token; });
    queue->asyncAfter(0.01, cancelled);
    queue->asyncAfter(0.02, WorkItem::make(add('a')));
    cancelled->cancel();
    EXPECT_EQ(token.use_count(), 1);
    turnUntil([this] { return !order.empty(); });
    EXPECT_EQ(*token, 0);
}

TEST_F(QtMainQueueTest, AnItemMayCancelALaterOneOfTheSameTurn)
{
    const auto later = WorkItem::make(add('b'));
    queue->asyncAfter(0, WorkItem::make([&] { later->cancel(); }));
    queue->asyncAfter(0, later);
    queue->asyncAfter(0, WorkItem::make(add('c')));
    turnUntil([this] { return !order.empty(); });
    EXPECT_EQ(order, "c");
}

TEST_F(QtMainQueueTest, DestructionDropsAndReleasesWhatWaits)
{
    const auto token = std::make_shared<int>(0);
    queue->async([token] { ++*token; });
    queue->asyncAfter(0, WorkItem::make([token] { ++*token; }));
    queue->asyncAfter(60, WorkItem::make([token] { ++*token; }));
    queue.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(*token, 0);
}

TEST_F(QtMainQueueTest, WorkMayDestroyTheQueue)
{
    queue->async([this] { queue.reset(); });
    queue->async(add('a'));
    turnUntil([this] { return !queue; });
    QCoreApplication::processEvents();
    EXPECT_EQ(order, "");
}

TEST_F(QtMainQueueTest, AnItemMayDestroyTheQueue)
{
    queue->asyncAfter(0, WorkItem::make([this] { queue.reset(); }));
    queue->asyncAfter(0, WorkItem::make(add('a')));
    turnUntil([this] { return !queue; });
    QCoreApplication::processEvents();
    EXPECT_EQ(order, "");
}

TEST_F(QtMainQueueTest, DroppedWorkMayComeBackToTheQueue)
{
    struct Returning
    {
        ~Returning()
        {
            queue.async([] { FAIL() << "ran after the destruction"; });
        }
        QtMainQueue& queue;
    };
    queue->async([held = std::make_shared<Returning>(*queue)] {});
    queue->asyncAfter(1, WorkItem::make([held = std::make_shared<Returning>(*queue)] {}));
    queue.reset();
    QCoreApplication::processEvents();
}
