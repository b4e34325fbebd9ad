#include "support/WorkItem.h"

#include <gtest/gtest.h>

TEST(WorkItemTest, PerformsUnlessCancelled)
{
    int runs = 0;
    WorkItem item([&] { ++runs; });
    item.perform();
    item.cancel();
    item.perform();
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(item.isCancelled());
}

TEST(WorkItemTest, CancellingReleasesWhatTheWorkHolds)
{
    const auto token = std::make_shared<int>(0);
    WorkItem item([token] {});
    EXPECT_EQ(token.use_count(), 2);
    item.cancel();
    EXPECT_EQ(token.use_count(), 1);
}

TEST(WorkItemTest, WorkThatCancelsItsOwnItemRunsToItsEnd)
{
    const auto token = std::make_shared<int>(0);
    std::shared_ptr<WorkItem> item;
    item = WorkItem::make([&item, token] {
        item->cancel();
        ++*token;
    });
    item->perform();
    EXPECT_EQ(*token, 1);
    EXPECT_EQ(token.use_count(), 1);
}
