#pragma once

#include <QDateTime>

/// Where every rule that has a time in it gets the time from. The system's own one is SystemClock; tests
/// drive one by hand.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The present moment in UTC. It can jump, backwards too, when the user or the network sets the clock,
    /// and runs on while the machine is suspended.
    virtual QDateTime now() const = 0;

    /// Seconds on a clock that never jumps and stands still during suspend. Only differences mean anything.
    virtual double monotonicSeconds() const = 0;
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    double monotonicSeconds() const override;
};
