#include "ui/DampedOscillator.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace {
constexpr double instants[] = {0.0, 0.01, 0.05, 0.1, 0.2, 0.3, 0.42, 0.7, 1.5};

/// Speed as the slope of the way.
double slope(const DampedOscillator& oscillator, double seconds)
{
    const double step = 1e-6;
    return (oscillator.after(seconds + step).displacement - oscillator.after(seconds).displacement) / step;
}

double omegaOf(double response)
{
    return 2 * std::numbers::pi / response;
}
} // namespace

TEST(DampedOscillatorTest, BelowOneItSwingsAsADampedCosine)
{
    const DampedOscillator oscillator{0.4, 0.82, 3.0, 0.0};
    const double omega = omegaOf(0.4);
    const double swing = omega * std::sqrt(1 - 0.82 * 0.82);
    const double phase = std::atan2(0.82, std::sqrt(1 - 0.82 * 0.82));
    for (const double t : instants) {
        const double expected =
            3.0 / std::cos(phase) * std::exp(-0.82 * omega * t) * std::cos(swing * t - phase);
        EXPECT_NEAR(oscillator.after(t).displacement, expected, 1e-12) << t;
    }
    EXPECT_LT(oscillator.after(std::numbers::pi / swing).displacement, 0) << "it passes its rest";
}

TEST(DampedOscillatorTest, AtOneItComesToRestWithoutPassingIt)
{
    const DampedOscillator oscillator{0.42, 1.0, -2.0, 0.0};
    const double omega = omegaOf(0.42);
    for (const double t : instants) {
        const double expected = -2.0 * (1 + omega * t) * std::exp(-omega * t);
        EXPECT_NEAR(oscillator.after(t).displacement, expected, 1e-12) << t;
        EXPECT_LE(oscillator.after(t).displacement, 0) << t;
    }
}

TEST(DampedOscillatorTest, AboveOneItCreepsAsTwoExponentials)
{
    const DampedOscillator oscillator{0.3, 1.5, 1.0, 0.0};
    const double omega = omegaOf(0.3);
    const double spread = omega * std::sqrt(1.5 * 1.5 - 1);
    for (const double t : instants) {
        const double expected = std::exp(-1.5 * omega * t) *
                                (std::cosh(spread * t) + 1.5 * omega / spread * std::sinh(spread * t));
        EXPECT_NEAR(oscillator.after(t).displacement, expected, 1e-12) << t;
    }
}

TEST(DampedOscillatorTest, TheSpeedIsTheSlopeOfTheWay)
{
    for (const double damping : {0.6, 1.0, 1.4}) {
        const DampedOscillator oscillator{0.5, damping, 1.0, -3.0};
        EXPECT_NEAR(oscillator.after(0).velocity, -3.0, 1e-9) << damping;
        for (const double t : instants)
            EXPECT_NEAR(oscillator.after(t).velocity, slope(oscillator, t), 1e-3) << damping << " at " << t;
    }
}

TEST(DampedOscillatorTest, TwoStepsLeadToWhereOneLeads)
{
    for (const double damping : {0.6, 1.0, 1.4}) {
        const DampedOscillator oscillator{0.5, damping, 1.0, 2.0};
        const auto half = oscillator.after(0.1);
        const DampedOscillator rest{0.5, damping, half.displacement, half.velocity};
        EXPECT_NEAR(rest.after(0.2).displacement, oscillator.after(0.3).displacement, 1e-12) << damping;
        EXPECT_NEAR(rest.after(0.2).velocity, oscillator.after(0.3).velocity, 1e-11) << damping;
    }
}
