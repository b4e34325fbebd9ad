#pragma once

#include "support/MainQueue.h"

#include <functional>
#include <memory>

/// Calls its handler once a period, first one period after its making, until it is destroyed. Late turns
/// don't pile up: the handler runs once, and the beat goes on where it would have been. Main thread.
class RepeatingTimer
{
public:
    /// `periodSeconds` > 0. The queue must outlive the timer.
    RepeatingTimer(MainQueue& queue, double periodSeconds, std::function<void()> handler);
    ~RepeatingTimer();
    RepeatingTimer(const RepeatingTimer&) = delete;
    RepeatingTimer& operator=(const RepeatingTimer&) = delete;

    /// Leaves the beats out until wake(), so that a handler which could find nothing new costs nothing.
    void doze();

    /// Has the handler run again, from the next beat on; the beats stay where they were.
    void wake();

private:
    struct Beat;
    std::shared_ptr<Beat> m_beat;
};
