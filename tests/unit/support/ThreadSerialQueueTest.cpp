#include "support/ThreadSerialQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <pthread.h>
#include <string>
#include <vector>

TEST(ThreadSerialQueueTest, RunsOneAfterTheOtherInCallOrder)
{
    std::vector<int> seen; // Unlocked: the queue itself must keep the pieces apart.
    std::promise<void> done;
    ThreadSerialQueue queue(QStringLiteral("com.example.order"));
    for (int piece = 0; piece < 1000; ++piece)
        queue.async([&, piece] { seen.push_back(piece); });
    queue.async([&] { done.set_value(); });
    done.get_future().wait();
    ASSERT_EQ(seen.size(), 1000u);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(ThreadSerialQueueTest, TheThreadBearsTheEndOfTheLabel)
{
    std::promise<std::string> name;
    ThreadSerialQueue queue(QStringLiteral("com.example.quite.long.sampler"));
    queue.async([&] {
        char buffer[16] = {};
        pthread_getname_np(pthread_self(), buffer, sizeof buffer);
        name.set_value(buffer);
    });
    EXPECT_EQ(name.get_future().get(), "te.long.sampler");
    EXPECT_EQ(queue.label(), QStringLiteral("com.example.quite.long.sampler"));
}

TEST(ThreadSerialQueueTest, WorkMayPutInMoreWork)
{
    std::promise<void> done;
    ThreadSerialQueue queue(QStringLiteral("com.example.more"));
    queue.async([&] { queue.async([&] { done.set_value(); }); });
    done.get_future().wait();
}

TEST(ThreadSerialQueueTest, DestructionWaitsForTheRunningPieceAndDropsTheWaitingOnes)
{
    std::promise<void> started;
    std::promise<void> dropped;
    auto mayEnd = dropped.get_future();
    bool ended = false;
    int waitingRan = 0;
    auto queue = std::make_unique<ThreadSerialQueue>(QStringLiteral("com.example.end"));
    queue->async([&] {
        started.set_value();
        mayEnd.wait();
        ended = true;
    });
    const auto onDrop = [&](void*) { dropped.set_value(); };
    queue->async([&, held = std::shared_ptr<void>(&waitingRan, onDrop)] { ++waitingRan; });
    started.get_future().wait();
    queue.reset();
    EXPECT_TRUE(ended);
    EXPECT_EQ(waitingRan, 0);
}
