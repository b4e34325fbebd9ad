#include "ui/Spring.h"

#include <QAbstractAnimation>

#include <gtest/gtest.h>

namespace {
/// A spring whose time a test turns by hand: the frames that would drive it do not come here.
class SpringTest : public testing::Test
{
protected:
    SpringTest()
    {
        spring.setProperty("response", 0.42);
        spring.setProperty("damping", 1.0);
        spring.setTo(200);
        spring.componentComplete();
    }

    /// To that many milliseconds after the last change of the goal.
    void at(int milliseconds) { animation().setCurrentTime(milliseconds); }

    QAbstractAnimation& animation() { return *spring.findChild<QAbstractAnimation*>(); }

    /// What a movement to 0 that began at `displacement` and `velocity` has come to; the first frame shows it
    /// one frame in.
    static DampedOscillator::State moved(double displacement, double velocity, int milliseconds)
    {
        return DampedOscillator{0.42, 1.0, displacement, velocity}.after(1.0 / 60 + milliseconds / 1000.0);
    }

    Spring spring;
};
} // namespace

TEST_F(SpringTest, NothingMovesAtCreation)
{
    EXPECT_EQ(spring.value(), 200);
    EXPECT_FALSE(spring.isRunning());
}

TEST_F(SpringTest, TheValueFollowsTheOscillator)
{
    for (const double damping : {0.6, 1.0, 1.4}) {
        spring.setProperty("damping", damping);
        const double start = spring.value();
        const double goal = start + 400;
        spring.setTo(goal);
        const DampedOscillator oscillator{0.42, damping, -400, 0};
        for (const int time : {0, 16, 50, 120, 240}) {
            at(time);
            EXPECT_NEAR(spring.value(), goal + oscillator.after(1.0 / 60 + time / 1000.0).displacement, 1e-9)
                << damping << " at " << time;
        }
        at(60'000);
    }
}

TEST_F(SpringTest, AReversalGoesOnFromThePlaceAndTheSpeedThatItHas)
{
    spring.setTo(600);
    at(100);
    const auto before = moved(-400, 0, 100);
    EXPECT_GT(before.velocity, 1000);
    spring.setTo(200);
    for (const int time : {0, 30, 90}) {
        at(time);
        const auto expected = moved(400 + before.displacement, before.velocity, time);
        EXPECT_NEAR(spring.value(), 200 + expected.displacement, 1e-9) << time;
    }
    // At first it still runs the old way.
    spring.setTo(600);
    at(100);
    const double turning = spring.value();
    spring.setTo(200);
    EXPECT_GT(spring.value(), turning);
}

TEST_F(SpringTest, ItStopsOnItsGoal)
{
    spring.setTo(600);
    EXPECT_TRUE(spring.isRunning());
    at(200);
    EXPECT_TRUE(spring.isRunning());
    EXPECT_NE(spring.value(), 600);
    at(2000);
    EXPECT_FALSE(spring.isRunning());
    EXPECT_EQ(spring.value(), 600);
}

TEST_F(SpringTest, AfterItsArrivalItStartsFromRest)
{
    spring.setTo(600);
    at(2000);
    spring.setTo(200);
    at(50);
    EXPECT_NEAR(spring.value(), 200 + moved(400, 0, 50).displacement, 1e-9);
}

TEST_F(SpringTest, DisabledItJumpsAndLosesItsSpeed)
{
    spring.setTo(600);
    at(100);
    spring.setProperty("enabled", false);
    spring.setTo(300);
    EXPECT_EQ(spring.value(), 300);
    EXPECT_FALSE(spring.isRunning());
    spring.setProperty("enabled", true);
    spring.setTo(700);
    at(50);
    EXPECT_NEAR(spring.value(), 700 + moved(-400, 0, 50).displacement, 1e-9);
}

TEST_F(SpringTest, AnEqualGoalDisturbsNothing)
{
    spring.setTo(600);
    at(100);
    const double value = spring.value();
    spring.setTo(600);
    EXPECT_EQ(spring.value(), value);
    EXPECT_TRUE(spring.isRunning());
}
