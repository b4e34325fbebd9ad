#include "ui/DampedOscillator.h"

#include <cmath>
#include <numbers>

DampedOscillator::State DampedOscillator::after(double seconds) const
{
    const double omega = 2 * std::numbers::pi / response;
    const double decay = damping * omega;
    const double envelope = std::exp(-decay * seconds);
    const double x0 = displacement;
    const double v0 = velocity;
    if (damping < 1) {
        const double swing = omega * std::sqrt(1 - damping * damping);
        const double a = (v0 + decay * x0) / swing;
        const double sine = std::sin(swing * seconds);
        const double cosine = std::cos(swing * seconds);
        return {envelope * (x0 * cosine + a * sine),
                envelope * ((a * swing - decay * x0) * cosine - (x0 * swing + decay * a) * sine)};
    }
    if (damping > 1) {
        const double spread = omega * std::sqrt(damping * damping - 1);
        const double slow = spread - decay;
        const double fast = -spread - decay;
        const double b = (v0 - slow * x0) / (fast - slow);
        const double a = x0 - b;
        const double slowPart = a * std::exp(slow * seconds);
        const double fastPart = b * std::exp(fast * seconds);
        return {slowPart + fastPart, slow * slowPart + fast * fastPart};
    }
    const double b = v0 + omega * x0;
    return {envelope * (x0 + b * seconds), envelope * (b - omega * (x0 + b * seconds))};
}
