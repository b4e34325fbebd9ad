#pragma once

#include "support/Clock.h"

#include <cmath>
#include <cstdint>

/// A clock that moves only when told. It counts whole nanoseconds, so that eight steps of 0.1 s make 0.8 s.
class ManualClock final : public Clock
{
public:
    QDateTime now() const override { return m_now; }
    double monotonicSeconds() const override { return static_cast<double>(m_nanoseconds) / 1e9; }
    std::int64_t monotonicNanoseconds() const { return m_nanoseconds; }

    /// Lets time go by on both clocks; nothing runs by it.
    void advance(double seconds) { advanceNanoseconds(std::llround(seconds * 1e9)); }
    void advanceNanoseconds(std::int64_t nanoseconds)
    {
        const auto before = m_nanoseconds / 1'000'000;
        m_nanoseconds += nanoseconds;
        m_now = m_now.addMSecs(m_nanoseconds / 1'000'000 - before);
    }

    /// Sets the wall clock, forward or back, as a user does; the monotonic time stays.
    void setNow(const QDateTime& now) { m_now = now.toUTC(); }

private:
    QDateTime m_now = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);
    std::int64_t m_nanoseconds = 0;
};
