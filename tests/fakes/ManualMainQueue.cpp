#include "fakes/ManualMainQueue.h"

#include <algorithm>

namespace {
// Far above what a test needs: work that puts itself in again for ever.
constexpr int endlessTurns = 100'000;
} // namespace

void ManualMainQueue::async(std::function<void()> work)
{
    m_work.push_back(std::move(work));
}

void ManualMainQueue::asyncAfter(double seconds, std::shared_ptr<WorkItem> item)
{
    const auto deadline = m_clock.monotonicNanoseconds() + std::llround(seconds * 1e9);
    m_delayed.emplace(std::pair(deadline, m_nextSequence++), std::move(item));
}

bool ManualMainQueue::runOneTurn()
{
    bool ran = false;
    for (auto left = m_work.size(); left > 0 && !m_work.empty(); --left) {
        const auto work = std::move(m_work.front());
        m_work.pop_front();
        work();
        ran = true;
    }
    const auto now = m_clock.monotonicNanoseconds();
    const auto end = m_nextSequence;
    for (auto next = m_delayed.begin(); next != m_delayed.end() && next->first.first <= now;) {
        if (next->first.second >= end) {
            ++next; // Put in by this turn.
            continue;
        }
        const auto due = m_delayed.extract(next);
        due.mapped()->perform();
        ran = true;
        next = m_delayed.begin();
    }
    return ran;
}

void ManualMainQueue::runUntilIdle()
{
    int turns = 0;
    while (runOneTurn()) {
        if (++turns == endlessTurns)
            qFatal("ManualMainQueue: the work never ends");
    }
}

void ManualMainQueue::advance(double seconds)
{
    const auto end = m_clock.monotonicNanoseconds() + std::llround(seconds * 1e9);
    runUntilIdle();
    while (!m_delayed.empty() && m_delayed.begin()->first.first <= end) {
        const auto deadline = m_delayed.begin()->first.first;
        m_clock.advanceNanoseconds(std::max<std::int64_t>(0, deadline - m_clock.monotonicNanoseconds()));
        runUntilIdle();
    }
    // The work itself may have moved the clock past the end.
    m_clock.advanceNanoseconds(std::max<std::int64_t>(0, end - m_clock.monotonicNanoseconds()));
}

std::size_t ManualMainQueue::pendingCount() const
{
    const auto live = std::count_if(m_delayed.begin(), m_delayed.end(),
                                    [](const auto& entry) { return !entry.second->isCancelled(); });
    return m_work.size() + static_cast<std::size_t>(live);
}
