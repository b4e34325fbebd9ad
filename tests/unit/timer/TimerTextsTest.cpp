#include "timer/TimerTexts.h"

#include <limits>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TimerTextsTest, TheModesAreCalledByTheirNamesInOrder)
{
    QStringList titles;
    for (const auto& mode : TimerTexts::modes())
        titles.append(TimerTexts::title(static_cast<TimerMode>(mode.toInt())));
    EXPECT_THAT(titles, ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs));
}

TEST(TimerTextsTest, OnlyLengthsThatACountdownCanHaveAreOffered)
{
    EXPECT_THAT(TimerTexts::offeredPresets({5, 0, -3, 5, 1}), ElementsAre(5, 5, 1));
    EXPECT_THAT(TimerTexts::offeredPresets({0, std::numeric_limits<int>::min()}), IsEmpty());
}

TEST(TimerTextsTest, NumbersAreTold)
{
    EXPECT_EQ(TimerTexts::preset(5), u"5m");
    EXPECT_EQ(TimerTexts::preset(std::numeric_limits<int>::max()), u"2147483647m");
    EXPECT_EQ(TimerTexts::rounds(0), u"0 done");
    EXPECT_EQ(TimerTexts::rounds(12), u"12 done");
}
