#include "fakes/ManualSerialQueue.h"

#include <gtest/gtest.h>

#include <string>

TEST(ManualSerialQueueTest, RunsInOrderAndOnlyOnDemand)
{
    ManualSerialQueue queue(QStringLiteral("com.example.test"));
    std::string order;
    queue.async([&] {
        order += 'a';
        queue.async([&] { order += 'c'; });
    });
    queue.async([&] { order += 'b'; });
    EXPECT_EQ(order, "");
    EXPECT_EQ(queue.pendingCount(), 2u);
    EXPECT_TRUE(queue.runOne());
    EXPECT_EQ(order, "a");
    queue.runAll();
    EXPECT_EQ(order, "abc");
    EXPECT_FALSE(queue.runOne());
    EXPECT_EQ(queue.label(), QStringLiteral("com.example.test"));
}
