#pragma once

#include "fakes/ManualClock.h"
#include "support/MainQueue.h"

#include <cstddef>
#include <deque>
#include <map>
#include <utility>

/// The main queue driven by hand, in virtual time. Main thread only, async() too.
class ManualMainQueue final : public MainQueue
{
public:
    ManualMainQueue() : m_clock(m_ownClock) {}
    /// Advancing the queue advances `clock`, which the code under test may share.
    explicit ManualMainQueue(ManualClock& clock) : m_clock(clock) {}

    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;
    double monotonicSeconds() const override { return m_clock.monotonicSeconds(); }

    ManualClock& clock() { return m_clock; }

    /// Runs the work that is waiting now, then the items that are due now. False when there was nothing.
    bool runOneTurn();

    /// Turns until nothing is left to do at the present moment.
    void runUntilIdle();

    /// Lets `seconds` go by. Stops at each deadline on the way, to perform what is due and run until idle.
    void advance(double seconds);

    /// Items and work that are still to come, cancelled ones left out.
    std::size_t pendingCount() const;

private:
    ManualClock m_ownClock;
    ManualClock& m_clock;
    std::deque<std::function<void()>> m_work;
    /// By deadline in nanoseconds, then by order of the calls.
    std::map<std::pair<std::int64_t, std::uint64_t>, std::shared_ptr<WorkItem>> m_delayed;
    std::uint64_t m_nextSequence = 0;
};
