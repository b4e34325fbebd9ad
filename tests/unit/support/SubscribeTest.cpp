#include "support/Subscribe.h"

#include "fakes/ManualMainQueue.h"
#include "unit/support/Published.h"

#include <gmock/gmock.h>

#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class SubscribeTest : public testing::Test
{
protected:
    auto number() { return subscribe(queue, &source, &Published::number, &Published::numberChanged); }
    auto record()
    {
        return [this](int value) { seen.push_back(value); };
    }

    ManualMainQueue queue;
    Published source;
    QObject target;
    std::vector<int> seen;
};
} // namespace

TEST_F(SubscribeTest, DeliversTheCurrentValueOneTurnLater)
{
    source.setNumber(7);
    const auto subscription = number().then(&target, record());
    EXPECT_THAT(seen, IsEmpty());
    queue.runOneTurn();
    EXPECT_THAT(seen, ElementsAre(7));
}

TEST_F(SubscribeTest, DeliversLaterValuesOnTheNextTurnAndNeverInsideTheSet)
{
    const auto subscription = number().then(&target, record());
    queue.runUntilIdle();
    source.setNumber(1);
    EXPECT_THAT(seen, ElementsAre(0));
    queue.runOneTurn();
    EXPECT_THAT(seen, ElementsAre(0, 1));
}

TEST_F(SubscribeTest, EachValueIsCapturedAtItsEmissionAndArrivesInOrder)
{
    const auto subscription = number().then(&target, record());
    source.setNumber(1);
    source.setNumber(1);
    source.setNumber(2);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1, 1, 2));
}

TEST_F(SubscribeTest, AValueSetByAnActionIsDeliveredOnTheTurnAfter)
{
    const auto subscription = number().then(&target, [this](int value) {
        seen.push_back(value);
        if (value < 2)
            source.setNumber(value + 1);
    });
    queue.runOneTurn();
    EXPECT_THAT(seen, ElementsAre(0));
    queue.runOneTurn();
    EXPECT_THAT(seen, ElementsAre(0, 1));
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
}

TEST_F(SubscribeTest, RemoveDuplicatesHoldsBackEqualNeighboursOnly)
{
    const auto subscription = number().removeDuplicates().then(&target, record());
    for (const int value : {0, 1, 1, 0, 0, 2})
        source.setNumber(value);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1, 0, 2));
}

TEST_F(SubscribeTest, DropFirstHoldsBackTheCurrentValue)
{
    const auto subscription = number().dropFirst().then(&target, record());
    queue.runUntilIdle();
    EXPECT_THAT(seen, IsEmpty());
    source.setNumber(0);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0));
}

TEST_F(SubscribeTest, DropFirstHoldsBackAsManyAsTold)
{
    const auto subscription = number().dropFirst(3).then(&target, record());
    for (const int value : {1, 2, 3, 4})
        source.setNumber(value);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(3, 4));
}

TEST_F(SubscribeTest, OperatorsWorkInTheOrderWritten)
{
    std::vector<int> dropLast;
    const auto removeThenDrop = number().removeDuplicates().dropFirst().then(&target, record());
    const auto dropThenRemove =
        number().dropFirst().removeDuplicates().then(&target, [&](int value) { dropLast.push_back(value); });
    source.setNumber(0);
    source.setNumber(0);
    source.setNumber(1);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(1));
    EXPECT_THAT(dropLast, ElementsAre(0, 1));
}

TEST_F(SubscribeTest, OperatorsSeeAValueAtItsEmissionNotAtItsDelivery)
{
    const auto subscription = number().removeDuplicates().then(&target, record());
    queue.runUntilIdle();
    source.setNumber(1);
    source.setNumber(0);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1, 0));
}

TEST_F(SubscribeTest, SeveralSignalsAreOneStream)
{
    QStringList pairs;
    const auto pair = [](const Published& published) {
        return published.text() + QString::number(published.number());
    };
    {
        const auto subscription = subscribe(queue, &source, pair, &Published::numberChanged)
                                      .alsoOn(&Published::textChanged)
                                      .removeDuplicates()
                                      .dropFirst()
                                      .then(&target, [&](const QString& value) { pairs += value; });
        source.setNumber(0);
        source.setNumber(1);
        source.setText(QStringLiteral("a"));
        source.setText(QStringLiteral("a"));
        source.setNumber(2);
        queue.runUntilIdle();
    }
    source.setText(QStringLiteral("b"));
    source.setNumber(3);
    queue.runUntilIdle();
    EXPECT_EQ(pairs, (QStringList{QStringLiteral("1"), QStringLiteral("a1"), QStringLiteral("a2")}));
}

TEST_F(SubscribeTest, ATargetGoneBetweenEmissionAndDeliveryGetsNothing)
{
    auto shortLived = std::make_unique<QObject>();
    const auto subscription = number().then(shortLived.get(), record());
    queue.runUntilIdle();
    source.setNumber(1);
    shortLived.reset();
    queue.runUntilIdle();
    source.setNumber(2);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0));
}

TEST_F(SubscribeTest, AWeakPointerIsATargetToo)
{
    auto held = std::make_shared<std::string>("held");
    const auto subscription = number().then(std::weak_ptr(held), record());
    queue.runUntilIdle();
    source.setNumber(1);
    queue.runUntilIdle();
    source.setNumber(2);
    held.reset();
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1));
}

TEST_F(SubscribeTest, AWeakTargetIsHeldWhileItsActionRuns)
{
    auto held = std::make_shared<std::string>("held");
    const std::weak_ptr weak(held);
    bool livedThroughTheAction = false;
    const auto subscription = number().then(weak, [&](int) {
        held.reset();
        livedThroughTheAction = !weak.expired();
    });
    queue.runUntilIdle();
    EXPECT_TRUE(livedThroughTheAction);
    EXPECT_TRUE(weak.expired());
}

TEST_F(SubscribeTest, ASubscriptionDestroyedBetweenEmissionAndDeliveryDeliversNothing)
{
    {
        const auto subscription = number().then(&target, record());
        source.setNumber(1);
    }
    source.setNumber(2);
    queue.runUntilIdle();
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(SubscribeTest, AnActionMayEndItsOwnSubscription)
{
    Subscription subscription;
    subscription = number().then(&target, [&](int value) {
        subscription = {};
        seen.push_back(value);
    });
    source.setNumber(1);
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0));
}

TEST_F(SubscribeTest, WhatTheActionHoldsIsReleasedWithTheSubscription)
{
    const auto token = std::make_shared<int>(1);
    {
        const auto subscription = number().then(&target, [token](int) {});
        queue.runUntilIdle();
        EXPECT_GT(token.use_count(), 1);
    }
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(SubscribeTest, TheSourcesDestructionEndsItQuietlyAfterWhatIsUnderWay)
{
    auto shortLived = std::make_unique<Published>();
    const auto subscription =
        subscribe(queue, shortLived.get(), &Published::number, &Published::numberChanged)
            .then(&target, record());
    shortLived->setNumber(1);
    shortLived.reset();
    queue.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre(0, 1));
}

TEST_F(SubscribeTest, AGetterMayReturnAConstReference)
{
    QStringList texts;
    const auto subscription = subscribe(queue, &source, &Published::text, &Published::textChanged)
                                  .removeDuplicates()
                                  .then(&target, [&](const QString& text) { texts += text; });
    source.setText(QStringLiteral("a"));
    source.setText(QStringLiteral("b"));
    queue.runUntilIdle();
    EXPECT_EQ(texts, (QStringList{QString(), QStringLiteral("a"), QStringLiteral("b")}));
}
