#pragma once

/// A mass on a damped spring, let go at `displacement` from its rest with `velocity` (units a second), told
/// by how it feels: `response` is the period of its undamped swing in seconds, `damping` the damping ratio
/// (1 comes to rest soonest without passing it, less swings over, more creeps).
struct DampedOscillator
{
    double response = 0.5;
    double damping = 1.0;
    double displacement = 1.0;
    double velocity = 0.0;

    struct State
    {
        double displacement;
        double velocity;
    };

    /// Where it is after `seconds` (>= 0).
    State after(double seconds) const;
};
