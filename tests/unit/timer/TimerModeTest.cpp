#include "timer/TimerMode.h"
#include "timer/PomodoroPhase.h"

#include <QMetaEnum>
#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(TimerModeTest, OffersAllCasesInOrder)
{
    EXPECT_THAT(TimerModes::allCases(),
                ElementsAre(TimerMode::Timer, TimerMode::Pomodoro, TimerMode::Stopwatch));
}

TEST(TimerModeTest, HasTextRawValues)
{
    EXPECT_EQ(TimerModes::rawValue(TimerMode::Timer), u"timer");
    EXPECT_EQ(TimerModes::rawValue(TimerMode::Pomodoro), u"pomodoro");
    EXPECT_EQ(TimerModes::rawValue(TimerMode::Stopwatch), u"stopwatch");
}

TEST(TimerModeTest, AllCasesLeavesNoneOut)
{
    EXPECT_EQ(TimerModes::allCases().size(), QMetaEnum::fromType<TimerMode>().keyCount());
}

TEST(PomodoroPhaseTest, FocusComesBeforeRest)
{
    EXPECT_LT(PomodoroPhase::Focus, PomodoroPhase::Rest);
    EXPECT_EQ(QMetaEnum::fromType<PomodoroPhase>().keyCount(), 2);
}
