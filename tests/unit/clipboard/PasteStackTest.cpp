#include "clipboard/panel/PasteStack.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

const QUuid a = QUuid::createUuid();
const QUuid b = QUuid::createUuid();
const QUuid c = QUuid::createUuid();

PasteStack stackOf(const QList<QUuid>& uuids)
{
    PasteStack stack;
    for (const auto& uuid : uuids)
        stack.enqueue(uuid);
    return stack;
}

TEST(PasteStack, BeginsEmpty)
{
    EXPECT_TRUE(PasteStack().isEmpty());
    EXPECT_EQ(PasteStack().count(), 0);
}

TEST(PasteStack, AppendsAlsoWhatIsThereAlready)
{
    const auto stack = stackOf({a, b, a});
    EXPECT_THAT(stack.items(), ElementsAre(a, b, a));
    EXPECT_EQ(stack.count(), 3);
    EXPECT_FALSE(stack.isEmpty());
}

TEST(PasteStack, RemovesAtAnIndexWithinTheList)
{
    auto stack = stackOf({a, b, c});
    stack.remove(-1);
    stack.remove(3);
    EXPECT_THAT(stack.items(), ElementsAre(a, b, c));
    stack.remove(1);
    EXPECT_THAT(stack.items(), ElementsAre(a, c));
}

TEST(PasteStack, MovesBetweenIndicesWithinTheList)
{
    auto stack = stackOf({a, b, c});
    stack.move(0, 3);
    stack.move(3, 0);
    stack.move(-1, 0);
    stack.move(0, -1);
    EXPECT_THAT(stack.items(), ElementsAre(a, b, c));
    stack.move(0, 2);
    EXPECT_THAT(stack.items(), ElementsAre(b, c, a));
    stack.move(2, 0);
    EXPECT_THAT(stack.items(), ElementsAre(a, b, c));
}

TEST(PasteStack, GivesOutTheFirstAndNothingWhenEmpty)
{
    auto stack = stackOf({a, b});
    EXPECT_EQ(stack.popFront(), a);
    EXPECT_EQ(stack.popFront(), b);
    EXPECT_EQ(stack.popFront(), std::nullopt);
}

TEST(PasteStack, Clears)
{
    auto stack = stackOf({a, b});
    stack.clear();
    EXPECT_THAT(stack.items(), IsEmpty());
}
} // namespace
